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

TEST_F(BrowserCommandTest, LiveCommandCallsTheViewAndGivesItsResultAtOnce) {
  struct Case {
    const char* name;
    std::vector<Argument> args;
    std::function<void(StandInView&)> prepare;
    Value result;
    std::vector<std::string> calls;
  };
  const auto none = [](StandInView&) {};
  const Case cases[] = {
      {"wvstop", {}, none, Value::Integer(1), {"view1.Stop"}},
      {"wvback", {}, none, Value::Integer(-1), {"view1.CanGoBack"}},
      {"wvback", {}, [](StandInView& v) { v.canGoBack = true; }, Value::Integer(1),
       {"view1.CanGoBack", "view1.GoBack"}},
      {"wvforward", {}, none, Value::Integer(-1), {"view1.CanGoForward"}},
      {"wvforward", {}, [](StandInView& v) { v.canGoForward = true; }, Value::Integer(1),
       {"view1.CanGoForward", "view1.GoForward"}},
      // No URL rule and no "Nav" for the home.
      {"wvhome", {std::u16string(u"C:\\pages\\home.html")}, none, Value::Integer(1),
       {"view1.Navigate(C:\\pages\\home.html)"}},
      {"wvreload", {std::string("x")}, none, Value::Integer(1), {"view1.Reload"}},
      {"wvurl", {}, [](StandInView& v) { v.source = u"file:///now.html\u00e9"; },
       Value::WideText(u"file:///now.html\u00e9"), {"view1.GetSource"}},
      {"wvopendev", {}, none, Value::Integer(1), {"view1.OpenDevToolsWindow"}},
      {"wvstatusbar", {std::int32_t{0}}, none, Value::Integer(1), {"view1.GetSettings"}},
      {"wvcontextmenu", {std::int32_t{0}}, none, Value::Integer(1),
       {"view1.GetSettings", "settings.SetDefaultContextMenusEnabled(0)"}},
      {"wvcontextmenu", {std::int32_t{-5}}, none, Value::Integer(1),
       {"view1.GetSettings", "settings.SetDefaultContextMenusEnabled(1)"}},
      {"wvcontextmenu", {std::int32_t{1}}, [](StandInView& v) { v.settingsAvailable = false; },
       Value::Integer(1), {"view1.GetSettings"}},
  };
  StandInView& view = MakeLiveBrowser();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name + ::testing::PrintToString(c.calls));
    view.canGoBack = view.canGoForward = false;
    view.settingsAvailable = true;
    c.prepare(view);
    log.clear();
    const CallOutcome outcome = host.call(c.name, c.args);
    EXPECT_EQ(outcome.deliveries, 1);
    EXPECT_EQ(outcome.result, c.result);
    EXPECT_THAT(log, ElementsAreArray(c.calls));
  }
}

// Before a browser is live (a chain begun, a notify window named), each
// command gives its usual result and does nothing else.
TEST_F(BrowserCommandTest, WithoutBrowserEachCommandGivesTheUsualResultOnly) {
  struct Case {
    const char* name;
    std::vector<Argument> args;
    Value result;
  };
  const Case cases[] = {
      {"wvstop", {}, Value::Integer(1)},
      {"wvback", {}, Value::Integer(-1)},
      {"wvforward", {}, Value::Integer(-1)},
      {"wvhome", {}, Value::Integer(1)},
      {"wvreload", {}, Value::Integer(1)},
      {"wvurl", {}, Value::WideText(u"")},
      {"wvopendev", {}, Value::Integer(1)},
      {"wvstatusbar", {std::int32_t{1}}, Value::Integer(1)},
      {"wvcontextmenu", {std::int32_t{0}}, Value::Integer(1)},
      {"wvnavigate", {std::u16string(u"file:///n.html")}, Value::Integer(0)},
      {"wvnavigatestr", {std::u16string(u"<p>x</p>")}, Value::Integer(0)},
      {"wvnavigatestr", {std::u16string()}, Value::Integer(-1)},
      {"wvrefreshdom", {}, Value::Integer(0)},
      {"wvexecutescript", {std::u16string(u"1")}, Value::Integer(1)},
  };
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string(u"file:///start.html"),
                    std::int32_t{ProgressWindow}});
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    log.clear();
    EXPECT_EQ(host.call(c.name, c.args).result, c.result);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(StartUrl, u"file:///start.html");
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

TEST_F(BrowserCommandTest, HomeReplacesTheStartUrlThatALaterHomeUses) {
  MakeLiveBrowser(u"file:///start.html");
  Call("wvhome", {std::u16string(u"file:///home.html")});
  log.clear();
  Call("wvhome", {});
  EXPECT_THAT(log, ElementsAre("view1.Navigate(file:///home.html)"));
}

}  // namespace
}  // namespace qrl::testing
