// A recording web control for the component's tests: the environment, the
// controller, the view and its settings, behind the same COM interfaces as
// the real runtime. Every call is logged as a line of text; every answer and
// every event arrives later through the thread's message loop, never from
// inside the call that asked for it. The test decides when events happen and
// what a script answers, and reads back how many of the control's objects,
// of the component's handlers and of the strings handed out are still alive.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "browser/webview2/webview2_interfaces.h"

namespace qrl::testing {

class FakeView;

class FakeControl {
 public:
  // Routes the test loader's requests here and starts a fresh log.
  static FakeControl& Start();
  static FakeControl& Get();

  // What the component called, in order, e.g. "Navigate(https://a/)".
  std::vector<std::string> calls;

  // Handles every message that is waiting, including those that the
  // handlers post meanwhile.
  void RunPending();

  // The view of the newest controller, or null.
  FakeView* view() const { return view_; }

  // Events on the newest view; each arrives at the next RunPending.
  void RaiseNavigationStarting();
  void RaiseNavigationCompleted();
  void RaiseHistoryChanged();
  // A web message; nothing is a message that holds no string.
  void RaiseWebMessage(std::optional<std::wstring> text);
  // Answers the oldest script still waiting.
  void AnswerScript(HRESULT errorCode, const std::wstring& json);
  std::size_t scriptsWaiting() const;

  // What the view answers.
  std::wstring source = L"about:blank";
  BOOL canGoBack = FALSE;
  BOOL canGoForward = FALSE;
  bool settingsFail = false;
  // The creation step that answers with an error and no object.
  enum class Failing { Nothing, Environment, Controller };
  Failing failing = Failing::Nothing;

  // Objects of the control that are still alive.
  int liveObjects = 0;
  // Handlers of the component that the control let go and that still had
  // other references (a handler's maker must release its own at once).
  int handlersHeldElsewhere = 0;
  // Handlers that the control let go and that were then gone.
  int handlersFreed = 0;
  // Strings handed out with CoTaskMemAlloc and not yet freed; -1 when the
  // system does not tell frees.
  int stringsNotFreed() const;
  // Gives a string that the caller frees with CoTaskMemFree.
  LPWSTR HandOut(const std::wstring& text);

  // Work for the message loop.
  void Post(std::function<void()> work);
  void NoteView(FakeView* view) { view_ = view; }
  // The control's last reference to a handler of the component.
  void LetGo(IUnknown* handler);
  // Runs the oldest work waiting, when the queue's window is told to.
  void RunOne();

 private:
  FakeControl() = default;
  std::deque<std::function<void()>> work_;
  HWND queueWindow_ = nullptr;
  FakeView* view_ = nullptr;
};

}  // namespace qrl::testing
