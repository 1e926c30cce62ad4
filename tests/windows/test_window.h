// Real windows for the Windows tests: a top-level window titled "probe" with
// a client area of 320 x 200 that counts the probe messages it handles, and
// its handle as the host passes it.
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
  // How many ProbeMessages the window has handled.
  int probesHandled() const { return probesHandled_; }

  static constexpr UINT ProbeMessage = WM_APP + 7;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != ProbeMessage) return DefWindowProcA(window, message, wParam, lParam);
    ++reinterpret_cast<TestWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA))->probesHandled_;
    return 0;
  }

  HWND window_ = nullptr;
  int probesHandled_ = 0;
};

inline TestWindow::TestWindow() {
  static const ATOM windowClass = [] {
    WNDCLASSA description{};
    description.lpfnWndProc = Procedure;
    description.hInstance = GetModuleHandleA(nullptr);
    description.lpszClassName = "QrlTestWindow";
    return RegisterClassA(&description);
  }();
  RECT frame{0, 0, 320, 200};
  AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
  window_ = CreateWindowExA(0, MAKEINTATOM(windowClass), "probe", WS_OVERLAPPEDWINDOW, 10, 10,
                            frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr,
                            GetModuleHandleA(nullptr), nullptr);
  SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  // Whatever creating the window queued is out of the way.
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

}  // namespace qrl::testing
