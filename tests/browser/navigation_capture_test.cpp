#include <string>
#include <vector>

#include "commands/unicode_text.h"
#include "tests/browser/browser_fixture.h"

namespace qrl::testing {
namespace {

using ::testing::ElementsAre;

constexpr const char* MarkupScript = "ExecuteScript(document.documentElement.outerHTML;)";

using NavigationTest = BrowserTest;

TEST_F(NavigationTest, ProgressGoesFromNavToNavCompleteOnlyAfterTheCapture) {
  StandInView& view = MakeLiveBrowser();
  Call("wvparse", {std::string("<p>old</p><p>old</p>")});
  Call("wvgetelementsbytagname", {std::int32_t{0}, std::string("p")});
  Call("wvnavigate", {std::u16string(u"file:///b.html")});
  view.RaiseNavigationStarting();
  EXPECT_EQ(ProgressCount("Nav"), 2);
  view.RaiseNavigationCompleted();
  EXPECT_EQ(log.back(), std::string("view1.") + MarkupScript);
  EXPECT_EQ(Progress(), "Nav");
  AnswerScript(u"\"<p id=\\\"b\\\">\\u00e9</p>\"");
  EXPECT_EQ(Progress(), "NavComplete");
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("b")}), Value::Integer(1))
      << "the capture empties the handle table";
  EXPECT_EQ(Call("wvgetinnertext", {std::int32_t{1}}), Value::Text("\xC3\xA9"));
}

TEST_F(NavigationTest, FailedPageScriptLeavesEverythingAsItWas) {
  StandInView& view = MakeLiveBrowser();
  Call("wvparse", {std::string("<p id=\"old\">old</p>")});
  Call("wvgetelementbyid", {std::int32_t{0}, std::string("old")});
  view.RaiseNavigationStarting();
  view.RaiseNavigationCompleted();
  ::testing::internal::CaptureStdout();
  AnswerScript(u"\"<p>new</p>\"", ResultFailed);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "") << "silent after a navigation";
  EXPECT_EQ(Progress(), "Nav");
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("old")}), Value::Integer(2));
}

TEST_F(NavigationTest, HistoryChangeReadsBothFlagsAndWebMessagesGoStraightBack) {
  StandInView& view = MakeLiveBrowser();
  view.canGoBack = true;
  view.RaiseHistoryChanged();
  EXPECT_THAT(log, ElementsAre("view1.CanGoBack", "view1.CanGoForward"));
  EXPECT_EQ(CanGoBackFlag, 1);
  EXPECT_EQ(CanGoForwardFlag, 0);
  view.RaiseWebMessage(u"file:///start.html");
  view.RaiseWebMessage(std::nullopt);
  EXPECT_THAT(view.postedMessages, ElementsAre("file:///start.html", "(null)"));
  EXPECT_EQ(Progress(), "") << "neither is progress";
}

using CaptureFlowTest = BrowserTest;

TEST_F(CaptureFlowTest, RefreshKeepsTheOldDocumentAndAFailureOnlyPrintsItsCode) {
  MakeLiveBrowser();
  Call("wvparse", {std::string("<p id=\"old\">old</p>")});
  Call("wvrefreshdom", {});
  ::testing::internal::CaptureStdout();
  AnswerScript(u"", static_cast<ResultCode>(0x8007000Eu));
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Error executing script: 0x8007000e\n");
  EXPECT_EQ(Progress(), "Nav");
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("old")}), Value::Integer(1));
}

TEST_F(CaptureFlowTest, TwoCapturesInFlightEachEndAndTheLastStands) {
  StandInView& view = MakeLiveBrowser();
  Call("wvrefreshdom", {});
  Call("wvrefreshdom", {});
  ASSERT_EQ(view.scriptsInFlight(), 2u);
  view.CompleteScript(1, ResultOk, u"\"<p id=\\\"second\\\"></p>\"");
  view.CompleteScript(0, ResultOk, u"\"<p id=\\\"first\\\"></p>\"");
  EXPECT_EQ(ProgressCount("NavComplete"), 2);
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("first")}), Value::Integer(1));
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("second")}),
            Value::Integer(-1));
}

TEST_F(CaptureFlowTest, CaptureArrivingDuringAnotherWaitsAndRunsAfterIt) {
  StandInView& view = MakeLiveBrowser();
  Call("wvrefreshdom", {});
  Call("wvrefreshdom", {});
  std::vector<std::string> seenAtNavComplete;
  platform.onWindowText = [&](WindowHandle, std::string_view text) {
    if (text != "NavComplete") return;
    seenAtNavComplete.push_back(DocumentMarkup());
    // The window's owner runs its loop while it takes the text: the second
    // answer arrives now, inside the first capture.
    if (view.scriptsInFlight() > 0) view.CompleteScript(0, ResultOk, u"\"<b>two</b>\"");
  };
  view.CompleteScript(0, ResultOk, u"\"<i>one</i>\"");
  ASSERT_EQ(seenAtNavComplete.size(), 2u);
  EXPECT_NE(seenAtNavComplete[0].find("<i>one</i>"), std::string::npos);
  EXPECT_NE(seenAtNavComplete[1].find("<b>two</b>"), std::string::npos);
  EXPECT_NE(DocumentMarkup().find("<b>two</b>"), std::string::npos);
}

TEST_F(CaptureFlowTest, ExecuteScriptPrintsTheAnswerAndLeavesTheDocument) {
  MakeLiveBrowser();
  Call("wvparse", {std::string("<p id=\"kept\"></p>")});
  struct Case {
    std::u16string script;
    ResultCode code;
    std::u16string json;
    std::string line;
  };
  const Case cases[] = {
      {u"'\u00e9'", ResultOk, u"\"\u00e9\"", "Script executed successfully, result: \"\xC3\xA9\"\n"},
      {u"", ResultOk, u"null", "Script executed successfully, result: null\n"},
      {u"throw 1", ResultFailed, u"", "Error executing script: 0x80004005\n"},
  };
  for (const Case& c : cases) {
    log.clear();
    EXPECT_EQ(Call("wvexecutescript", {c.script}), Value::Integer(1));
    EXPECT_THAT(log, ElementsAre("view1.ExecuteScript(" + Utf16ToUtf8(c.script) + ")"));
    ::testing::internal::CaptureStdout();
    AnswerScript(c.json, c.code);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), c.line);
  }
  EXPECT_EQ(Call("wvgetelementbyid", {std::int32_t{0}, std::string("kept")}), Value::Integer(1));
  EXPECT_EQ(Progress(), "");
}

}  // namespace
}  // namespace qrl::testing
