// The document commands as a script meets them: each row loads a document,
// starts at the first element of a tag (or the root through handle 0) and
// checks one result. Rows that search read their result back as the elements
// it names. Some rows pass optional arguments that the command never reads.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Document =
    "<div id=\"d\"><p class=\"x\">a</p>t<b class=\"x y\">b</b><P class=\"x\">c</P></div>"
    "<div><a href=\" /x.html \">One</a><a href=\"/y.html?a=1&amp;b=2\">Two &amp; Three</a>"
    "<a>None</a><img src=\"p.png\"><A href=\"/z\">Up</A></div>";
constexpr const char* Walk = "<div><b>x</b> <i>y</i></div>";
constexpr const char* AllLinks = "[a:One,a:Two &amp; Three,a:None]";
constexpr const char* Two = "[a:Two &amp; Three]";

struct CommandCase {
  const char* markup;
  const char* start;  // a tag; empty: the root through handle 0
  const char* command;
  std::vector<Argument> args;  // after the handle
  const char* expected;        // a text as it is, anything else as ModuleTest::Names shows it
};

class DocumentCommands : public ModuleTest, public ::testing::WithParamInterface<CommandCase> {};

TEST_P(DocumentCommands, GiveTheExpectedResult) {
  const CommandCase& c = GetParam();
  Load(c.markup);
  const CallOutcome outcome = CallOnHandle(host, c.command, *c.start ? FirstByTag(c.start) : 0, c.args);
  EXPECT_TRUE(outcome.errors.empty());
  const Value& result = outcome.result;
  EXPECT_EQ(result.kind == Value::Kind::Text ? result.text : Names(result), c.expected)
      << c.command << " on " << c.markup;
}

INSTANTIATE_TEST_SUITE_P(
    Table, DocumentCommands,
    ::testing::Values(
        // Reads.
        CommandCase{"<div>a<b>x</b>c<i>y</i>d</div>", "div", "wvgetinnerhtml", {}, "<b>x</b>c<i>y</i>"},
        CommandCase{"<p>hello</p>", "p", "wvgetinnerhtml", {}, ""},
        CommandCase{"<html><body>x</body></html>", "", "wvgetinnerhtml", {}, "<body>x</body>"},
        CommandCase{"<div>a<b>x</b>c</div>", "div", "wvgetouterhtml", {}, "<div>a<b>x</b>c</div>"},
        CommandCase{"<p>a</p><p>b&amp;c</p>", "", "wvgetinnertext", {S("ignored")}, "a\nb&amp;c"},
        CommandCase{"<A>t</A>", "A", "wvgettagname", {9}, "A"},
        CommandCase{"<a href=\"/x\" id=\"\">t</a>", "a", "wvgetattribute", {S("href"), 3}, "/x"},
        CommandCase{"<a z=1 B=2 c>t</a>", "a", "wvgetattributes", {}, R"({"B": "2", "c": "", "z": "1"})"},
        CommandCase{"<b class=\"x  y x\">t</b>", "b", "wvgetclasses", {S("z")}, R"(["x","y","x"])"},
        // Confirms the handle and changes nothing.
        CommandCase{"<p>before</p>", "p", "wvsetinnertext", {S("after")}, "#p:before"},
        // Searches and steps.
        CommandCase{Document, "", "wvgetelementbyid", {S("d"), 1, 2, 3}, "#div:atbc"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x")}, "[p:a,b:b,P:c]"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), 1}, "#p:a"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), 1, 2}, "#b:b"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), 1, 0}, "#p:a"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), 1, 4}, "-1"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), 1, -5}, "-1"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S("P"), 1, 1}, "#P:c"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), 2}, "[p:a,b:b]"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), 2, 0}, "[]"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), -1, 1}, "[]"},
        CommandCase{Document, "", "wvgetelementsbyclass", {S("x"), S(""), 0, 2}, "[b:b,P:c]"},
        CommandCase{Document, "div", "wvgetelementsbytagname", {S("plain"), 1, 2, 3},
                    "[plain:a,plain:t,plain:b,plain:c]"},
        CommandCase{Document, "div", "wvgetchildren", {}, "[p:a,plain:t,b:b,P:c]"},
        CommandCase{Document, "div", "wvgetchildren", {S("P")}, "[p:a,P:c]"},
        CommandCase{Walk, "b", "wvgetsiblingnext", {}, "#plain: "},
        CommandCase{Walk, "i", "wvgetsiblingprev", {}, "#plain: "},
        CommandCase{Walk, "b", "wvgetparent", {}, "#div:x y"},
        CommandCase{Walk, "div", "wvgetparent", {}, "#:x y"},  // the root, by a handle of its own
        // The search language of the link and image commands.
        CommandCase{Document, "", "wvgetlinksbyhref", {S("/x.html")}, "[a:One]"},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("/y.html?a=1&b=2")}, Two},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("*=2")}, Two},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("*&b=2")}, "[]"},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("/*")}, "[a:One,a:Two &amp; Three]"},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("/*html")}, "[]"},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("*.html"), 0}, "[]"},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("*")}, AllLinks},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("")}, AllLinks},
        CommandCase{Document, "", "wvgetlinksbyhref", {S(""), 0}, "[a:None]"},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("/*y.*html")}, Two},
        CommandCase{Document, "", "wvgetlinksbyhref", {S("/x *")}, "[]"},
        CommandCase{Document, "", "wvgetlinksbytext", {S("Two & Three")}, Two},
        CommandCase{Document, "", "wvgetimagesbysrc", {S("*.png")}, "[img:]"},
        CommandCase{Document, "", "wvgetelementsbyattribute", {S("a"), S("href")}, AllLinks},
        CommandCase{Document, "", "wvgetelementsbyattribute", {S("a"), S("href"), S(""), 0}, AllLinks},
        CommandCase{Document, "", "wvgetelementsbyattribute", {S("a"), S("href"), S("/x.html"), 0}, "[a:One]"},
        CommandCase{Document, "", "wvgetelementsbyattribute", {S("A"), S("href"), S("/z")}, "[A:Up]"},
        // A value is trimmed at its ends, never inside.
        CommandCase{"<a href=\"\n  a  b\t\">x</a>", "", "wvgetlinksbyhref", {S("a  b")}, "[a:x]"}));

