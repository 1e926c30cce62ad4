// The Windows component end to end: qrlantern.dll through its exports, a
// real notify window, and the recording control behind the test loader,
// which answers everything later, out of the message loop.
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
#include "lantern/module_host.h"
#include "tests/windows/test_window.h"
#include "tests/windows/webview2/fake_control.h"

namespace qrl::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Calls = std::vector<std::string>;

std::string DataFolder() {
  wchar_t folder[MAX_PATH] = {};
  SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
  return Utf16ToUtf8(FromWide(folder)) + "\\wvWebView2";
}

class WebView2ComponentTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _putenv("QRLANTERN_NO_DIALOGS=1");
    host_ = ModuleHost::Load(QRL_MODULE_PATH);
  }
  // Unloading the module releases the browser; nothing of the control may
  // outlive it.
  void TearDown() override {
    host_.reset();
    EXPECT_EQ(control.liveObjects, 0);
    EXPECT_EQ(control.handlersHeldElsewhere, 0);
  }

  Value Call(std::string_view name, std::initializer_list<Argument> args) {
    const CallOutcome outcome = host_->call(name, args);
    EXPECT_EQ(outcome.deliveries, 1) << name;
    EXPECT_TRUE(outcome.errors.empty()) << name;
    return outcome.result;
  }

  // A browser in `browserWindow` whose chain has run, with the log cleared.
  void MakeLiveBrowser() {
    Call("wvcreate", {browserWindow.scriptHandle(), std::u16string(u"C:\\pages\\a.html"),
                      notifyWindow.scriptHandle()});
    control.RunPending();
    ASSERT_NE(control.view(), nullptr);
    control.calls.clear();
  }

  // One whole navigation as the control reports it, answered with `json`.
  void CompleteNavigation(const std::wstring& json) {
    control.RaiseNavigationStarting();
    control.RaiseNavigationCompleted();
    control.RunPending();
    control.AnswerScript(S_OK, json);
    control.RunPending();
  }

  FakeControl& control = FakeControl::Start();
  TestWindow browserWindow;
  TestWindow notifyWindow;
  std::unique_ptr<ModuleHost> host_;
};

TEST_F(WebView2ComponentTest, CreationChainRunsInItsOrderOutOfTheMessageLoop) {
  EXPECT_EQ(Call("wvcreate", {browserWindow.scriptHandle(), std::u16string(u"C:\\pages\\a.html"),
                              notifyWindow.scriptHandle(), std::u16string()})
                .integer,
            0);
  control.RunPending();
  const std::string window = std::to_string(browserWindow.handle());
  EXPECT_THAT(control.calls,
              ElementsAre("CreateCoreWebView2EnvironmentWithOptions(, " + DataFolder() + ", null)",
                          "CreateCoreWebView2Controller(" + window + ")", "environment gone",
                          "get_CoreWebView2", "get_Settings", "put_IsScriptEnabled(1)",
                          "put_AreDefaultScriptDialogsEnabled(1)", "put_IsWebMessageEnabled(1)",
                          "put_Bounds(0,0,320,200)", "Navigate(file:///C:/pages/a.html)",
                          "add_NavigationStarting", "add_NavigationCompleted",
                          "add_HistoryChanged", "add_WebMessageReceived",
                          "AddScriptToExecuteOnDocumentCreated(window.chrome.webview.postMessage("
                          "window.document.URL);, null)"));
  EXPECT_TRUE(notifyWindow.textsSet().empty());
}

TEST_F(WebView2ComponentTest, DefaultsReachTheLoaderAndCreationIsNamedToTheScript) {
  std::vector<std::string> named;
  host_->setNamedValueHook(
      [&](const std::string& name, const Value& value) { named.push_back(name + "=" + value.text); });
  Call("wvcreate", {browserWindow.scriptHandle(), std::u16string(u"https://a/"),
                    notifyWindow.scriptHandle(), std::u16string(u".\\edge"),
                    std::string("onBrowser")});
  control.RunPending();
  EXPECT_THAT(named, ElementsAre("onBrowser=Creation"));
  EXPECT_EQ(control.calls.front(),
            "CreateCoreWebView2EnvironmentWithOptions(.\\edge, " + DataFolder() + ", null)");
  control.calls.clear();
  Call("wvcreate", {browserWindow.scriptHandle()});
  control.RunPending();
  EXPECT_THAT(named, ElementsAre("onBrowser=Creation", "onBrowser=Creation"));
  EXPECT_THAT(control.calls, ::testing::Contains("Navigate(https://https::edge://version/)"));
}

// A chain that ends in an error and no object leaves no browser; every
// command still answers.
TEST_F(WebView2ComponentTest, AFailedChainLeavesNoBrowserAndCommandsStillAnswer) {
  for (const auto failing : {FakeControl::Failing::Environment, FakeControl::Failing::Controller}) {
    control.failing = failing;
    Call("wvcreate", {browserWindow.scriptHandle(), std::u16string(u"https://a/"),
                      notifyWindow.scriptHandle()});
    control.RunPending();
    EXPECT_EQ(control.view(), nullptr);
    EXPECT_EQ(Call("wvnavigate", {std::u16string(u"https://b/")}).integer, 0);
    EXPECT_EQ(Call("wvback", {}).integer, -1);
    EXPECT_EQ(Call("wvurl", {}).wide, u"");
    EXPECT_EQ(Call("wvrefreshdom", {}).integer, 0);
  }
}

