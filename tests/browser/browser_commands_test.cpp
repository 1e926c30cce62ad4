#include <functional>
#include <string>
#include <vector>

#include "tests/browser/browser_fixture.h"

namespace qrl::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

using BrowserCommandTest = BrowserTest;

// Before the browser is live (a chain begun, a notify window named) each
// command gives its idle result and does nothing else; once it is live, the
// command makes its calls on the view, in order, and gives its result at once.
TEST_F(BrowserCommandTest, EachCommandIdleAndLive) {
  struct Case {
    const char* name;
    std::vector<Argument> args;
    Value idle;
    std::function<void(StandInView&)> prepare;
    Value result;
    std::vector<std::string> calls;
  };
  const auto keep = [](StandInView&) {};
  const Value one = Value::Integer(1), zero = Value::Integer(0), refused = Value::Integer(-1);
  const Case cases[] = {
      {"wvstop", {}, one, keep, one, {"view1.Stop"}},
      {"wvback", {}, refused, keep, refused, {"view1.CanGoBack"}},
      {"wvforward", {}, refused, keep, refused, {"view1.CanGoForward"}},
      // No URL rule and no "Nav" for a home, which replaces the start URL.
      {"wvhome", {std::u16string(u"C:\\pages\\home.html")}, one, keep, one,
       {"view1.Navigate(C:\\pages\\home.html)"}},
      {"wvreload", {std::string("x")}, one, keep, one, {"view1.Reload"}},
      {"wvopendev", {}, one, keep, one, {"view1.OpenDevToolsWindow"}},
      {"wvcontextmenu", {std::int32_t{0}}, one, keep, one,
       {"view1.GetSettings", "settings.SetDefaultContextMenusEnabled(0)"}},
      {"wvcontextmenu", {std::int32_t{-5}}, one, keep, one,
       {"view1.GetSettings", "settings.SetDefaultContextMenusEnabled(1)"}},
      {"wvcontextmenu", {std::int32_t{1}}, one, [](StandInView& v) { v.settingsAvailable = false; },
       one, {"view1.GetSettings"}},
      // "Nav" goes before a navigation to a URL, after one to a text.
      {"wvnavigate", {std::u16string(u"pages\\a.html")}, zero, keep, zero,
       {"SetWindowText(9, Nav)", "view1.Navigate(https://pages/a.html)"}},
      {"wvnavigatestr", {std::u16string(u"<p>x</p>")}, zero, keep, zero,
       {"view1.NavigateToString(<p>x</p>)", "SetWindowText(9, Nav)"}},
      {"wvrefreshdom", {}, zero, keep, zero,
       {"SetWindowText(9, Nav)", "view1.ExecuteScript(document.documentElement.outerHTML;)"}},
      {"wvexecutescript", {std::u16string(u"1")}, one, keep, one, {"view1.ExecuteScript(1)"}},
      // The last home, not the navigation since.
      {"wvhome", {}, one, keep, one, {"view1.Navigate(C:\\pages\\home.html)"}},
  };
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string(u"file:///start.html"),
                    std::int32_t{ProgressWindow}});
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name + ::testing::PrintToString(c.calls));
    log.clear();
    EXPECT_EQ(host.call(c.name, c.args).result, c.idle);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(StartUrl, u"file:///start.html");
  }
  browser.CompleteChain();
  StandInView& view = *browser.view();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name + ::testing::PrintToString(c.calls));
    view.settingsAvailable = true;
    c.prepare(view);
    log.clear();
    const CallOutcome outcome = host.call(c.name, c.args);
    EXPECT_EQ(outcome.deliveries, 1);
    EXPECT_EQ(outcome.result, c.result);
    EXPECT_THAT(log, ElementsAreArray(c.calls));
  }
}

TEST_F(BrowserCommandTest, UrlTextStaysReadableWhileOtherCommandsRun) {
  MakeLiveBrowser().source = u"file:///first.html";
  HostValue result{};
  host.dispatch(host.findRow("wvurl")->index, nullptr, 0, &result);
  ASSERT_EQ(result.type, ValueWideText);
  Call("wvreload", {});
  EXPECT_EQ(std::u16string(static_cast<const char16_t*>(result.text)), u"file:///first.html");
}

}  // namespace
}  // namespace qrl::testing
