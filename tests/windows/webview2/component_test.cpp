// The Windows component end to end: qrlantern.dll through its exports, a
// real notify window, and the recording control behind the test loader,
// which answers everything later, out of the message loop. What the browser
// does with the answers is the browser logic's own tests' concern; these
// check what crosses the control's interfaces.
#include <windows.h>
#include <shlobj.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "browser/windows/wide_text.h"
#include "commands/unicode_text.h"
#include "lantern/host/module_host.h"
#include "tests/host/module_fixture.h"
#include "tests/windows/test_window.h"
#include "tests/windows/webview2/fake_control.h"

namespace qrl::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

class WebView2ComponentTest : public ::testing::Test {
 protected:
  // The DLL stays loaded once the control holds a handler of it, so each
  // test loads a copy of its own that has never made a browser.
  void SetUp() override {
    _putenv("QRLANTERN_NO_DIALOGS=1");
    host_ = FreshHost();
  }
  // What the test made of the control beyond the live browser itself must
  // be gone, and so must every handler that the control let go.
  void TearDown() override {
    host_.reset();
    EXPECT_EQ(control.liveObjects, browserObjects_);
    EXPECT_EQ(control.handlersHeldElsewhere, 0);
  }

  Value Call(std::string_view name, std::initializer_list<Argument> args) {
    const CallOutcome outcome = host_->call(name, args);
    EXPECT_EQ(outcome.deliveries, 1) << name;
    EXPECT_TRUE(outcome.errors.empty()) << name;
    return outcome.result;
  }

  // Creates a browser in `browserWindow` and lets its chain run.
  void Create() {
    Call("wvcreate", {browserWindow.scriptHandle(), std::u16string(u"C:\\pages\\a.html"),
                      notifyWindow.scriptHandle()});
    control.RunPending();
    browserObjects_ = control.liveObjects;
  }

  // A browser whose chain has run, with the log cleared.
  void MakeLiveBrowser() {
    Create();
    ASSERT_NE(control.view, nullptr);
    control.calls.clear();
  }

  FakeControl& control = FakeControl::Start();
  TestWindow browserWindow;
  TestWindow notifyWindow;
  std::unique_ptr<ModuleHost> host_;
  int browserObjects_ = 0;
};

TEST_F(WebView2ComponentTest, CreationChainRunsInItsOrderOutOfTheMessageLoop) {
  wchar_t appData[MAX_PATH] = {};
  SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, appData);
  Create();
  EXPECT_THAT(
      control.calls,
      ElementsAre("CreateCoreWebView2EnvironmentWithOptions(.\\edge, " +
                      Utf16ToUtf8(FromWide(appData)) + "\\wvWebView2, null)",
                  "CreateCoreWebView2Controller(" + std::to_string(browserWindow.handle()) + ")",
                  "environment gone", "get_CoreWebView2", "get_Settings", "put_IsScriptEnabled(1)",
                  "put_AreDefaultScriptDialogsEnabled(1)", "put_IsWebMessageEnabled(1)",
                  "put_Bounds(0,0,320,200)", "Navigate(file:///C:/pages/a.html)",
                  "add_NavigationStarting", "add_NavigationCompleted", "add_HistoryChanged",
                  "add_WebMessageReceived",
                  "AddScriptToExecuteOnDocumentCreated(window.chrome.webview.postMessage("
                  "window.document.URL);, null)"));
}

// A step that answers with an error and no object ends the chain: there is
// no browser, and commands still answer.
TEST_F(WebView2ComponentTest, AFailedChainLeavesNoBrowser) {
  for (const auto failing : {FakeControl::Failing::Environment, FakeControl::Failing::Controller}) {
    control.failing = failing;
    Create();
    EXPECT_EQ(control.view, nullptr);
    EXPECT_EQ(Call("wvurl", {}), Value::WideText(u""));
  }
}

