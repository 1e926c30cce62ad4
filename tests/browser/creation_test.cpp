#include <optional>
#include <string>
#include <vector>

#include "tests/browser/browser_fixture.h"

namespace qrl::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
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
  EXPECT_THAT(
      log,
      ElementsAre("controller1.GetView", "view1.GetSettings", "settings.SetScriptEnabled(1)",
                  "settings.SetDefaultScriptDialogsEnabled(1)", "settings.SetWebMessageEnabled(1)",
                  "GetClientRect(7)", "controller1.SetBounds(0,0,640,480)",
                  "view1.Navigate(file:///C:/p/a.html)", "view1.AddNavigationStarting",
                  "view1.AddNavigationCompleted", "view1.AddHistoryChanged",
                  "view1.AddWebMessageReceived",
                  "view1.AddScriptToExecuteOnDocumentCreated("
                  "window.chrome.webview.postMessage(window.document.URL);)"));
  platform.windowTexts[ProgressWindow] = "untouched";
  log.clear();
  Call("wvcreate", {std::int32_t{8}});
  browser.CompleteChain();
  EXPECT_EQ(log.at(2), "loader.CreateEnvironment(.\\edge, /home/user/.local/share/wvWebView2)");
  EXPECT_EQ(log.at(12), "view2.Navigate(https://https::edge://version/)");
  EXPECT_EQ(HostWindow, 8u);
  browser.view()->RaiseNavigationStarting();
  EXPECT_EQ(Progress(), "untouched") << "no notify window was named";
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string()});
  browser.CompleteChain();
  EXPECT_EQ(StartUrl, u"https://");
}

TEST_F(CreationTest, MessageBoxesReportTheTwoFailuresAndTheResultStaysZero) {
  const struct {
    std::optional<std::u16string> appData;
    ResultCode loaderAnswer;
    std::vector<std::string> calls;
  } cases[] = {
      {std::nullopt, ResultOk,
       {"LocalAppDataFolder", "ShowMessageBoxW(Note: Failed to get the AppData\\Local path.)"}},
      {u"/data", static_cast<ResultCode>(0x8000FFFFu),
       {"LocalAppDataFolder", "CreateFolder(/data/wvWebView2)",
        "loader.CreateEnvironment(.\\edge, /data/wvWebView2)",
        "ShowMessageBoxA(Error: WebView2 failed with HRESULT: 0x8000FFFF)", "PumpOneMessage"}},
  };
  for (const auto& c : cases) {
    log.clear();
    platform.appDataFolder = c.appData;
    browser.loaderAnswer = c.loaderAnswer;
    EXPECT_EQ(Call("wvcreate", {std::int32_t{BrowserWindow}}), Value::Integer(0));
    EXPECT_THAT(log, ElementsAreArray(c.calls));
    EXPECT_FALSE(browser.environmentWaiting());
  }
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
