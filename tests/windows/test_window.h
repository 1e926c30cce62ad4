// Real windows for the Windows tests: a top-level window titled "probe" with
// a client area of 320 x 200 (of a system class: there is nothing to
// register), and its handle as the host passes it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "browser/browser_component.h"

namespace qrl::testing {

class TestWindow {
 public:
  TestWindow();
  ~TestWindow() { DestroyWindow(window_); }
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  HWND hwnd() const { return window_; }
  WindowHandle handle() const {
    return static_cast<WindowHandle>(reinterpret_cast<std::uintptr_t>(window_));
  }
  std::int32_t scriptHandle() const { return static_cast<std::int32_t>(handle()); }
  std::string text() const {
    char text[256] = {};
    GetWindowTextA(window_, text, sizeof text);
    return text;
  }

 private:
  HWND window_ = nullptr;
};

inline TestWindow::TestWindow() {
  RECT frame{0, 0, 320, 200};
  AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
  window_ = CreateWindowExA(0, "STATIC", "probe", WS_OVERLAPPEDWINDOW, 10, 10,
                            frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr,
                            GetModuleHandleA(nullptr), nullptr);
  // Whatever creating the window queued is out of the way.
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

}  // namespace qrl::testing
