// The cycles on Windows against the recording web control of the component
// tests: its steps are ours to take, so each stage stops a load at a known
// point (chain run, navigation reported, capture script waiting, finished),
// and whatever is still owed is delivered after the module was let go.
#include <windows.h>
#include <psapi.h>

#include <map>
#include <memory>

#include "tests/unload/cycle_platform.h"
#include "tests/windows/test_window.h"
#include "tests/windows/webview2/fake_control.h"

namespace qrl::testing {
namespace {

// What the page shows once the cycles' markup has loaded, as the control's
// script answers it.
constexpr wchar_t CapturedPage[] = LR"("<p id=\"late\">loaded</p>")";

class WindowsCyclePlatform final : public CyclePlatform {
 public:
  bool HasBrowser() override {
    _putenv("QRLANTERN_NO_DIALOGS=1");
    control_ = &FakeControl::Start();
    return true;
  }

  std::int32_t MakeWindow() override {
    auto window = std::make_unique<TestWindow>();
    const std::int32_t id = window->scriptHandle();
    windows_[id] = std::move(window);
    return id;
  }

  std::string WindowText(std::int32_t window) override { return windows_.at(window)->text(); }

  void ClearText(std::int32_t window) override {
    SetWindowTextA(windows_.at(window)->hwnd(), "");
  }

  void Advance(std::int32_t window, int stage) override {
    if (stage >= 1) FakeControl::RunPending();
    for (int load = 0; load < 4 && stage >= 2; ++load) {
      control_->RaiseNavigationStarting();
      control_->RaiseNavigationCompleted();
      FakeControl::RunPending();
      if (stage < FinishedStage || WindowText(window) == "NavComplete") return;
      AnswerEverything();
      if (WindowText(window) == "NavComplete") return;
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
  // An answer with no script waiting is no answer.
  void AnswerEverything() {
    for (int script = 0; script < 4; ++script) control_->AnswerScript(S_OK, CapturedPage);
    FakeControl::RunPending();
  }

  FakeControl* control_ = nullptr;
  std::map<std::int32_t, std::unique_ptr<TestWindow>> windows_;
};

}  // namespace

CyclePlatform& ThisPlatform() {
  static WindowsCyclePlatform platform;
  return platform;
}

}  // namespace qrl::testing
