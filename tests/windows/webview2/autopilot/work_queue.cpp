#include "tests/windows/webview2/autopilot/work_queue.h"

#include <deque>
#include <memory>
#include <utility>

namespace qrl::autopilot {
namespace {

constexpr UINT RunWorkMessage = WM_APP + 1;
constexpr UINT_PTR LoadTimer = 1;

struct DelayedWork {
  ULONGLONG due;
  std::function<void()> work;
};

// Oldest first. Every item waits equally long, so the oldest is always the
// first due, and one timer set for it serves them all.
std::deque<DelayedWork> delayedWork;

void SetTimerForOldest(HWND window) {
  if (delayedWork.empty()) {
    KillTimer(window, LoadTimer);
    return;
  }
  const ULONGLONG now = GetTickCount64();
  const ULONGLONG due = delayedWork.front().due;
  // The system makes a wait shorter than its minimum that minimum.
  SetTimer(window, LoadTimer, due > now ? static_cast<UINT>(due - now) : 0U, nullptr);
}

// Each item leaves the queue before it runs: work that runs a message loop
// of its own may come back here.
void RunDueWork(HWND window) {
  while (!delayedWork.empty() && delayedWork.front().due <= GetTickCount64()) {
    const std::function<void()> work = std::move(delayedWork.front().work);
    delayedWork.pop_front();
    work();
  }
  SetTimerForOldest(window);
}

LRESULT CALLBACK QueueWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == RunWorkMessage) {
    const std::unique_ptr<std::function<void()>> work(
        reinterpret_cast<std::function<void()>*>(lParam));
    (*work)();
    return 0;
  }
  if (message == WM_TIMER && wParam == LoadTimer) {
    RunDueWork(window);
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

// A message-only window of a system class with our procedure put in, so
// that the DLL registers no class of its own.
HWND QueueWindow() {
  static const HWND window = [] {
    const HWND made = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE,
                                      nullptr, nullptr, nullptr);
    SetWindowLongPtrW(made, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&QueueWindowProc));
    return made;
  }();
  return window;
}

}  // namespace

void PostWork(std::function<void()> work) {
  auto* posted = new std::function<void()>(std::move(work));
  if (!PostMessageW(QueueWindow(), RunWorkMessage, 0, reinterpret_cast<LPARAM>(posted)))
    delete posted;
}

void PostWorkAfterLoadTime(std::function<void()> work) {
  delayedWork.push_back({GetTickCount64() + LoadTimeMs, std::move(work)});
  if (delayedWork.size() == 1) SetTimerForOldest(QueueWindow());
}

}  // namespace qrl::autopilot
