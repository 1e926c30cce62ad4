#include <string>
#include <vector>

#include "commands/unicode_text.h"
#include "tests/browser/browser_fixture.h"

namespace qrl::testing {
namespace {

using ::testing::ElementsAre;

using NavigationTest = BrowserTest;

TEST_F(NavigationTest, ProgressGoesFromNavToNavCompleteOnlyAfterTheCapture) {
  StandInView& view = MakeLiveBrowser();
  Call("wvparse", {std::string("<p>old</p><p>old</p>")});
  Call("wvgetelementsbytagname", {std::int32_t{0}, std::string("p")});
  Call("wvnavigate", {std::u16string(u"file:///b.html")});
  log.clear();
  view.RaiseNavigationStarting();  // also for loads that no command began
  EXPECT_THAT(log, ElementsAre("SetWindowText(9, Nav)"));
  view.RaiseNavigationCompleted();
  EXPECT_EQ(log.back(), "view1.ExecuteScript(document.documentElement.outerHTML;)");
  EXPECT_EQ(Progress(), "Nav");
  AnswerScript(u"\"<p id=\\\"b\\\">\\u00e9</p>\"");
  EXPECT_EQ(Progress(), "NavComplete");
  EXPECT_EQ(IdOf("b"), Value::Integer(1)) << "the capture empties the handle table";
  EXPECT_EQ(Call("wvgetinnertext", {std::int32_t{1}}), Value::Text("\xC3\xA9"));
}

// A failed capture leaves the document, its handles and "Nav" as they were;
// only a refresh says so, and then with the code.
TEST_F(NavigationTest, FailedCaptureLeavesEverythingAsItWas) {
  for (const bool refresh : {false, true}) {
    StandInView& view = MakeLiveBrowser();
    Call("wvparse", {std::string("<p id=\"old\">old</p>")});
    IdOf("old");
    if (refresh) {
      Call("wvrefreshdom", {});
    } else {
      view.RaiseNavigationStarting();
      view.RaiseNavigationCompleted();
    }
    EXPECT_EQ(AnswerScript(u"\"<p>new</p>\"", static_cast<ResultCode>(0x8007000Eu)),
              refresh ? "Error executing script: 0x8007000e\n" : "");
    EXPECT_EQ(Progress(), "Nav");
    EXPECT_EQ(IdOf("old"), Value::Integer(2));
  }
}

// The page's posts go straight back to it; history changes are no progress
// either.
TEST_F(NavigationTest, WebMessagesGoStraightBack) {
  StandInView& view = MakeLiveBrowser();
  view.RaiseWebMessage(u"file:///start.html");
  view.RaiseWebMessage(std::nullopt);
  view.RaiseHistoryChanged();
  EXPECT_THAT(view.postedMessages, ElementsAre("file:///start.html", "(null)"));
  EXPECT_EQ(Progress(), "");
}

// Answers may come in any order, even while another capture runs: each ends
// its own capture, and whoever reads the document on its "NavComplete" finds
// that capture's page there. The last answer stands.
TEST_F(NavigationTest, EachAnswerEndsItsCaptureAndTheLastStands) {
  StandInView& view = MakeLiveBrowser();
  for (int i = 0; i < 4; ++i) Call("wvrefreshdom", {});
  std::vector<std::string> seen;
  platform.onWindowText = [&](WindowHandle, std::string_view text) {
    if (text != "NavComplete") return;
    seen.push_back(DocumentMarkup());
    // The window's owner runs its loop while it takes the text: the second
    // answer arrives now, inside the first capture.
    if (seen.size() == 1) view.CompleteScript(0, ResultOk, u"\"<b>two</b>\"");
  };
  view.CompleteScript(0, ResultOk, u"\"<i>one</i>\"");
  view.CompleteScript(1, ResultOk, u"\"<p id=\\\"fourth\\\"></p>\"");
  view.CompleteScript(0, ResultOk, u"\"<p id=\\\"third\\\"></p>\"");
  ASSERT_EQ(seen.size(), 4u);
  EXPECT_NE(seen[0].find("<i>one</i>"), std::string::npos);
  EXPECT_NE(seen[1].find("<b>two</b>"), std::string::npos);
  EXPECT_NE(seen[2].find("fourth"), std::string::npos);
  EXPECT_EQ(IdOf("third"), Value::Integer(1));
  EXPECT_EQ(IdOf("fourth"), Value::Integer(-1));
}

TEST_F(NavigationTest, ExecuteScriptPrintsTheAnswerAndLeavesTheDocument) {
  MakeLiveBrowser();
  Call("wvparse", {std::string("<p id=\"kept\"></p>")});
  const struct {
    std::u16string script;
    ResultCode code;
    std::u16string json;
    std::string line;
  } cases[] = {
      {u"'\u00e9'", ResultOk, u"\"\u00e9\"", "Script executed successfully, result: \"\xC3\xA9\"\n"},
      {u"", ResultOk, u"null", "Script executed successfully, result: null\n"},
      {u"throw 1", ResultFailed, u"", "Error executing script: 0x80004005\n"},
  };
  for (const auto& c : cases) {
    log.clear();
    EXPECT_EQ(Call("wvexecutescript", {c.script}), Value::Integer(1));
    EXPECT_THAT(log, ElementsAre("view1.ExecuteScript(" + Utf16ToUtf8(c.script) + ")"));
    EXPECT_EQ(AnswerScript(c.json, c.code), c.line);
  }
  EXPECT_EQ(IdOf("kept"), Value::Integer(1));
  EXPECT_EQ(Progress(), "");
}

}  // namespace
}  // namespace qrl::testing