TEST_F(WebView2ComponentTest, ANavigationEndsInACaptureOfTheUnescapedPage) {
  MakeLiveBrowser();
  control.RaiseNavigationStarting();
  control.RaiseNavigationCompleted();
  control.RunPending();
  EXPECT_EQ(notifyWindow.text(), "Nav");
  EXPECT_THAT(control.calls, ElementsAre("ExecuteScript(document.documentElement.outerHTML;)"));
  control.AnswerScript(
      S_OK,
      LR"("<html><head></head><body>\n<p id=\"a\">x\\y \"q\" \u00e9 \ud83d\ude00</p></body></html>")");
  control.RunPending();
  EXPECT_THAT(notifyWindow.textsSet(), ElementsAre("Nav", "NavComplete"));
  const std::int32_t paragraph =
      Call("wvgetelementbyid", {std::int32_t{0}, std::string("a")}).integer;
  ASSERT_EQ(paragraph, 1);
  // A character beyond the basic plane arrives as its two halves.
  EXPECT_EQ(Call("wvgetinnertext", {paragraph}).text,
            "x\\y \"q\" \xC3\xA9 \xED\xA0\xBD\xED\xB8\x80");
}

TEST_F(WebView2ComponentTest, TwoCapturesInFlightEachEndAndTheLastStands) {
  MakeLiveBrowser();
  control.RaiseNavigationCompleted();
  Call("wvrefreshdom", {});
  control.RunPending();
  ASSERT_EQ(control.scriptsWaiting(), 2u);
  control.AnswerScript(S_OK, LR"("<p id=\"first\">1</p>")");
  control.AnswerScript(S_OK, LR"("<p id=\"second\">2</p>")");
  control.RunPending();
  EXPECT_THAT(notifyWindow.textsSet(), ElementsAre("Nav", "NavComplete", "NavComplete"));
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("first")}).integer, -1);
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("second")}).integer, 1);
}

TEST_F(WebView2ComponentTest, AFailedScriptChangesNothingAndARefreshSaysSo) {
  MakeLiveBrowser();
  CompleteNavigation(LR"("<p id=\"kept\">k</p>")");
  Call("wvrefreshdom", {});
  ::testing::internal::CaptureStdout();
  control.AnswerScript(E_FAIL, L"");
  control.RunPending();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Error executing script: 0x80004005\n");
  EXPECT_EQ(notifyWindow.text(), "Nav");
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("kept")}).integer, 1);
}

struct CommandCase {
  const char* name;
  std::vector<Argument> args;
  std::int32_t result;
  Calls calls;
};

TEST_F(WebView2ComponentTest, EachCommandIsItsCallsOnTheView) {
  const std::vector<CommandCase> cases = {
      {"wvstop", {}, 1, {"Stop"}},
      {"wvreload", {}, 1, {"Reload"}},
      {"wvhome", {std::u16string(u"C:\\x\\home.html")}, 1, {"Navigate(C:\\x\\home.html)"}},
      {"wvopendev", {}, 1, {"OpenDevToolsWindow"}},
      {"wvstatusbar", {std::int32_t{1}}, 1, {"get_Settings"}},
      {"wvcontextmenu",
       {std::int32_t{0}},
       1,
       {"get_Settings", "put_AreDefaultContextMenusEnabled(0)"}},
      {"wvnavigate", {std::u16string(u"pages\\a.html")}, 0, {"Navigate(https://pages/a.html)"}},
      {"wvnavigatestr", {std::u16string(u"<p>hi</p>")}, 0, {"NavigateToString(<p>hi</p>)"}},
      {"wvnavigatestr", {std::u16string()}, -1, {}},
      {"wvrefreshdom", {}, 0, {"ExecuteScript(document.documentElement.outerHTML;)"}},
      {"wvexecutescript", {std::u16string(u"document.title")}, 1, {"ExecuteScript(document.title)"}},
  };
  MakeLiveBrowser();
  for (const CommandCase& command : cases) {
    control.calls.clear();
    const CallOutcome outcome = host_->call(command.name, command.args);
    EXPECT_EQ(outcome.result.integer, command.result) << command.name;
    EXPECT_THAT(control.calls, ElementsAreArray(command.calls)) << command.name;
  }
  control.calls.clear();
  control.settingsFail = true;
  EXPECT_EQ(Call("wvcontextmenu", {std::int32_t{1}}).integer, 1);
  EXPECT_THAT(control.calls, ElementsAre("get_Settings"));
}

