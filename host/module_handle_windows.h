// The DLL's own module handle, which DllMain keeps for the version lookup.
#pragma once

#include <windows.h>

namespace qrl {

extern HINSTANCE ModuleHandle;

}  // namespace qrl
