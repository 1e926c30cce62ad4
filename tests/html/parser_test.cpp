#include <gtest/gtest.h>

#include <string>

#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

using namespace std::string_literals;

// A compact written form of a small tree: root[div{id="a"}['x', br]]. A text
// run is 'text'; an element is its name ("" when it has none), then each
// attribute in braces, its own text in parentheses and its children in
// brackets, each part only when it isn't empty.
std::string TreeNotation(const HtmlElement& node, std::string_view shownName = "root") {
  if (node.name() == "plain") return "'" + std::string(node.text()) + "'";
  std::string out(shownName.empty() ? std::string_view("\"\"") : shownName);
  for (const auto& [name, value] : node.attributes())
    out.append("{").append(name).append("=\"").append(value).append("\"}");
  if (!node.text().empty()) out.append("(").append(node.text()).append(")");
  const char* separator = "[";
  for (const HtmlElement* child : node.children()) {
    out.append(separator).append(TreeNotation(*child, child->name()));
    separator = ", ";
  }
  if (!node.children().empty()) out.push_back(']');
  return out;
}

const std::string kNotClosedP = "WARN : element not closed <p> \n";

TEST(ParserTest, BuildsTreeAndWarnings) {
  const struct {
    std::string source, tree, warnings;
  } cases[] = {
      {" \r\n\t", "root", ""}, {"<p>a</p> <p>b</p>", "root[p['a'], p['b']]", ""},
      {"<!DOCTYPE html><?x y?><!-- c --><html></html>", "root[html]", ""},
      {"<p>a<!---->b<!-->c</p>", "root[p['a', 'b', 'c']]", ""},
      {"<div> <p>x</p> </div>", "root[div[' ', p['x'], ' ']]", ""}, {"<p>\n\t</p>", "root[p]", ""},
      {"< div>x</div>", "root[div['x']]", ""}, {"<br/><br /><br / >", "root[br, br, br{/=\"\"}]", ""},
      {"<a/b>c</a>", "root[a]", ""}, {"<></>", "root[\"\"]", ""},
      {"<script>if (a<b) x=\"</div>\";</script>", "root[script(if (a<b) x=\"</div>\";)]", ""},
      {"<script>a\r\n\tb</SCRIPT></script>", "root[script(a\r\n\tb</SCRIPT>)]", ""},
      // Without its closing tag, raw text runs to the end of the input, whole.
      {"<script>abc", "root[script(abc)]", ""},
      // Text outside of any element ends the document; an element still open
      // at the end leaves nothing, its finished children included.
      {"<p></p>tail", "root[p]", ""}, {"<html><body><p>Hello</p>", "root", ""}, {"<!-- open", "root", ""},
      {"</p><div></div>", "root[div]", ""}, {"<a href=\"x>y\">t</a>", "root[a{href=\"x\"}['y\">t']]", ""},
      {"<div>a</x>b</>c</div >d</div>", "root[div['a', 'b', 'c', 'd']]",
       "WARN : unexpected closed element </x> for <div>\nWARN : unexpected closed element </>> for <div>\n"
       "WARN : unexpected closed element </div > for <div>\n"},
      {"<div><p>one<p>two</div>", "root[div[p['one', p['two']]]]", kNotClosedP + kNotClosedP},
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
  const HtmlElement* p = two->root->children()[0];
  EXPECT_FALSE(two->root->GetParent());
  EXPECT_EQ(p->GetParent(), two->root);
  for (const HtmlElement* child : p->children()) EXPECT_EQ(child->parent(), p);
}

}  // namespace
}  // namespace qrl::testing
