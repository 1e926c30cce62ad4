// The search language of the link and image commands, read back as which
// elements a search selected.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Links =
    "<div><a href=\" /x.html \">One</a><a href=\"/y.html?a=1&amp;b=2\">Two &amp; Three</a>"
    "<a>None</a><img src=\"p.png\"><A href=\"/z\">Up</A></div>";

constexpr const char* All = "[a:One,a:Two &amp; Three,a:None]";
constexpr const char* Two = "[a:Two &amp; Three]";

struct PatternCase {
  const char* command;
  std::vector<Argument> args;  // after the handle
  const char* expected;        // see ModuleTest::Names
};

class Patterns : public ModuleTest, public ::testing::WithParamInterface<PatternCase> {};

TEST_P(Patterns, SelectTheExpectedElements) {
  Load(Links);
  const CallOutcome outcome = CallOnHandle(host, GetParam().command, 0, GetParam().args);
  EXPECT_EQ(Names(outcome.result), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Patterns,
    ::testing::Values(
        PatternCase{"wvgetlinksbyhref", {S("/x.html")}, "[a:One]"},
        PatternCase{"wvgetlinksbyhref", {S("/y.html?a=1&b=2")}, Two},
        PatternCase{"wvgetlinksbyhref", {S("/y.html?a=1&amp;b=2")}, Two},
        PatternCase{"wvgetlinksbyhref", {S("*=2")}, Two},
        PatternCase{"wvgetlinksbyhref", {S("*&b=2")}, "[]"},
        PatternCase{"wvgetlinksbyhref", {S("/*")}, "[a:One,a:Two &amp; Three]"},
        PatternCase{"wvgetlinksbyhref", {S("/*html")}, "[]"},
        PatternCase{"wvgetlinksbyhref", {S("*.html"), 0}, "[]"},
        PatternCase{"wvgetlinksbyhref", {S("*.html"), 7}, "[a:One]"},
        PatternCase{"wvgetlinksbyhref", {S("*")}, All},
        PatternCase{"wvgetlinksbyhref", {S("")}, All},
        PatternCase{"wvgetlinksbyhref", {S(""), 0}, "[a:None]"},
        PatternCase{"wvgetlinksbyhref", {S("/*y.*html")}, Two},
        PatternCase{"wvgetlinksbyhref", {S("*x.*html*")}, "[a:One]"},
        PatternCase{"wvgetlinksbyhref", {S("/x *")}, "[]"},
        PatternCase{"wvgetlinksbyhref", {S("/z")}, "[]"},
        PatternCase{"wvgetlinksbytext", {S("Two & Three")}, Two},
        PatternCase{"wvgetlinksbytext", {S("*e")}, All},
        PatternCase{"wvgetimagesbysrc", {S("*.png")}, "[img:]"},
        PatternCase{"wvgetelementsbyattribute", {S("a"), S("href")}, All},
        PatternCase{"wvgetelementsbyattribute", {S("a"), S("href"), S(""), 0}, All},
        PatternCase{"wvgetelementsbyattribute", {S("a"), S("href"), S("/x.html"), 0}, "[a:One]"},
        PatternCase{"wvgetelementsbyattribute", {S("A"), S("href"), S("/z")}, "[A:Up]"}));

TEST_F(ModuleTest, RejectedElementsKeepTheirHandles) {
  Load(Links);
  const std::int32_t before = NextHandle();
  EXPECT_EQ(Call("wvgetlinksbyhref", {0, S("/x.html")}), IntArray({before + 1}));
  EXPECT_EQ(NextHandle(), before + 4);
}

TEST_F(ModuleTest, ValuesAreTrimmedButNotChangedInside) {
  Load("<a href=\"\n  a  b\t\">x</a><a href=\"a b\">y</a>");
  EXPECT_EQ(Names(Call("wvgetlinksbyhref", {0, S("a  b")})), "[a:x]");
  EXPECT_EQ(Names(Call("wvgetlinksbyhref", {0, S("*a b")})), "[a:y]");
}

}  // namespace
}  // namespace qrl::testing
