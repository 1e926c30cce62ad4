// Our declarations of the web control's IIDs against the runtime's. (The
// slots, and the sizes that they rest on, are checked from the compiled
// code, for both widths: see wrong_slots.cpp.)
#include <gtest/gtest.h>

#include <string>

#include "browser/webview2/webview2_interfaces.h"

namespace qrl::testing {
namespace {

using namespace qrl::webview2;

std::string Text(const IID& iid) {
  wchar_t text[40] = {};
  StringFromGUID2(iid, text, 40);
  return std::string(text, text + std::wcslen(text));
}

// The handlers' IIDs, which the control asks our handlers for. (The IIDs of
// the control's own objects are never asked for: we only call them.)
TEST(WebView2Interfaces, EveryHandlerIidIsTheRuntimes) {
  const struct {
    const IID& iid;
    const char* text;
  } iids[] = {
      {IID_ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler,
       "{4E8A3389-C9D8-4BD2-B6B5-124FEE6CC14D}"},
      {IID_ICoreWebView2CreateCoreWebView2ControllerCompletedHandler,
       "{6C4819F3-C9B7-4260-8127-C9F5BDE7F68C}"},
      {IID_ICoreWebView2NavigationStartingEventHandler, "{9ADBE429-F36D-432B-9DDC-F8881FBD76E3}"},
      {IID_ICoreWebView2NavigationCompletedEventHandler,
       "{D33A35BF-1C49-4F98-93AB-006E0533FE1C}"},
      {IID_ICoreWebView2HistoryChangedEventHandler, "{C79A420C-EFD9-4058-9295-3E8B4BCAB645}"},
      {IID_ICoreWebView2WebMessageReceivedEventHandler, "{57213F19-00E6-49FA-8E07-898EA01ECBD2}"},
      {IID_ICoreWebView2ExecuteScriptCompletedHandler, "{49511172-CC67-4BCA-9923-137112F4C4CC}"},
  };
  for (const auto& entry : iids) EXPECT_EQ(Text(entry.iid), entry.text);
}

}  // namespace
}  // namespace qrl::testing
