#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "browser/browser_state.h"
#include "tests/browser/browser_fixture.h"

namespace qrl::testing {
namespace {

using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

struct CommandCase {
  const char* what;
  const char* name;
  std::vector<Argument> args;
  std::function<void(StandInView&)> prepare;
  Value result;
  std::vector<std::string> calls;
};

void Nothing(StandInView&) {}

// Every browser command on a live browser: the calls it makes on the view,
// in order, and its result.
const CommandCase LiveCases[] = {
    {"stop", "wvstop", {}, Nothing, Value::Integer(1), {"view1.Stop"}},
    {"back nowhere", "wvback", {}, Nothing, Value::Integer(-1), {"view1.CanGoBack"}},
    {"back", "wvback", {}, [](StandInView& v) { v.canGoBack = true; }, Value::Integer(1),
     {"view1.CanGoBack", "view1.GoBack"}},
    {"forward nowhere", "wvforward", {}, Nothing, Value::Integer(-1), {"view1.CanGoForward"}},
    {"forward", "wvforward", {}, [](StandInView& v) { v.canGoForward = true; },
     Value::Integer(1), {"view1.CanGoForward", "view1.GoForward"}},
    // No URL rule and no "Nav" for the home.
    {"home as given", "wvhome", {std::u16string(u"C:\\pages\\home.html")}, Nothing,
     Value::Integer(1), {"view1.Navigate(C:\\pages\\home.html)"}},
    {"home without argument", "wvhome", {}, Nothing, Value::Integer(1),
     {"view1.Navigate(file:///start.html)"}},
    {"reload", "wvreload", {}, Nothing, Value::Integer(1), {"view1.Reload"}},
    {"reload ignores its text", "wvreload", {std::string("x")}, Nothing, Value::Integer(1),
     {"view1.Reload"}},
    {"url", "wvurl", {}, [](StandInView& v) { v.source = u"file:///now.html\u00e9"; },
     Value::WideText(u"file:///now.html\u00e9"), {"view1.GetSource"}},
    {"devtools", "wvopendev", {}, Nothing, Value::Integer(1), {"view1.OpenDevToolsWindow"}},
    {"status bar", "wvstatusbar", {std::int32_t{0}}, Nothing, Value::Integer(1),
     {"view1.GetSettings"}},
    {"context menu off", "wvcontextmenu", {std::int32_t{0}}, Nothing, Value::Integer(1),
     {"view1.GetSettings", "settings.SetDefaultContextMenusEnabled(0)"}},
    {"context menu on", "wvcontextmenu", {std::int32_t{-5}}, Nothing, Value::Integer(1),
     {"view1.GetSettings", "settings.SetDefaultContextMenusEnabled(1)"}},
    {"context menu without settings", "wvcontextmenu", {std::int32_t{1}},
     [](StandInView& v) { v.settingsAvailable = false; }, Value::Integer(1),
     {"view1.GetSettings"}},
    {"execute empty script", "wvexecutescript", {std::u16string()}, Nothing, Value::Integer(1),
     {"view1.ExecuteScript()"}},
};

class LiveCommandTest : public BrowserTest, public ::testing::WithParamInterface<CommandCase> {};

TEST_P(LiveCommandTest, CallsTheViewAndGivesItsResultAtOnce) {
  StandInView& view = MakeLiveBrowser(u"file:///start.html");
  GetParam().prepare(view);
  const CallOutcome outcome = host.call(GetParam().name, GetParam().args);
  EXPECT_EQ(outcome.deliveries, 1);
  EXPECT_EQ(outcome.result, GetParam().result);
  EXPECT_THAT(log, ElementsAreArray(GetParam().calls));
}

INSTANTIATE_TEST_SUITE_P(Commands, LiveCommandTest, ::testing::ValuesIn(LiveCases),
                         [](const ::testing::TestParamInfo<CommandCase>& info) {
                           std::string name = info.param.what;
                           for (char& c : name)
                             if (c == ' ') c = '_';
                           return name;
                         });

struct IdleCase {
  const char* name;
  std::vector<Argument> args;
  Value result;
};

// Before a browser is live, each command gives its usual result and does
// nothing else.
const IdleCase IdleCases[] = {
    {"wvstop", {}, Value::Integer(1)},
    {"wvback", {}, Value::Integer(-1)},
    {"wvforward", {}, Value::Integer(-1)},
    {"wvhome", {std::u16string(u"file:///h.html")}, Value::Integer(1)},
    {"wvhome", {}, Value::Integer(1)},
    {"wvreload", {}, Value::Integer(1)},
    {"wvurl", {}, Value::WideText(u"")},
    {"wvopendev", {}, Value::Integer(1)},
    {"wvstatusbar", {std::int32_t{1}}, Value::Integer(1)},
    {"wvcontextmenu", {std::int32_t{0}}, Value::Integer(1)},
    {"wvnavigate", {std::u16string(u"file:///n.html")}, Value::Integer(0)},
    {"wvnavigate", {std::u16string()}, Value::Integer(0)},
    {"wvnavigatestr", {std::u16string(u"<p>x</p>")}, Value::Integer(0)},
    {"wvnavigatestr", {std::u16string()}, Value::Integer(-1)},
    {"wvrefreshdom", {}, Value::Integer(0)},
    {"wvexecutescript", {std::u16string(u"1")}, Value::Integer(1)},
};

class IdleCommandTest : public BrowserTest, public ::testing::WithParamInterface<IdleCase> {};

TEST_P(IdleCommandTest, WithoutBrowserGivesTheUsualResultOnly) {
  // A chain that has begun but not ended, with a notify window named.
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string(u"file:///start.html"),
                    std::int32_t{ProgressWindow}});
  log.clear();
  const std::u16string startUrl = StartUrl;
  EXPECT_EQ(host.call(GetParam().name, GetParam().args).result, GetParam().result);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(StartUrl, startUrl);
  EXPECT_EQ(CanGoBackFlag, 0);
}

INSTANTIATE_TEST_SUITE_P(Commands, IdleCommandTest, ::testing::ValuesIn(IdleCases),
                         [](const ::testing::TestParamInfo<IdleCase>& info) {
                           return std::string(info.param.name) + "_" +
                                  std::to_string(info.index);
                         });

using UrlTextTest = BrowserTest;

TEST_F(UrlTextTest, EachUrlTextStaysReadableUntilTheNext) {
  StandInView& view = MakeLiveBrowser();
  view.source = u"file:///first.html";
  HostValue result{};
  const std::int32_t code = host.findRow("wvurl")->index;
  host.dispatch(code, nullptr, 0, &result);
  const auto* first = static_cast<const char16_t*>(result.text);
  ASSERT_EQ(result.type, ValueWideText);
  EXPECT_EQ(std::u16string(first), u"file:///first.html");
  Call("wvreload", {});
  EXPECT_EQ(std::u16string(first), u"file:///first.html") << "other commands leave it alone";
}

TEST_F(UrlTextTest, HomeReplacesTheStartUrlThatALaterHomeUses) {
  MakeLiveBrowser(u"file:///start.html");
  Call("wvhome", {std::u16string(u"file:///home.html")});
  log.clear();
  Call("wvhome", {});
  EXPECT_THAT(log, ::testing::ElementsAre("view1.Navigate(file:///home.html)"));
}

}  // namespace
}  // namespace qrl::testing