// The page arrives as the script's result, escaped as JSON; a capture that
// fails comes with no result and keeps the page.
TEST_F(WebView2ComponentTest, ANavigationEndsInACaptureAndAFailedOneKeepsThePage) {
  MakeLiveBrowser();
  control.RaiseNavigationStarting();
  control.RaiseNavigationCompleted();
  control.RunPending();
  EXPECT_EQ(notifyWindow.text(), "Nav");
  EXPECT_THAT(control.calls, ElementsAre("ExecuteScript(document.documentElement.outerHTML;)"));
  control.AnswerScript(S_OK, LR"("<body>\n<p id=\"a\">x\\y \"q\" \u00e9 \ud83d\ude00</p></body>")");
  control.RunPending();
  EXPECT_EQ(notifyWindow.text(), "NavComplete");
  Call("wvrefreshdom", {});
  ::testing::internal::CaptureStdout();
  control.AnswerScript(E_FAIL, L"");
  control.RunPending();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Error executing script: 0x80004005\n");
  EXPECT_EQ(notifyWindow.text(), "Nav");
  const Value paragraph = Call("wvgetelementbyid", {std::int32_t{0}, std::string("a")});
  // A character beyond the basic plane arrives as its two halves.
  EXPECT_EQ(Call("wvgetinnertext", {paragraph.integer}).text,
            "x\\y \"q\" \xC3\xA9 \xED\xA0\xBD\xED\xB8\x80");
}

TEST_F(WebView2ComponentTest, EachCommandIsItsCallsOnTheView) {
  const struct {
    const char* name;
    std::vector<Argument> args;
    std::int32_t result;
    std::vector<std::string> calls;
    BOOL canGo = FALSE;  // what the view says to both get_CanGo calls
    bool settingsFail = false;
  } cases[] = {
      {"wvstop", {}, 1, {"Stop"}},
      {"wvreload", {}, 1, {"Reload"}},
      {"wvopendev", {}, 1, {"OpenDevToolsWindow"}},
      {"wvcontextmenu", {std::int32_t{0}}, 1,
       {"get_Settings", "put_AreDefaultContextMenusEnabled(0)"}},
      {"wvcontextmenu", {std::int32_t{1}}, 1, {"get_Settings"}, FALSE, true},
      {"wvback", {}, -1, {"get_CanGoBack"}},
      {"wvback", {}, 1, {"get_CanGoBack", "GoBack"}, TRUE},
      {"wvforward", {}, -1, {"get_CanGoForward"}},
      {"wvforward", {}, 1, {"get_CanGoForward", "GoForward"}, TRUE},
      {"wvnavigatestr", {std::u16string(u"<p>hi</p>")}, 0, {"NavigateToString(<p>hi</p>)"}},
  };
  MakeLiveBrowser();
  for (const auto& command : cases) {
    control.calls.clear();
    control.canGoBack = control.canGoForward = command.canGo;
    control.settingsFail = command.settingsFail;
    EXPECT_EQ(host_->call(command.name, command.args).result.integer, command.result)
        << command.name;
    EXPECT_THAT(control.calls, ElementsAreArray(command.calls)) << command.name;
  }
}

// Events that read the view, and the URL: every string that the view hands
// out is freed, and every object of the control let go.
TEST_F(WebView2ComponentTest, EventsAndTheUrlReadTheViewAndLeaveNothingBehind) {
  MakeLiveBrowser();
  control.RaiseHistoryChanged();
  control.RaiseWebMessage(L"file:///C:/pages/a.html");
  control.RaiseWebMessage(std::nullopt);
  control.RunPending();
  EXPECT_THAT(control.calls,
              ElementsAre("get_CanGoBack", "get_CanGoForward", "TryGetWebMessageAsString",
                          "PostWebMessageAsString(file:///C:/pages/a.html)",
                          "TryGetWebMessageAsString", "PostWebMessageAsString(null)"));
  // The source is asked for at each call.
  for (const std::wstring source : {L"https://one/\u00e9", L"https://two/"}) {
    control.source = source;
    EXPECT_EQ(Call("wvurl", {}), Value::WideText(FromWide(source.c_str())));
  }
  EXPECT_EQ(control.stringsNotFreed(), 0);
}

}  // namespace
}  // namespace qrl::testing