// Handles are issued by appending, never looked up, and every element found
// is registered before a filter or a pattern drops it; a load or a clear
// starts the table again.
TEST_F(ModuleTest, HandlesAreIssuedInOrderUntilALoadOrAClear) {
  Load(Document);
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("d")}), Value::Integer(1));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("missing")}), Value::Integer(-1));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("d")}), Value::Integer(2));
  EXPECT_EQ(Call("wvgetelementsbyclass", {0, S("x"), S("i")}), Array());
  EXPECT_EQ(NextHandle(), 6);
  EXPECT_EQ(Call("wvgetchildren", {1, S("b")}), IntArray({9}));
  EXPECT_EQ(Call("wvgetparent", {1}), Value::Integer(11));
  EXPECT_EQ(Call("wvgetparent", {1}), Value::Integer(12));
  EXPECT_EQ(Call("wvgetlinksbyhref", {0, S("/x.html")}), IntArray({13}));
  EXPECT_EQ(NextHandle(), 16);

  EXPECT_EQ(Call("wvparse", {S("<i>y</i><p id=\"a\">z</p>"), 1, 2, 3}), Value::Integer(0));
  EXPECT_EQ(Call("wvgetelementbyid", {0, S("a")}), Value::Integer(1));
  EXPECT_EQ(Call("wvgetinnertext", {1}), Value::Text("z"));
  EXPECT_EQ(Call("wvgetinnertext", {2}), Value::Integer(-1));
  EXPECT_EQ(Call("wvclear", {}), Value::Integer(0));
  EXPECT_EQ(Call("wvgetinnertext", {1}), Value::Integer(-1));
  EXPECT_EQ(Call("wvgetinnertext", {0}), Value::Text("y\nz"));
}

}  // namespace
}  // namespace qrl::testing
