// The loader's call into the DLL: it only keeps the module handle. Nothing
// else may run here (no thread, no host, no browser): the loader lock is held.
#include "host/module_handle_windows.h"

namespace qrl {

HINSTANCE ModuleHandle = nullptr;

}  // namespace qrl

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) qrl::ModuleHandle = module;
  return TRUE;
}
