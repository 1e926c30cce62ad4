// Real windows for the Windows tests: a top-level window with a client area
// of 320 x 200 that remembers every text it was given, and handles as the
// host passes them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

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
  std::string text() const;
  // Every WM_SETTEXT since the window was made, in order.
  const std::vector<std::string>& textsSet() const { return textsSet_; }
  // How many of one posted message the window has handled.
  int probesHandled() const { return probesHandled_; }

  static constexpr UINT ProbeMessage = WM_APP + 7;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
  std::vector<std::string> textsSet_;
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
  textsSet_.clear();
  // Whatever creating the window queued is out of the way.
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

inline std::string TestWindow::text() const {
  char text[256] = {};
  GetWindowTextA(window_, text, sizeof text);
  return text;
}

inline LRESULT CALLBACK TestWindow::Procedure(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
  auto* self = reinterpret_cast<TestWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (self && message == WM_SETTEXT)
    self->textsSet_.emplace_back(reinterpret_cast<const char*>(lParam));
  if (self && message == ProbeMessage) {
    ++self->probesHandled_;
    return 0;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace qrl::testing
