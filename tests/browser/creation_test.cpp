#include <optional>
#include <string>
#include <vector>

#include "tests/browser/browser_fixture.h"

namespace qrl::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using CreationTest = BrowserTest;

// Each step waits for its completion. A window alone then gives the
// defaults, also after a create that named them all; an empty start URL is
// given, not missing.
TEST_F(CreationTest, ChainRunsStepByStepAndAWindowAloneGivesTheDefaults) {
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string(u"C:\\p\\a.html"),
                    std::int32_t{ProgressWindow}, std::u16string(u"/opt/browser")});
  EXPECT_THAT(log, ElementsAre("LocalAppDataFolder",
                               "CreateFolder(/home/user/.local/share/wvWebView2)",
                               "loader.CreateEnvironment(/opt/browser, "
                               "/home/user/.local/share/wvWebView2)",
                               "PumpOneMessage"));
  log.clear();
  browser.CompleteEnvironment();
  EXPECT_THAT(log, ElementsAre("environment.CreateController(7)"));
  EXPECT_EQ(BrowserView, nullptr) << "no browser before the controller";
  log.clear();
  browser.CompleteController();
  // The component tests check the browser's calls one by one and in order;
  // their windows are of one size, so the window measured is seen here.
  EXPECT_THAT(log, Contains("GetClientRect(7)"));
  platform.windowTexts[ProgressWindow] = "untouched";
  log.clear();
  Call("wvcreate", {std::int32_t{8}});
  browser.CompleteChain();
  EXPECT_EQ(log.at(2), "loader.CreateEnvironment(.\\edge, /home/user/.local/share/wvWebView2)");
  EXPECT_EQ(log.at(12), "view2.Navigate(https://https::edge://version/)");
  browser.view()->RaiseNavigationStarting();
  EXPECT_EQ(Progress(), "untouched") << "no notify window was named";
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string()});
  browser.CompleteChain();
  EXPECT_EQ(StartUrl, u"https://");
}

// Without a folder for the browser's data a message box says so, and the
// result stays zero. (The Windows platform test sees the loader's failure.)
TEST_F(CreationTest, NoDataFolderIsReportedAndTheResultStaysZero) {
  platform.appDataFolder = std::nullopt;
  EXPECT_EQ(Call("wvcreate", {std::int32_t{BrowserWindow}}), Value::Integer(0));
  EXPECT_THAT(log, ElementsAre("LocalAppDataFolder",
                               "ShowMessageBoxW(Note: Failed to get the AppData\\Local path.)"));
  EXPECT_FALSE(browser.environmentWaiting());
}

// A failed step ends its chain silently and the live browser stays; a chain
// that succeeds takes over only when its controller arrives, whatever error
// code comes with it.
TEST_F(CreationTest, OnlyAControllerReplacesTheLiveBrowser) {
  MakeLiveBrowser();
  const auto reloadGoesTo = [&](const std::string& view) {
    log.clear();
    Call("wvreload", {});
    EXPECT_THAT(log, ElementsAre(view + ".Reload"));
  };
  Call("wvcreate", {std::int32_t{BrowserWindow}});
  browser.CompleteEnvironment(ResultFailed, false);
  EXPECT_FALSE(browser.controllerWaiting());
  Call("wvcreate", {std::int32_t{BrowserWindow}});
  browser.CompleteEnvironment();
  browser.CompleteController(ResultFailed, false);
  Call("wvcreate", {std::int32_t{BrowserWindow}});
  browser.CompleteEnvironment();
  reloadGoesTo("view1");
  EXPECT_THAT(platform.messageBoxes, IsEmpty());
  browser.CompleteController(ResultFailed);
  reloadGoesTo("view2");
}

// The word goes out before any browser work, and script calls made while it
// is handled do not steal the result of the creation.
TEST_F(CreationTest, CreationWordGoesToTheScriptsNameBeforeAnyBrowserWork) {
  std::vector<std::string> heard;
  host.setNamedValueHook([&](const std::string& name, const Value& value) {
    heard.push_back(name + "=" + value.text + " after " + std::to_string(log.size()) + " calls");
    EXPECT_EQ(host.call("wvparse", {std::string("<p>x</p>")}).deliveries, 1);
  });
  // The name stays for calls that give none; an empty name clears it.
  const char* const names[] = {"OnBrowser", nullptr, "", nullptr};
  for (const char* name : names) {
    std::vector<Argument> args{std::int32_t{BrowserWindow}, std::u16string(u"file:///a.html"),
                               std::int32_t{ProgressWindow}, std::u16string(u"/opt")};
    if (name) args.push_back(std::string(name));
    const CallOutcome outcome = host.call("wvcreate", args);
    EXPECT_EQ(outcome.deliveries, 1);
    EXPECT_EQ(outcome.result, Value::Integer(0));
  }
  EXPECT_THAT(heard, ElementsAre("OnBrowser=Creation after 0 calls",
                                 "OnBrowser=Creation after 4 calls"));
  EXPECT_THAT(host.contractFaults(), IsEmpty());
}

}  // namespace
}  // namespace qrl::testing
