// A recording web control for the component's tests: the environment, the
// controller, the view and its settings, behind the same COM interfaces as
// the real runtime. Every call is logged as a line of text; every answer and
// every event arrives later through the thread's message loop, never from
// inside the call that asked for it. The test decides when events happen and
// what a script answers, and reads back how many of the control's objects,
// of the component's handlers and of the strings handed out are still alive.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "browser/webview2/webview2_interfaces.h"

namespace qrl::testing {

class FakeView;

struct FakeControl {
  // Routes the test loader's requests here and starts afresh: a new log,
  // the default answers and no counts.
  static FakeControl& Start();
  static FakeControl& Get();

  // Handles every message that is waiting, including those that the
  // handlers post meanwhile.
  static void RunPending();

  // Events on the newest view; each arrives at the next RunPending.
  void RaiseNavigationStarting();
  void RaiseNavigationCompleted();
  void RaiseHistoryChanged();
  // A web message; nothing is a message that holds no string.
  void RaiseWebMessage(std::optional<std::wstring> text);
  // Answers the oldest script still waiting; an error comes with no result.
  void AnswerScript(HRESULT errorCode, const std::wstring& json);

  // What the component called, in order, e.g. "Navigate(https://a/)".
  std::vector<std::string> calls;
  // The view of the newest controller, or null.
  FakeView* view = nullptr;

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
  // other references: a handler's maker must release its own at once.
  int handlersHeldElsewhere = 0;
  // Strings handed out with CoTaskMemAlloc and not yet freed; -1 when the
  // system does not tell frees.
  int stringsNotFreed() const;

  // For the control's objects: a string that the caller frees with
  // CoTaskMemFree, work for the message loop, and the control's last
  // reference to a handler of the component.
  LPWSTR HandOut(const std::wstring& text);
  void Post(std::function<void()> work);
  void LetGo(IUnknown* handler);
};

}  // namespace qrl::testing
