// The host passes a window as the 32-bit value of its HWND, which is all that
// a window handle holds on either width of Windows.
#pragma once

#include <windows.h>

#include <cstdint>

#include "browser/browser_component.h"

namespace qrl {

inline HWND AsHwnd(WindowHandle window) {
  return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(window));
}

}  // namespace qrl
