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

TEST_F(CreationTest, ChainRunsStepByStepAsCompletionsArrive) {
  EXPECT_EQ(Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string(u"C:\\p\\a.html"),
                              std::int32_t{ProgressWindow}, std::u16string(u"/opt/browser")}),
            Value::Integer(0));
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
}

// A window alone gives the defaults, also after a create that named them all;
// an empty start URL is given, not missing.
TEST_F(CreationTest, WindowAloneGivesTheDefaults) {
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string(u"file:///one.html"),
                    std::int32_t{ProgressWindow}, std::u16string(u"/opt/one")});
  browser.CompleteChain();
  platform.windowTexts[ProgressWindow] = "untouched";
  log.clear();
  Call("wvcreate", {std::int32_t{8}});
  EXPECT_EQ(log.at(2), "loader.CreateEnvironment(.\\edge, /home/user/.local/share/wvWebView2)");
  browser.CompleteChain();
  EXPECT_EQ(log.at(12), "view2.Navigate(https://https::edge://version/)");
  EXPECT_EQ(HostWindow, 8u);
  browser.view()->RaiseNavigationStarting();
  EXPECT_EQ(Progress(), "untouched") << "no notify window was named";
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::u16string()});
  browser.CompleteChain();
  EXPECT_EQ(StartUrl, u"https://");
}

TEST_F(CreationTest, MessageBoxesReportTheTwoFailuresAndTheResultStaysZero) {
  struct Case {
    std::optional<std::u16string> appData;
    ResultCode loaderAnswer;
    std::vector<std::string> calls;
  };
  const Case cases[] = {
      {std::nullopt, ResultOk,
       {"LocalAppDataFolder", "ShowMessageBoxW(Note: Failed to get the AppData\\Local path.)"}},
      {u"/data", static_cast<ResultCode>(0x8000FFFFu),
       {"LocalAppDataFolder", "CreateFolder(/data/wvWebView2)",
        "loader.CreateEnvironment(.\\edge, /data/wvWebView2)",
        "ShowMessageBoxA(Error: WebView2 failed with HRESULT: 0x8000FFFF)", "PumpOneMessage"}},
  };
  for (const Case& c : cases) {
    log.clear();
    platform.appDataFolder = c.appData;
    browser.loaderAnswer = c.loaderAnswer;
    EXPECT_EQ(Call("wvcreate", {std::int32_t{BrowserWindow}}), Value::Integer(0));
    EXPECT_THAT(log, ElementsAreArray(c.calls));
    EXPECT_FALSE(browser.environmentWaiting());
  }
}

// A failed step ends its chain silently; the browser already live stays, and
// a chain that succeeds takes over only when its controller arrives.
TEST_F(CreationTest, OnlyAControllerReplacesTheLiveBrowser) {
  StandInView& first = MakeLiveBrowser();
  Call("wvcreate", {std::int32_t{BrowserWindow}});
  log.clear();
  browser.CompleteEnvironment(ResultFailed, false);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(browser.controllerWaiting());
  Call("wvcreate", {std::int32_t{BrowserWindow}});
  browser.CompleteEnvironment();
  log.clear();
  browser.CompleteController(ResultFailed, false);
  EXPECT_THAT(log, IsEmpty());
  Call("wvcreate", {std::int32_t{BrowserWindow}});
  browser.CompleteEnvironment();
  log.clear();
  Call("wvreload", {});
  EXPECT_THAT(log, ElementsAre("view1.Reload"));
  EXPECT_EQ(BrowserView.get(), &first);
  // Error codes that come with a controller are not looked at.
  browser.CompleteController(ResultFailed);
  log.clear();
  Call("wvreload", {});
  EXPECT_THAT(log, ElementsAre("view2.Reload"));
}

// The word goes out before any browser work, and script calls made while it
// is handled do not steal the result of the creation.
TEST_F(CreationTest, CreationWordGoesToTheScriptsNameBeforeAnyBrowserWork) {
  std::vector<std::string> heard;
  host.setNamedValueHook([&](const std::string& name, const Value& value) {
    heard.push_back(name + "=" + value.text + " after " + std::to_string(log.size()) + " calls");
    EXPECT_EQ(host.call("wvparse", {std::string("<p>x</p>")}).deliveries, 1);
  });
  const auto create = [&](std::initializer_list<Argument> rest) {
    std::vector<Argument> args{std::int32_t{BrowserWindow}, std::u16string(u"file:///a.html"),
                               std::int32_t{ProgressWindow}, std::u16string(u"/opt")};
    args.insert(args.end(), rest);
    const CallOutcome outcome = host.call("wvcreate", args);
    EXPECT_EQ(outcome.deliveries, 1);
    EXPECT_EQ(outcome.result, Value::Integer(0));
  };
  create({std::string("OnBrowser")});
  create({});  // the name stays for calls that give none
  EXPECT_THAT(heard, ElementsAre("OnBrowser=Creation after 0 calls",
                                 "OnBrowser=Creation after 4 calls"));
  heard.clear();
  create({std::string()});  // an empty name clears it
  create({});
  EXPECT_THAT(heard, IsEmpty());
  EXPECT_THAT(host.contractFaults(), IsEmpty());
}

}  // namespace
}  // namespace qrl::testing
