// The slot of every method of the web control that the component calls,
// checked for a build whose programs cannot run here too (the 32-bit DLL):
// the compiler folds the count of wrong slots to a constant, which a test
// reads from the assembly. A size that the slots' parameters rest on stops
// the compiling.
#include <cstddef>
#include <cstring>

#include "browser/webview2/webview2_interfaces.h"

namespace {

// The control writes a token of 8 bytes wherever we subscribe.
static_assert(sizeof(qrl::webview2::EventRegistrationToken) == 8);

// The slot of a virtual method, read off its member pointer: the compiler
// keeps 1 + the byte offset of the method's entry in the table.
template <typename Member>
int SlotOf(Member member) {
  struct {
    std::ptrdiff_t entry;
    std::ptrdiff_t adjust;
  } representation;
  static_assert(sizeof representation == sizeof member);
  std::memcpy(&representation, &member, sizeof representation);
  return static_cast<int>((representation.entry - 1) /
                          static_cast<std::ptrdiff_t>(sizeof(void*)));
}

}  // namespace

// The count of the methods that the component calls and that are not in
// their slot as the runtime's binary interface has it.
extern "C" int qrl_wrong_slots() {
  using namespace qrl::webview2;
  int wrong = 0;
  const auto check = [&](auto member, int slot) { wrong += SlotOf(member) != slot; };
  check(&ICoreWebView2Environment::CreateCoreWebView2Controller, 3);
  check(&ICoreWebView2Controller::put_Bounds, 6);
  check(&ICoreWebView2Controller::get_CoreWebView2, 25);
  check(&ICoreWebView2::get_Settings, 3);
  check(&ICoreWebView2::get_Source, 4);
  check(&ICoreWebView2::Navigate, 5);
  check(&ICoreWebView2::NavigateToString, 6);
  check(&ICoreWebView2::add_NavigationStarting, 7);
  check(&ICoreWebView2::add_HistoryChanged, 13);
  check(&ICoreWebView2::add_NavigationCompleted, 15);
  check(&ICoreWebView2::AddScriptToExecuteOnDocumentCreated, 27);
  check(&ICoreWebView2::ExecuteScript, 29);
  check(&ICoreWebView2::Reload, 31);
  check(&ICoreWebView2::PostWebMessageAsString, 33);
  check(&ICoreWebView2::add_WebMessageReceived, 34);
  check(&ICoreWebView2::get_CanGoBack, 38);
  check(&ICoreWebView2::get_CanGoForward, 39);
  check(&ICoreWebView2::GoBack, 40);
  check(&ICoreWebView2::GoForward, 41);
  check(&ICoreWebView2::Stop, 43);
  check(&ICoreWebView2::OpenDevToolsWindow, 51);
  check(&ICoreWebView2Settings::put_IsScriptEnabled, 4);
  check(&ICoreWebView2Settings::put_IsWebMessageEnabled, 6);
  check(&ICoreWebView2Settings::put_AreDefaultScriptDialogsEnabled, 8);
  check(&ICoreWebView2Settings::put_AreDefaultContextMenusEnabled, 14);
  check(&ICoreWebView2WebMessageReceivedEventArgs::TryGetWebMessageAsString, 5);
  check(&ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler::Invoke, 3);
  check(&ICoreWebView2CreateCoreWebView2ControllerCompletedHandler::Invoke, 3);
  check(&ICoreWebView2NavigationStartingEventHandler::Invoke, 3);
  check(&ICoreWebView2NavigationCompletedEventHandler::Invoke, 3);
  check(&ICoreWebView2HistoryChangedEventHandler::Invoke, 3);
  check(&ICoreWebView2WebMessageReceivedEventHandler::Invoke, 3);
  check(&ICoreWebView2ExecuteScriptCompletedHandler::Invoke, 3);
  return wrong;
}
