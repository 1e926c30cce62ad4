// The search language of the link and image commands, read back as which
// elements a search selected.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Links =
    "<div><a href=\" /x.html \">One</a><a href=\"/y.html?a=1&amp;b=2\">Two &amp; Three</a>"
    "<a>None</a><img src=\"p.png\"><A href=\"/z\">Up</A></div>";

constexpr const char* One = "a:One";
constexpr const char* Two = "a:Two &amp; Three";

struct PatternCase {
  const char* command;
  std::vector<Argument> args;  // after the handle
  std::vector<std::string> expected;
};

class Patterns : public ModuleTest, public ::testing::WithParamInterface<PatternCase> {};

TEST_P(Patterns, SelectTheExpectedElements) {
  const PatternCase& c = GetParam();
  Load(Links);
  const CallOutcome outcome = CallOnHandle(host, c.command, 0, c.args);
  ASSERT_EQ(outcome.result.kind, Value::Kind::Array);
  std::vector<std::string> names;
  for (const auto& element : outcome.result.elements) names.push_back(Name(element.integer));
  EXPECT_EQ(names, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Patterns,
    ::testing::Values(
        PatternCase{"wvgetlinksbyhref", {S("/x.html")}, {One}},
        PatternCase{"wvgetlinksbyhref", {S("/y.html?a=1&b=2")}, {Two}},
        PatternCase{"wvgetlinksbyhref", {S("/y.html?a=1&amp;b=2")}, {Two}},
        PatternCase{"wvgetlinksbyhref", {S("*=2")}, {Two}},
        PatternCase{"wvgetlinksbyhref", {S("*&b=2")}, {}},
        PatternCase{"wvgetlinksbyhref", {S("/*")}, {One, Two}},
        PatternCase{"wvgetlinksbyhref", {S("/*html")}, {}},
        PatternCase{"wvgetlinksbyhref", {S("*.html"), 0}, {}},
        PatternCase{"wvgetlinksbyhref", {S("*.html"), 7}, {One}},
        PatternCase{"wvgetlinksbyhref", {S("*")}, {One, Two, "a:None"}},
        PatternCase{"wvgetlinksbyhref", {S("")}, {One, Two, "a:None"}},
        PatternCase{"wvgetlinksbyhref", {S(""), 0}, {"a:None"}},
        PatternCase{"wvgetlinksbyhref", {S("*y.html*")}, {Two}},
        PatternCase{"wvgetlinksbyhref", {S("/*y.*html")}, {Two}},
        PatternCase{"wvgetlinksbyhref", {S("*x.*html*")}, {One}},
        PatternCase{"wvgetlinksbyhref", {S("*/x.html*"), 0}, {One}},
        PatternCase{"wvgetlinksbyhref", {S("/x*")}, {One}},
        PatternCase{"wvgetlinksbyhref", {S("/x *")}, {}},
        PatternCase{"wvgetlinksbyhref", {S("/z")}, {}},
        PatternCase{"wvgetlinksbytext", {S("Two & Three")}, {Two}},
        PatternCase{"wvgetlinksbytext", {S("one")}, {}},
        PatternCase{"wvgetlinksbytext", {S("*e")}, {One, Two, "a:None"}},
        PatternCase{"wvgetlinksbytext", {S("T*")}, {Two}},
        PatternCase{"wvgetimagesbysrc", {S("*.png")}, {"img:"}},
        PatternCase{"wvgetimagesbysrc", {S("p.png")}, {"img:"}},
        PatternCase{"wvgetelementsbyattribute", {S("a"), S("href")}, {One, Two, "a:None"}},
        PatternCase{"wvgetelementsbyattribute", {S("a"), S("href"), S(""), 0},
                    {One, Two, "a:None"}},
        PatternCase{"wvgetelementsbyattribute", {S("a"), S("href"), S("/*")}, {One, Two}},
        PatternCase{"wvgetelementsbyattribute", {S("a"), S("href"), S("/x.html"), 0}, {One}},
        PatternCase{"wvgetelementsbyattribute", {S("A"), S("href"), S("/z")}, {"A:Up"}},
        PatternCase{"wvgetelementsbyattribute", {S("img"), S("src"), S("*.gif")}, {}}));

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
