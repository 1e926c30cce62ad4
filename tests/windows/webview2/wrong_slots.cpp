// The slot of every method of the web control that the component calls,
// checked for a build whose programs cannot run here too (the 32-bit DLL):
// the compiler folds the count of wrong slots to a constant, which a test
// reads from the assembly.
#include <cstddef>
#include <cstring>

#include "browser/webview2/webview2_interfaces.h"

namespace qrl::testing {
namespace {

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

// Calls visit(member pointer, slot) for every method that the component
// calls, with its slot as the runtime's binary interface has it.
template <typename Visit>
void ForEachCalledMethod(Visit&& visit) {
  using namespace qrl::webview2;
  visit(&ICoreWebView2Environment::CreateCoreWebView2Controller, 3);
  visit(&ICoreWebView2Controller::put_Bounds, 6);
  visit(&ICoreWebView2Controller::get_CoreWebView2, 25);
  visit(&ICoreWebView2::get_Settings, 3);
  visit(&ICoreWebView2::get_Source, 4);
  visit(&ICoreWebView2::Navigate, 5);
  visit(&ICoreWebView2::NavigateToString, 6);
  visit(&ICoreWebView2::add_NavigationStarting, 7);
  visit(&ICoreWebView2::add_HistoryChanged, 13);
  visit(&ICoreWebView2::add_NavigationCompleted, 15);
  visit(&ICoreWebView2::AddScriptToExecuteOnDocumentCreated, 27);
  visit(&ICoreWebView2::ExecuteScript, 29);
  visit(&ICoreWebView2::Reload, 31);
  visit(&ICoreWebView2::PostWebMessageAsString, 33);
  visit(&ICoreWebView2::add_WebMessageReceived, 34);
  visit(&ICoreWebView2::get_CanGoBack, 38);
  visit(&ICoreWebView2::get_CanGoForward, 39);
  visit(&ICoreWebView2::GoBack, 40);
  visit(&ICoreWebView2::GoForward, 41);
  visit(&ICoreWebView2::Stop, 43);
  visit(&ICoreWebView2::OpenDevToolsWindow, 51);
  visit(&ICoreWebView2Settings::put_IsScriptEnabled, 4);
  visit(&ICoreWebView2Settings::put_IsWebMessageEnabled, 6);
  visit(&ICoreWebView2Settings::put_AreDefaultScriptDialogsEnabled, 8);
  visit(&ICoreWebView2Settings::put_AreDefaultContextMenusEnabled, 14);
  visit(&ICoreWebView2WebMessageReceivedEventArgs::TryGetWebMessageAsString, 5);
  visit(&ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler::Invoke, 3);
  visit(&ICoreWebView2CreateCoreWebView2ControllerCompletedHandler::Invoke, 3);
  visit(&ICoreWebView2NavigationStartingEventHandler::Invoke, 3);
  visit(&ICoreWebView2NavigationCompletedEventHandler::Invoke, 3);
  visit(&ICoreWebView2HistoryChangedEventHandler::Invoke, 3);
  visit(&ICoreWebView2WebMessageReceivedEventHandler::Invoke, 3);
  visit(&ICoreWebView2ExecuteScriptCompletedHandler::Invoke, 3);
}

}  // namespace
}  // namespace qrl::testing

extern "C" int qrl_wrong_slots() {
  int wrong = 0;
  qrl::testing::ForEachCalledMethod(
      [&](auto member, int slot) { wrong += qrl::testing::SlotOf(member) != slot; });
  return wrong;
}
