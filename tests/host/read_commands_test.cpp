// Commands that read one element: each row loads a document, picks an element
// (the first of a tag, or the root by handle 0) and checks one result. Some
// rows pass optional arguments that the command never reads.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

struct ReadCase {
  const char* markup;
  const char* tag;  // the element read; empty: the root through handle 0
  const char* command;
  std::vector<Argument> extra;
  Value expected;
};

class ReadCommands : public ModuleTest, public ::testing::WithParamInterface<ReadCase> {};

TEST_P(ReadCommands, GiveTheElementsContent) {
  const ReadCase& c = GetParam();
  Load(c.markup);
  const std::int32_t handle = *c.tag ? FirstByTag(c.tag) : 0;
  const CallOutcome outcome = CallOnHandle(host, c.command, handle, c.extra);
  EXPECT_EQ(outcome.result, c.expected) << c.command << " on " << c.markup;
  EXPECT_TRUE(outcome.errors.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Table, ReadCommands,
    ::testing::Values(
        ReadCase{"<div>a<b>x</b>c<i>y</i>d</div>", "div", "wvgetinnerhtml", {},
                 Value::Text("<b>x</b>c<i>y</i>")},
        ReadCase{"<br>", "br", "wvgetinnerhtml", {}, Value::Text("")},
        ReadCase{"<p>hello</p>", "p", "wvgetinnerhtml", {}, Value::Text("")},
        ReadCase{"<p>hello</p>", "plain", "wvgetinnerhtml", {}, Value::Text("")},
        ReadCase{"<html><body>x</body></html>", "", "wvgetinnerhtml", {},
                 Value::Text("<body>x</body>")},
        ReadCase{"<div>a<b>x</b>c</div>", "div", "wvgetouterhtml", {},
                 Value::Text("<div>a<b>x</b>c</div>")},
        ReadCase{"<p>a</p><p>b</p>", "", "wvgetouterhtml", {}, Value::Text("<p>a</p><p>b</p>")},
        ReadCase{"<p>a</p><p>b&amp;c</p>", "", "wvgetinnertext", {S("ignored")},
                 Value::Text("a\nb&amp;c")},
        ReadCase{"<A>t</A>", "A", "wvgettagname", {9}, Value::Text("A")},
        ReadCase{"<p>t</p>", "plain", "wvgettagname", {}, Value::Text("plain")},
        ReadCase{"<a href=\"/x\" id=\"\">t</a>", "a", "wvgetattribute", {S("href"), 3},
                 Value::Text("/x")},
        ReadCase{"<a z=1 B=2 c>t</a>", "a", "wvgetattributes", {},
                 TextMap({{"B", "2"}, {"c", ""}, {"z", "1"}})},
        ReadCase{"<a>t</a>", "a", "wvgetattributes", {}, Map()},
        ReadCase{"<b class=\"x  y x\">t</b>", "b", "wvgetclasses", {S("z")},
                 TextArray({"x", "y", "x"})},
        ReadCase{"<b class=\"\">t</b>", "b", "wvgetclasses", {}, Array()}));

TEST_F(ModuleTest, SetInnerTextConfirmsTheHandleAndChangesNothing) {
  Load("<p>before</p>");
  const std::int32_t paragraph = FirstByTag("p");
  EXPECT_EQ(Call("wvsetinnertext", {paragraph, S("after")}), Value::Integer(paragraph));
  EXPECT_EQ(Call("wvgetinnertext", {paragraph}), Value::Text("before"));
}

TEST_F(ModuleTest, ParseIgnoresItsOptionalArguments) {
  EXPECT_EQ(Call("wvparse", {S("<i>y</i>"), 1, 2, 3}), Value::Integer(0));
  EXPECT_EQ(Call("wvgetinnertext", {0}), Value::Text("y"));
}

}  // namespace
}  // namespace qrl::testing
