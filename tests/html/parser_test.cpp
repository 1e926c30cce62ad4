#include <gtest/gtest.h>

#include <string>

#include "tests/html/parse_helpers.h"
#include "tests/html/tree_notation.h"

namespace qrl::testing {
namespace {

struct ParseCase {
  std::string source;
  std::string tree;
  std::string warnings;
};

const std::string kNotClosedP = "WARN : element not closed <p> \n";

class ParserTest : public ::testing::TestWithParam<ParseCase> {};

TEST_P(ParserTest, BuildsTreeAndWarnings) {
  const ParseCase& c = GetParam();
  const ParseOutcome outcome = ParseCapturingWarnings(c.source);
  ASSERT_TRUE(outcome.document && outcome.document->root);
  EXPECT_EQ(TreeNotation(*outcome.document->root), c.tree);
  EXPECT_EQ(outcome.warnings, c.warnings);
}

INSTANTIATE_TEST_SUITE_P(
    WellFormed, ParserTest,
    ::testing::Values(
        ParseCase{"", "root", ""}, ParseCase{" \r\n\t", "root", ""},
        ParseCase{"<p>a</p> <p>b</p>", "root[p['a'], p['b']]", ""},
        ParseCase{"<p>a<br>b</p>", "root[p['a', br, 'b']]", ""},
        ParseCase{"<div>a<!-- c -->b</div>", "root[div['a', 'b']]", ""},
        ParseCase{"<!DOCTYPE html><?x y?><!-- c --><html></html>", "root[html]", ""},
        ParseCase{"<p>a<!---->b<!-->c</p>", "root[p['a', 'b', 'c']]", ""},
        ParseCase{"<div>a\r\nb\tc  d</div>", "root[div['abc  d']]", ""},
        ParseCase{"<div> <p>x</p> </div>", "root[div[' ', p['x'], ' ']]", ""},
        ParseCase{"<p>\n\t</p>", "root[p]", ""},
        ParseCase{"<a z=1 B=2 c>t</a>", "root[a{B=\"2\" c=\"\" z=\"1\"}['t']]", ""},
        ParseCase{"<p>&lt;</p>", "root[p['&lt;']]", ""},
        ParseCase{"<img src=a><hr/>", "root[img{src=\"a\"}, hr]", ""},
        ParseCase{"< div>x</div>", "root[div['x']]", ""}));

INSTANTIATE_TEST_SUITE_P(
    SelfClosingAndVoid, ParserTest,
    ::testing::Values(ParseCase{"<br/><br /><br / >", "root[br, br, br{/=\"\"}]", ""},
                      ParseCase{"<div/>", "root[div]", ""},
                      ParseCase{"<a/b>c</a>", "root[a]", ""},
                      ParseCase{"<a href=x/>", "root[a{href=\"x\"}]", ""},
                      ParseCase{"<IMG src=a>", "root", ""},
                      ParseCase{"<>", "root", ""},
                      ParseCase{"<></>", "root[\"\"]", ""}));

INSTANTIATE_TEST_SUITE_P(
    RawText, ParserTest,
    ::testing::Values(
        ParseCase{"<script>if (a<b) x=\"</div>\";</script>", "root[script(if (a<b) x=\"</div>\";)]", ""},
        ParseCase{"<style>  p{}  </style>", "root[style(p{})]", ""},
        ParseCase{"<noscript><img src=a></noscript>", "root[noscript(<img src=a>)]", ""},
        ParseCase{"<script>a\r\n\tb</SCRIPT></script>", "root[script(a\r\n\tb</SCRIPT>)]", ""},
        ParseCase{"<script src=a/>", "root[script{src=\"a\"}]", ""},
        ParseCase{"<script>", "root", ""},
        ParseCase{"<script>   </script>", "root[script]", ""},
        // Without its closing tag, raw text runs to the end of the input, whole.
        ParseCase{"<script>abc", "root[script(abc)]", ""},
        ParseCase{"<div><script>abc", "root", ""},
        ParseCase{"<SCRIPT>a<b></SCRIPT>", "root[SCRIPT['a', b]]", "WARN : element not closed <b> \n"}));

INSTANTIATE_TEST_SUITE_P(
    BrokenMarkup, ParserTest,
    ::testing::Values(
        ParseCase{"hello <b>x</b>", "root", ""},
        ParseCase{"\xEF\xBB\xBF<p></p>", "root", ""},
        ParseCase{"<html><body><p>Hello", "root", ""},
        ParseCase{"<html><body><p>Hello</p>", "root", ""},
        ParseCase{"<p></p>tail", "root[p]", ""},
        ParseCase{"</p><div></div>", "root[div]", ""},
        ParseCase{"<a href=\"x>y\">t</a>", "root[a{href=\"x\"}['y\">t']]", ""},
        ParseCase{"<DIV>x</div>", "root", "WARN : unexpected closed element </div> for <DIV>\n"},
        ParseCase{"<div>a</x>b</div>", "root[div['a', 'b']]", "WARN : unexpected closed element </x> for <div>\n"},
        ParseCase{"<div></div >tail</div>", "root[div['tail']]",
                  "WARN : unexpected closed element </div > for <div>\n"},
        ParseCase{"<div></>x</div>", "root[div['x']]", "WARN : unexpected closed element </>> for <div>\n"},
        ParseCase{"<div><p>one<p>two</div>", "root[div[p['one', p['two']]]]", kNotClosedP + kNotClosedP},
        ParseCase{"<div><b>x</div>y", "root[div[b['x']]]", "WARN : element not closed <b> \n"},
        ParseCase{"<p>a < b</p>", "root", ""},
        ParseCase{"<!-- open", "root", ""},
        ParseCase{"<div><p></", "root[div[p]]", kNotClosedP + "WARN : element not closed <div> \n"},
        // A closing tag cut off by the end of the input keeps all its bytes as its name.
        ParseCase{"<div><p>x</di", "root", "WARN : unexpected closed element </di> for <p>\n"},
        ParseCase{"<div><p>x</div", "root",
                  kNotClosedP + "WARN : unexpected closed element </div> for <div>\n"},
        ParseCase{"<a \"x\" b>t</a>", "root[a{b=\"\" x=\"\"}['t']]",
                  "WARN : attribute unexpected \"\nWARN : attribute unexpected \"\n"},
        // The attributes of an element are read when it is complete, after its children's.
        ParseCase{"<div '><b>x</div>", "root[div[b['x']]]",
                  "WARN : element not closed <b> \nWARN : attribute unexpected '\n"}));

TEST(ParserTest, NulInsideInputIsAnOrdinaryByte) {
  constexpr char kSource[] = "<p a=\"x\0y\">b\0c</p>";
  const std::string source(kSource, sizeof kSource - 1);
  const DocumentRef document = ParseQuietly(source);
  ASSERT_EQ(document->root->children.size(), 1u);
  const HtmlElement& p = *document->root->children[0];
  EXPECT_EQ(std::string_view(p.attributes.find("a")->second), std::string_view("x\0y", 3));
  ASSERT_EQ(p.children.size(), 1u);
  EXPECT_EQ(std::string_view(p.children[0]->text), std::string_view("b\0c", 3));
  EXPECT_EQ(p.children[0]->text.c_str()[3], '\0');
}

// Runs of every length up to a few chunks of the scan, with line breaks and
// tabs at every phase, must lose exactly those bytes.
TEST(ParserTest, TextRunsDropLineBreaksAndTabsAtAnyOffset) {
  for (std::size_t size = 1; size <= 70; ++size) {
    for (std::size_t every = 2; every <= 18; every += 4) {
      std::string run;
      std::string kept;
      for (std::size_t i = 0; i < size; ++i) {
        const char byte = i % every == every - 1 ? "\r\n\t"[i % 3] : static_cast<char>('a' + i % 26);
        run.push_back(byte);
        if (byte >= 'a') kept.push_back(byte);
      }
      const DocumentRef document = ParseQuietly("<p>" + run + "<b>" + run + "</b>" + run + "</p>");
      const std::string expected = "root[p['" + kept + "', b['" + kept + "'], '" + kept + "']]";
      ASSERT_EQ(TreeNotation(*document->root), expected) << "size " << size << " every " << every;
    }
  }
}

TEST(ParserTest, LinksEveryNodeToItsParentAndKeepsStringsTerminated) {
  const DocumentRef document = ParseQuietly("<div id=a><p class='x'>t<br></p>u</div>");
  const ElementRef& div = document->root->children[0];
  EXPECT_EQ(div->parent.lock(), document->root);
  EXPECT_TRUE(document->root->parent.expired());
  for (const ElementRef& child : div->children) EXPECT_EQ(child->parent.lock(), div);
  EXPECT_STREQ(div->name.c_str(), "div");
  EXPECT_STREQ(div->attributes.find("id")->second.c_str(), "a");
  EXPECT_STREQ(div->children[0]->children[0]->text.c_str(), "t");
}

TEST(ParserTest, ParserKeepsLastRootAndCanParseAgain) {
  HtmlParser parser;
  EXPECT_FALSE(parser.root);
  const std::string first = "<a></a>";
  const DocumentRef one = parser.Parse(first.c_str(), static_cast<std::uint32_t>(first.size()));
  EXPECT_EQ(parser.root, one->root);
  const std::string second = "<b></b><i></i>";
  const DocumentRef two = parser.Parse(second.c_str(), static_cast<std::uint32_t>(second.size()));
  EXPECT_EQ(parser.root, two->root);
  EXPECT_EQ(TreeNotation(*one->root), "root[a]");
  EXPECT_EQ(TreeNotation(*two->root), "root[b, i]");
}

TEST(ParserTest, VoidElementsAreThoseOfTheParsersOwnSet) {
  HtmlParser parser;
  parser.voidElements.insert("IMG");
  parser.voidElements.erase("br");
  const std::string source = "<p><IMG src=a><br></br>x</p>";
  const DocumentRef document = parser.Parse(source.c_str(), static_cast<std::uint32_t>(source.size()));
  EXPECT_EQ(TreeNotation(*document->root), "root[p[IMG{src=\"a\"}, br, 'x']]");
  EXPECT_EQ(HtmlParser().voidElements.size(), 16u);
}

}  // namespace
}  // namespace qrl::testing
