// The cycles on Windows against the recording web control of the component
// tests: its steps are ours to take, so each stage stops a load at a known
// point (chain run, navigation reported, capture script waiting, finished),
// and whatever is still owed is delivered after the module was let go.
#include <windows.h>
#include <psapi.h>

#include <memory>
#include <vector>

#include "tests/unload/cycle_platform.h"
#include "tests/windows/test_window.h"
#include "tests/windows/webview2/fake_control.h"

namespace qrl::testing {
namespace {

constexpr wchar_t CapturedPage[] = LR"("<html><body><p>captured</p></body></html>")";

class WindowsCyclePlatform final : public CyclePlatform {
 public:
  bool HasBrowser() override {
    _putenv("QRLANTERN_NO_DIALOGS=1");
    control_ = &FakeControl::Start();
    return true;
  }

  std::int32_t MakeWindow() override {
    windows_.push_back(std::make_unique<TestWindow>());
    return windows_.back()->scriptHandle();
  }

  std::string WindowText(std::int32_t window) override {
    return WindowOf(window) ? WindowOf(window)->text() : std::string();
  }

  void ClearText(std::int32_t window) override {
    if (TestWindow* own = WindowOf(window)) SetWindowTextA(own->hwnd(), "");
  }

  void Advance(std::int32_t window, int stage) override {
    if (stage >= 1) control_->RunPending();
    if (stage >= 2) {
      control_->RaiseNavigationStarting();
      control_->RaiseNavigationCompleted();
      control_->RunPending();
    }
    if (stage < FinishedStage) return;
    for (int answers = 0; answers < 8 && WindowText(window) != "NavComplete"; ++answers) {
      if (control_->scriptsWaiting() == 0) {
        control_->RaiseNavigationStarting();
        control_->RaiseNavigationCompleted();
        control_->RunPending();
      }
      AnswerEverything();
    }
  }

  void Drain() override {
    if (control_) AnswerEverything();
  }

  std::size_t ResidentBytes() override {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.WorkingSetSize;
  }

 private:
  void AnswerEverything() {
    while (control_->scriptsWaiting() > 0) control_->AnswerScript(S_OK, CapturedPage);
    control_->RunPending();
  }

  TestWindow* WindowOf(std::int32_t window) {
    for (const auto& own : windows_)
      if (own->scriptHandle() == window) return own.get();
    return nullptr;
  }

  FakeControl* control_ = nullptr;
  std::vector<std::unique_ptr<TestWindow>> windows_;
};

}  // namespace

CyclePlatform& ThisPlatform() {
  static WindowsCyclePlatform platform;
  return platform;
}

}  // namespace qrl::testing
