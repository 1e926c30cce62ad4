#include <string>
#include <vector>

#include "tests/browser/browser_fixture.h"

namespace qrl::testing {
namespace {

using ::testing::ElementsAre;

using NavigationTest = BrowserTest;

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
    ::testing::internal::CaptureStdout();
    view.CompleteScript(0, static_cast<ResultCode>(0x8007000Eu), u"\"<p>new</p>\"");
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              refresh ? "Error executing script: 0x8007000e\n" : "");
    EXPECT_EQ(Progress(), "Nav");
    EXPECT_EQ(IdOf("old"), Value::Integer(2));
  }
}

// A completed navigation asks for the page. Answers may come in any order,
// even while another capture runs: each ends its own capture and empties the
// handle table, and whoever reads the document on its "NavComplete" finds
// that capture's page there. The last answer stands.
TEST_F(NavigationTest, EachAnswerEndsItsCaptureAndTheLastStands) {
  StandInView& view = MakeLiveBrowser();
  Call("wvparse", {std::string("<p id=\"third\">old</p>")});
  IdOf("third");
  std::vector<std::string> seen;
  platform.onWindowText = [&](WindowHandle, std::string_view text) {
    if (text != "NavComplete") return;
    seen.push_back(Call("wvgetouterhtml", {std::int32_t{0}}).text);
    // The window's owner runs its loop while it takes the text: the second
    // answer arrives now, inside the first capture.
    if (seen.size() == 1) view.CompleteScript(0, ResultOk, u"\"<b>two</b>\"");
  };
  view.RaiseNavigationCompleted();
  EXPECT_THAT(log, ElementsAre("view1.ExecuteScript(document.documentElement.outerHTML;)"));
  for (int i = 0; i < 3; ++i) Call("wvrefreshdom", {});
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

}  // namespace
}  // namespace qrl::testing
