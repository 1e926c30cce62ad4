// Searches that give handles: which elements a result names (read back as
// "tag:text"), how optional arguments cut it, and what lands in the table.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Classes =
    "<div id=\"d\"><p class=\"x\">a</p>t<b class=\"x y\">b</b><P class=\"x\">c</P></div>";

struct SearchCase {
  const char* command;
  const char* start;  // "root" (handle 0), "none" (-1) or an id
  std::vector<Argument> args;
  const char* expected;  // see ModuleTest::Names
};

class Searches : public ModuleTest, public ::testing::WithParamInterface<SearchCase> {};

TEST_P(Searches, NameTheExpectedElements) {
  const SearchCase& c = GetParam();
  Load(Classes);
  const std::string_view start = c.start;
  std::int32_t handle = start == "root" ? 0 : -1;
  if (start != "root" && start != "none")
    handle = Call("wvgetelementbyid", {0, S(c.start)}).integer;
  const CallOutcome outcome = CallOnHandle(host, c.command, handle, c.args);
  EXPECT_TRUE(outcome.errors.empty());
  EXPECT_EQ(Names(outcome.result), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Searches,
    ::testing::Values(
        SearchCase{"wvgetelementbyid", "root", {S("d")}, "#div:atbc"},
        SearchCase{"wvgetelementbyid", "none", {S("d")}, "-1"},
        SearchCase{"wvgetelementbyid", "root", {S("D")}, "-1"},
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
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 5, 3}, "[P:c]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 2, 0}, "[]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 0, 4}, "[]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), -1, 1}, "[]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 0, 2}, "[b:b,P:c]"},
        SearchCase{"wvgetelementsbyclass", "root",
                   {S("x"), S(""), 2147483647, -2147483647 - 1}, "[]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S(""), 2147483647, 3}, "[P:c]"},
        SearchCase{"wvgetelementsbyclass", "none", {S("x"), S(""), 1}, "[]"},
        SearchCase{"wvgetelementsbyclass", "root", {S("z"), S(""), 1}, "-1"},
        SearchCase{"wvgetelementsbyclass", "root", {S("x"), S("i"), 1}, "-1"},
        SearchCase{"wvgetelementsbyclass", "d", {S("x")}, "[p:a,b:b,P:c]"},
        SearchCase{"wvgetelementsbytagname", "root", {S("P")}, "[P:c]"},
        SearchCase{"wvgetelementsbytagname", "d", {S("plain"), 1, 2, 3}, "[plain:a,plain:t,plain:b,plain:c]"},
        SearchCase{"wvgetelementsbytagname", "none", {S("p")}, "[]"},
        SearchCase{"wvgetchildren", "d", {}, "[p:a,plain:t,b:b,P:c]"},
        SearchCase{"wvgetchildren", "d", {S("P")}, "[p:a,P:c]"},
        SearchCase{"wvgetchildren", "d", {S("plain")}, "[plain:t]"},
        SearchCase{"wvgetchildren", "d", {S("")}, "[p:a,plain:t,b:b,P:c]"},
        SearchCase{"wvgetchildren", "root", {}, "-1"},
        SearchCase{"wvgetchildren", "none", {}, "-1"}));

struct WalkCase {
  const char* from;   // tag of the first element
  const char* steps;  // n next, p previous, u up
  const char* expected;
};

class TreeWalk : public ModuleTest, public ::testing::WithParamInterface<WalkCase> {};

TEST_P(TreeWalk, EndsAtTheExpectedNode) {
  Load("<div><b>x</b> <i>y</i></div>");
  std::int32_t handle = FirstByTag(GetParam().from);
  for (const char* step = GetParam().steps; *step; ++step) {
    const char* command = *step == 'n' ? "wvgetsiblingnext"
                          : *step == 'p' ? "wvgetsiblingprev"
                                         : "wvgetparent";
    handle = Call(command, {handle}).integer;
  }
  EXPECT_EQ(Names(Value::Integer(handle)), GetParam().expected) << GetParam().steps;
}

INSTANTIATE_TEST_SUITE_P(Table, TreeWalk,
                         ::testing::Values(WalkCase{"b", "n", "#plain: "},
                                           WalkCase{"b", "nnn", "-1"},
                                           WalkCase{"b", "p", "-1"},
                                           WalkCase{"i", "pp", "#b:x"},
                                           WalkCase{"b", "u", "#div:x y"},
                                           WalkCase{"b", "uu", "#:x y"},
                                           WalkCase{"b", "uuu", "-1"}));

// Handles are issued by appending, never looked up, and every element found
// is registered before a filter or a pattern drops it.
TEST_F(ModuleTest, HandlesAreIssuedInOrderAndNeverReused) {
  Load(Classes);
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("d")}), Value::Integer(1));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("d")}), Value::Integer(2));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("missing")}), Value::Integer(-1));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("d")}), Value::Integer(3));
  EXPECT_EQ(Call("wvgetelementsbyclass", {0, S("x"), S("i")}), Array());
  EXPECT_EQ(NextHandle(), 7);
  EXPECT_EQ(Call("wvgetelementsbyclass", {0, S("x"), S(""), 1, 3}), Value::Integer(10));
  EXPECT_EQ(Call("wvgetchildren", {1, S("b")}), IntArray({13}));
  const std::int32_t parent = Call("wvgetparent", {1}).integer;
  EXPECT_EQ(parent, 15);
  EXPECT_EQ(Call("wvgetparent", {1}), Value::Integer(16));
  EXPECT_EQ(Names(Value::Integer(parent)), "#:atbc");
}

TEST_F(ModuleTest, AHandleOfTheRootActsAsAnElement) {
  Load("<p>a</p><i>b</i>");
  const std::int32_t root = Call("wvgetparent", {FirstByTag("p")}).integer;
  ASSERT_GE(root, 1);
  EXPECT_EQ(Call("wvgettagname", {root}), Value::Text(""));
  EXPECT_EQ(Call("wvgettagname", {0}), Value::Integer(-1));
  EXPECT_EQ(Names(Call("wvgetchildren", {root})), "[p:a,i:b]");
  EXPECT_EQ(Call("wvgetchildren", {0}), Value::Integer(-1));
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
  EXPECT_EQ(Call("wvclear", {}), Value::Integer(0));
  EXPECT_EQ(NextHandle(), 1);
}

}  // namespace
}  // namespace qrl::testing
