// Commands that read one element: each row loads a document, picks an element
// (the first of a tag, or the root by handle 0) and checks one result.
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
  std::vector<Argument> args{handle};
  args.insert(args.end(), c.extra.begin(), c.extra.end());
  host.clearContractFaults();
  const CallOutcome outcome = host.call(c.command, std::span<const Argument>(args));
  EXPECT_EQ(outcome.result, c.expected) << c.command << " on " << c.markup;
  EXPECT_EQ(outcome.deliveries, 1);
  EXPECT_TRUE(outcome.errors.empty());
  EXPECT_TRUE(host.contractFaults().empty());
}

Value Map(std::initializer_list<std::pair<const char*, const char*>> pairs) {
  Value map = EmptyMap();
  for (const auto& [key, value] : pairs) map.pairs.push_back({Value::Text(key), Value::Text(value)});
  return map;
}

INSTANTIATE_TEST_SUITE_P(
    Table, ReadCommands,
    ::testing::Values(
        ReadCase{"<div>a<b>x</b>c<i>y</i>d</div>", "div", "wvgetinnerhtml", {},
                 Value::Text("<b>x</b>c<i>y</i>")},
        ReadCase{"<p></p>", "p", "wvgetinnerhtml", {}, Value::Text("")},
        ReadCase{"<br>", "br", "wvgetinnerhtml", {}, Value::Text("")},
        ReadCase{"<p>hello</p>", "p", "wvgetinnerhtml", {}, Value::Text("")},
        ReadCase{"<p>hello</p>", "plain", "wvgetinnerhtml", {}, Value::Text("")},
        ReadCase{"<html><body>x</body></html>", "", "wvgetinnerhtml", {},
                 Value::Text("<body>x</body>")},
        ReadCase{"<div>a<b>x</b>c</div>", "div", "wvgetouterhtml", {},
                 Value::Text("<div>a<b>x</b>c</div>")},
        ReadCase{"<p>a</p><p>b</p>", "", "wvgetouterhtml", {}, Value::Text("<p>a</p><p>b</p>")},
        ReadCase{"<p>a</p><p>b&amp;c</p>", "", "wvgetinnertext", {}, Value::Text("a\nb&amp;c")},
        ReadCase{"<div>a<p>b</p></div>", "p", "wvgetinnertext", {}, Value::Text("b")},
        ReadCase{"<A>t</A>", "A", "wvgettagname", {}, Value::Text("A")},
        ReadCase{"<p>t</p>", "plain", "wvgettagname", {}, Value::Text("plain")},
        ReadCase{"<a href=\"/x\" id=\"\">t</a>", "a", "wvgetattribute", {std::string("href")},
                 Value::Text("/x")},
        ReadCase{"<a href=\"/x\">t</a>", "a", "wvgetattribute", {std::string("HREF")},
                 Value::Text("")},
        ReadCase{"<a href=\"/x\">t</a>", "", "wvgetattribute", {std::string("href")},
                 Value::Text("")},
        ReadCase{"<a z=1 B=2 c>t</a>", "a", "wvgetattributes", {},
                 Map({{"B", "2"}, {"c", ""}, {"z", "1"}})},
        ReadCase{"<a>t</a>", "a", "wvgetattributes", {}, EmptyMap()},
        ReadCase{"<a b=1>t</a>", "", "wvgetattributes", {}, EmptyMap()},
        ReadCase{"<b class=\"x  y x\">t</b>", "b", "wvgetclasses", {},
                 TextArray({"x", "y", "x"})},
        ReadCase{"<b class=\"\">t</b>", "b", "wvgetclasses", {}, EmptyArray()},
        ReadCase{"<b>t</b>", "b", "wvgetclasses", {}, EmptyArray()},
        ReadCase{"<b class=\"x\">t</b>", "", "wvgetclasses", {}, EmptyArray()}));

TEST_F(ModuleTest, AttributeTextStaysUntilTheNextCall) {
  Load("<a href=\"one\" title=\"two\">t</a>");
  const std::int32_t link = FirstByTag("a");
  EXPECT_EQ(Call("wvgetattribute", {link, std::string("href")}), Value::Text("one"));
  EXPECT_EQ(Call("wvgetattribute", {link, std::string("title")}), Value::Text("two"));
  EXPECT_EQ(Call("wvgetattribute", {link, std::string("none")}), Value::Text(""));
}

TEST_F(ModuleTest, SetInnerTextConfirmsTheHandleAndChangesNothing) {
  Load("<p>before</p>");
  const std::int32_t paragraph = FirstByTag("p");
  EXPECT_EQ(Call("wvsetinnertext", {paragraph, std::string("after")}), Value::Integer(paragraph));
  EXPECT_EQ(Call("wvgetinnertext", {paragraph}), Value::Text("before"));
}

// The optional arguments that a row declares and the handler never reads
// must not change a result.
TEST_F(ModuleTest, UnreadOptionalArgumentsChangeNothing) {
  Load("<p id=\"a\" class=\"c\">x</p>");
  const std::int32_t p = FirstByTag("p");
  EXPECT_EQ(Call("wvgetinnertext", {p, std::string("ignored")}), Value::Text("x"));
  EXPECT_EQ(Call("wvgettagname", {p, 9}), Value::Text("p"));
  EXPECT_EQ(Call("wvgetattribute", {p, std::string("id"), 3}), Value::Text("a"));
  EXPECT_EQ(Call("wvgetclasses", {p, std::string("z")}), TextArray({"c"}));
  EXPECT_EQ(Names(Call("wvgetelementbyid", {0, std::string("a"), 1, 2, 3})), "#p:x");
  EXPECT_EQ(Call("wvparse", {std::string("<i>y</i>"), 1, 2, 3}), Value::Integer(0));
  EXPECT_EQ(Call("wvgetinnertext", {0}), Value::Text("y"));
}

}  // namespace
}  // namespace qrl::testing
