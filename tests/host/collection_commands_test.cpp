// Searches that give handles: which elements a result names (read back as
// "tag:text"), how optional arguments cut it, and what lands in the table.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Classes =
    "<div id=\"d\"><p class=\"x\">a</p>t<b class=\"x y\">b</b><P class=\"x\">c</P></div>";

struct SearchCase {
  const char* command;
  const char* start;  // "root" (handle 0) or an id
  std::vector<Argument> args;
  const char* expected;  // see ModuleTest::Names
};

class Searches : public ModuleTest, public ::testing::WithParamInterface<SearchCase> {};

TEST_P(Searches, NameTheExpectedElements) {
  const SearchCase& c = GetParam();
  Load(Classes);
  const std::int32_t handle = std::string_view(c.start) == "root"
                                  ? 0
                                  : Call("wvgetelementbyid", {0, S(c.start)}).integer;
  const CallOutcome outcome = CallOnHandle(host, c.command, handle, c.args);
  EXPECT_TRUE(outcome.errors.empty());
  EXPECT_EQ(Names(outcome.result), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Searches,
    ::testing::Values(
        SearchCase{"wvgetelementbyid", "root", {S("d"), 1, 2, 3}, "#div:atbc"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x")}, "[p:a,b:b,P:c]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S("p")}, "[p:a]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S("i")}, "[]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 1}, "#p:a"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 1, 2}, "#b:b"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 1, 0}, "#p:a"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 1, 4}, "-1"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 1, -5}, "-1"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S("P"), 1, 1}, "#P:c"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 2}, "[p:a,b:b]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 2, 2}, "[b:b,P:c]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 2, 0}, "[]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), -1, 1}, "[]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 0, 2}, "[b:b,P:c]"},
        SearchCase{"wvgetelementsbyclass", "root",
                   {S("x"), S(""), 2147483647, -2147483647 - 1}, "[]"},
        SearchCase{"wvgetelementsbytagname", "d", {S("plain"), 1, 2, 3},
                   "[plain:a,plain:t,plain:b,plain:c]"},
        SearchCase{"wvgetchildren", "d", {}, "[p:a,plain:t,b:b,P:c]"},
        SearchCase{"wvgetchildren", "d", {S("P")}, "[p:a,P:c]"}));

TEST_F(ModuleTest, TreeWalksEndAtTheExpectedNodeAndTheRootIsAnElement) {
  Load("<div><b>x</b> <i>y</i></div>");
  // From the first element of a tag: n next, p previous, u up.
  const auto walk = [&](std::string_view from, std::string_view steps) {
    std::int32_t handle = FirstByTag(from);
    for (char step : steps)
      handle = Call(step == 'n'   ? "wvgetsiblingnext"
                    : step == 'p' ? "wvgetsiblingprev"
                                  : "wvgetparent",
                    {handle}).integer;
    return Names(Value::Integer(handle));
  };
  EXPECT_EQ(walk("b", "n"), "#plain: ");
  EXPECT_EQ(walk("b", "nnn"), "-1");
  EXPECT_EQ(walk("b", "p"), "-1");
  EXPECT_EQ(walk("i", "pp"), "#b:x");
  EXPECT_EQ(walk("b", "u"), "#div:x y");
  EXPECT_EQ(walk("b", "uu"), "#:x y");
  EXPECT_EQ(walk("b", "uuu"), "-1");
  // A handle of the root acts as an element, unlike handle 0.
  const std::int32_t root = Call("wvgetparent", {FirstByTag("div")}).integer;
  EXPECT_EQ(Names(Call("wvgetchildren", {root})), "[div:x y]");
}

// Handles are issued by appending, never looked up, and every element found
// is registered before a filter or a pattern drops it.
TEST_F(ModuleTest, HandlesAreIssuedInOrderAndNeverReused) {
  Load(Classes);
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("d")}), Value::Integer(1));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("missing")}), Value::Integer(-1));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("d")}), Value::Integer(2));
  EXPECT_EQ(Call("wvgetelementsbyclass", {0, S("x"), S("i")}), Array());
  EXPECT_EQ(NextHandle(), 6);
  EXPECT_EQ(Call("wvgetelementsbyclass", {0, S("x"), S(""), 1, 3}), Value::Integer(9));
  EXPECT_EQ(Call("wvgetchildren", {1, S("b")}), IntArray({12}));
  EXPECT_EQ(Call("wvgetparent", {1}), Value::Integer(14));
  EXPECT_EQ(Call("wvgetparent", {1}), Value::Integer(15));
}

TEST_F(ModuleTest, LoadsAndClearsStartTheHandlesAgain) {
  Load("<p id=\"a\">x</p>");
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("a")}), Value::Integer(1));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("a")}), Value::Integer(2));
  Load("<i>y</i><p id=\"a\">z</p>");
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("a")}), Value::Integer(1));
  EXPECT_EQ(Call("wvgetinnertext", {1}), Value::Text("z"));
  EXPECT_EQ(Call("wvgetinnertext", {2}), Value::Integer(-1));
  EXPECT_EQ(Call("wvclear", {}), Value::Integer(0));
  EXPECT_EQ(Call("wvgetinnertext", {1}), Value::Integer(-1));
  EXPECT_EQ(Call("wvgetinnertext", {0}), Value::Text("y\nz"));
}

}  // namespace
}  // namespace qrl::testing
