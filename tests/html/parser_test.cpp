#include <gtest/gtest.h>

#include <string>

#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

using namespace std::string_literals;

const std::string kNotClosedP = "WARN : element not closed <p> \n";

TEST(ParserTest, BuildsTreeAndWarnings) {
  const struct {
    std::string source, tree, warnings;
  } cases[] = {
      {"", "root", ""}, {" \r\n\t", "root", ""}, {"<p>a</p> <p>b</p>", "root[p['a'], p['b']]", ""},
      {"<p>a<br>b</p>", "root[p['a', br, 'b']]", ""},
      {"<!DOCTYPE html><?x y?><!-- c --><html></html>", "root[html]", ""},
      {"<p>a<!---->b<!-->c</p>", "root[p['a', 'b', 'c']]", ""},
      {"<div> <p>x</p> </div>", "root[div[' ', p['x'], ' ']]", ""}, {"<p>\n\t</p>", "root[p]", ""},
      {"<a z=1 B=2 c>t</a>", "root[a{B=\"2\" c=\"\" z=\"1\"}['t']]", ""}, {"< div>x</div>", "root[div['x']]", ""},
      {"<br/><br /><br / >", "root[br, br, br{/=\"\"}]", ""}, {"<div/>", "root[div]", ""},
      {"<a/b>c</a>", "root[a]", ""}, {"<a href=x/>", "root[a{href=\"x\"}]", ""}, {"<IMG src=a>", "root", ""},
      {"<></>", "root[\"\"]", ""},
      {"<script>if (a<b) x=\"</div>\";</script>", "root[script(if (a<b) x=\"</div>\";)]", ""},
      {"<style>  p{}  </style>", "root[style(p{})]", ""},
      {"<noscript><img src=a></noscript>", "root[noscript(<img src=a>)]", ""},
      {"<script>a\r\n\tb</SCRIPT></script>", "root[script(a\r\n\tb</SCRIPT>)]", ""},
      {"<script src=a/>", "root[script{src=\"a\"}]", ""}, {"<script>", "root", ""},
      // Without its closing tag, raw text runs to the end of the input, whole.
      {"<script>abc", "root[script(abc)]", ""}, {"<div><script>abc", "root", ""},
      {"<SCRIPT>a<b></SCRIPT>", "root[SCRIPT['a', b]]", "WARN : element not closed <b> \n"},
      {"hello <b>x</b>", "root", ""}, {"\xEF\xBB\xBF<p></p>", "root", ""}, {"<html><body><p>Hello</p>", "root", ""},
      {"<p></p>tail", "root[p]", ""}, {"</p><div></div>", "root[div]", ""},
      {"<a href=\"x>y\">t</a>", "root[a{href=\"x\"}['y\">t']]", ""},
      {"<DIV>x</div>", "root", "WARN : unexpected closed element </div> for <DIV>\n"},
      {"<div>a</x>b</div>", "root[div['a', 'b']]", "WARN : unexpected closed element </x> for <div>\n"},
      {"<div></div >tail</div>", "root[div['tail']]", "WARN : unexpected closed element </div > for <div>\n"},
      {"<div></>x</div>", "root[div['x']]", "WARN : unexpected closed element </>> for <div>\n"},
      {"<div><p>one<p>two</div>", "root[div[p['one', p['two']]]]", kNotClosedP + kNotClosedP},
      {"<p>a < b</p>", "root", ""}, {"<!-- open", "root", ""},
      {"<div><p></", "root[div[p]]", kNotClosedP + "WARN : element not closed <div> \n"},
      // A closing tag cut off by the end of the input keeps all its bytes as its name.
      {"<div><p>x</di", "root", "WARN : unexpected closed element </di> for <p>\n"},
      // The attributes of an element are read when it is complete, after its children's.
      {"<div '><b>x</div>", "root[div[b['x']]]", "WARN : element not closed <b> \nWARN : attribute unexpected '\n"},
      {"<p a=\"x\0y\">b\0c</p>"s, "root[p{a=\"x\0y\"}['b\0c']]"s, ""},  // NUL is an ordinary byte
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.source);
    const ParseOutcome outcome = ParseCapturingWarnings(c.source);
    ASSERT_TRUE(outcome.document && outcome.document->root);
    EXPECT_EQ(TreeNotation(*outcome.document->root), c.tree);
    EXPECT_EQ(outcome.warnings, c.warnings);
  }
}

// Runs of every length up to a few chunks of the scan, with line breaks and
// tabs at every phase, must lose exactly those bytes.
TEST(ParserTest, TextRunsDropLineBreaksAndTabsAtAnyOffset) {
  for (std::size_t size = 1; size <= 70; ++size) {
    for (std::size_t every = 2; every <= 18; every += 4) {
      std::string run, kept;
      for (std::size_t i = 0; i < size; ++i) {
        const char byte = i % every == every - 1 ? "\r\n\t"[i % 3] : static_cast<char>('a' + i % 26);
        run.push_back(byte);
        if (byte >= 'a') kept.push_back(byte);
      }
      const DocumentRef document = ParseQuietly("<p>" + run + "<b>" + run + "</b>" + run + "</p>");
      ASSERT_EQ(TreeNotation(*document->root), "root[p['" + kept + "', b['" + kept + "'], '" + kept + "']]")
          << "size " << size << " every " << every;
    }
  }
}

// A parser keeps the root of its last parse and reads void elements from its
// own set; every node links to its parent.
TEST(ParserTest, KeepsLastRootUsesItsOwnVoidSetAndLinksParents) {
  HtmlParser parser;
  parser.voidElements.insert("IMG");
  parser.voidElements.erase("br");
  const std::string first = "<a></a>", second = "<p><IMG src=a><br></br>x</p>";
  const DocumentRef one = parser.Parse(first.c_str(), static_cast<std::uint32_t>(first.size()));
  const DocumentRef two = parser.Parse(second.c_str(), static_cast<std::uint32_t>(second.size()));
  EXPECT_EQ(parser.root, two->root);
  EXPECT_EQ(TreeNotation(*one->root), "root[a]");
  ASSERT_EQ(TreeNotation(*two->root), "root[p[IMG{src=\"a\"}, br, 'x']]");
  const ElementRef& p = two->root->children[0];
  EXPECT_TRUE(two->root->parent.expired());
  EXPECT_EQ(p->parent.lock(), two->root);
  for (const ElementRef& child : p->children) EXPECT_EQ(child->parent.lock(), p);
}

}  // namespace
}  // namespace qrl::testing