TEST_F(WebView2ComponentTest, BackAndForwardAskTheViewEachTime) {
  MakeLiveBrowser();
  EXPECT_EQ(Call("wvback", {}).integer, -1);
  EXPECT_EQ(Call("wvforward", {}).integer, -1);
  EXPECT_THAT(control.calls, ElementsAre("get_CanGoBack", "get_CanGoForward"));
  control.calls.clear();
  control.canGoBack = control.canGoForward = TRUE;
  EXPECT_EQ(Call("wvback", {}).integer, 1);
  EXPECT_EQ(Call("wvforward", {}).integer, 1);
  EXPECT_THAT(control.calls,
              ElementsAre("get_CanGoBack", "GoBack", "get_CanGoForward", "GoForward"));
  control.calls.clear();
  control.RaiseHistoryChanged();
  control.RunPending();
  EXPECT_THAT(control.calls, ElementsAre("get_CanGoBack", "get_CanGoForward"));
}

TEST_F(WebView2ComponentTest, WebMessagesGoStraightBackAndTheirTextIsFreed) {
  MakeLiveBrowser();
  control.RaiseWebMessage(L"file:///C:/pages/a.html");
  control.RaiseWebMessage(std::nullopt);
  control.RunPending();
  EXPECT_THAT(control.calls,
              ElementsAre("TryGetWebMessageAsString",
                          "PostWebMessageAsString(file:///C:/pages/a.html)",
                          "TryGetWebMessageAsString", "PostWebMessageAsString(null)"));
  EXPECT_EQ(control.stringsNotFreed(), 0);
}

TEST_F(WebView2ComponentTest, UrlIsTheViewsSourceAtEachCall) {
  MakeLiveBrowser();
  control.source = L"https://one/\u00e9";
  const Value first = Call("wvurl", {});
  control.source = L"https://two/";
  const Value second = Call("wvurl", {});
  EXPECT_EQ(first.kind, Value::Kind::WideText);
  EXPECT_EQ(first.wide, u"https://one/\u00e9");
  EXPECT_EQ(second.wide, u"https://two/");
  EXPECT_EQ(control.stringsNotFreed(), 0);
}

// The local application data folder moved to a place that does not exist:
// the system can't give it, and creation stops at the note.
class MissingDataFolder {
 public:
  MissingDataFolder() {
    RegOpenKeyExW(HKEY_CURRENT_USER, Key, 0, KEY_READ | KEY_WRITE, &key_);
    DWORD size = sizeof saved_;
    hadValue_ = RegQueryValueExW(key_, Name, nullptr, &type_, reinterpret_cast<BYTE*>(saved_),
                                 &size) == ERROR_SUCCESS;
    savedSize_ = size;
    const wchar_t missing[] = L"C:\\qrl-no-such-folder\\Local";
    RegSetValueExW(key_, Name, 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>(missing),
                   sizeof missing);
  }
  ~MissingDataFolder() {
    if (hadValue_) {
      RegSetValueExW(key_, Name, 0, type_, reinterpret_cast<const BYTE*>(saved_), savedSize_);
    } else {
      RegDeleteValueW(key_, Name);
    }
    RegCloseKey(key_);
  }
  MissingDataFolder(const MissingDataFolder&) = delete;
  MissingDataFolder& operator=(const MissingDataFolder&) = delete;

 private:
  static constexpr wchar_t Key[] =
      L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
  static constexpr wchar_t Name[] = L"Local AppData";
  HKEY key_ = nullptr;
  DWORD type_ = REG_EXPAND_SZ;
  wchar_t saved_[MAX_PATH] = {};
  DWORD savedSize_ = 0;
  bool hadValue_ = false;
};

TEST_F(WebView2ComponentTest, NoDataFolderIsANoteAndNoBrowserWork) {
  const MissingDataFolder missing;
  wchar_t folder[MAX_PATH];
  ASSERT_NE(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder),
            S_OK);
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(Call("wvcreate", {browserWindow.scriptHandle()}).integer, 0);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "Note: Failed to get the AppData\\Local path.\n");
  control.RunPending();
  EXPECT_TRUE(control.calls.empty());
}

// Every object of the control and every handler of the component is let go:
// a thousand navigations leave the counts where they were.
TEST_F(WebView2ComponentTest, AThousandNavigationsLeaveNothingBehind) {
  MakeLiveBrowser();
  const int objects = control.liveObjects;
  for (int round = 0; round < 1000; ++round) {
    Call("wvnavigate", {std::u16string(u"https://site/page")});
    control.RaiseHistoryChanged();
    control.RaiseWebMessage(L"https://site/page");
    CompleteNavigation(LR"("<p id=\"n\">page</p>")");
    Call("wvurl", {});
    Call("wvcontextmenu", {std::int32_t{1}});
  }
  EXPECT_EQ(notifyWindow.text(), "NavComplete");
  EXPECT_EQ(control.liveObjects, objects);
  EXPECT_EQ(control.handlersHeldElsewhere, 0);
  EXPECT_GE(control.handlersFreed, 1000);
  EXPECT_EQ(control.stringsNotFreed(), 0);
}

}  // namespace
}  // namespace qrl::testing
