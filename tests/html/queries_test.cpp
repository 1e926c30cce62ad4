#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/html/parse_helpers.h"
#include "html/tree_walk.h"
#include "tests/html/tree_notation.h"

namespace qrl::testing {
namespace {

// Names the nodes of the tree below for the query tables.
class QueriesTest : public ::testing::Test {
 protected:
  const DocumentRef document =
      ParseQuietly("<div id=\"a\" class=\"x y\"><span class=\"y\">p</span><b id=\"a\" class=\"x\">q</b></div>");
  const ElementRef& root = document->root;
  const ElementRef& div = root->children[0];
  const ElementRef& span = div->children[0];
  const ElementRef& b = div->children[1];
  const ElementRef& p = span->children[0];
  const ElementRef& q = b->children[0];

  std::string Names(const ElementList& found) const {
    std::string out;
    for (const ElementRef& node : found) out.append(out.empty() ? "" : " ").append(NameOf(node));
    return out;
  }
  std::string NameOf(const ElementRef& node) const {
    if (!node) return "none";
    if (node == p) return "p";
    if (node == q) return "q";
    return std::string(node->name);
  }
};

TEST_F(QueriesTest, ById) {
  const struct {
    const ElementRef& start;
    std::string id;
    std::string found;
  } cases[] = {{root, "a", "div"}, {root, "A", "none"}, {div, "a", "b"}, {root, "", "span"}, {b, "a", "none"}};
  for (const auto& c : cases) EXPECT_EQ(NameOf(c.start->GetElementById(c.id)), c.found) << c.id;
}

TEST_F(QueriesTest, ByClassAndTag) {
  const struct {
    const ElementRef& start;
    std::string classList;
    std::string found;
  } byClass[] = {{root, "y", "div span"},     {root, "y x", "div"},      {root, " x  y x ", "div"},
                 {div, "x y", ""},            {root, "z", ""},           {root, "", "div span p b q"},
                 {root, "   ", "div span p b q"}, {b, "", "q"}};
  for (const auto& c : byClass) EXPECT_EQ(Names(c.start->GetElementsByClassName(c.classList)), c.found) << c.classList;

  const struct {
    std::string tag;
    std::string found;
  } byTag[] = {{"b", "b"}, {"B", ""}, {"plain", "p q"}, {"", ""}, {"div", "div"}};
  for (const auto& c : byTag) EXPECT_EQ(Names(root->GetElementsByTagName(c.tag)), c.found) << c.tag;
}

TEST_F(QueriesTest, CollectionsSkipOnlyNodesTheListAlreadyHeld) {
  ElementList results{b, b};
  root->CollectByClass("x", results);
  EXPECT_EQ(Names(results), "b b div");
  root->CollectByTag("span", results);
  root->CollectByTag("span", results);
  EXPECT_EQ(Names(results), "b b div span");
}

TEST_F(QueriesTest, Siblings) {
  EXPECT_EQ(NameOf(span->GetNextSibling()), "b");
  EXPECT_EQ(NameOf(b->GetNextSibling()), "none");
  EXPECT_EQ(NameOf(b->GetPreviousSibling()), "span");
  EXPECT_EQ(NameOf(span->GetPreviousSibling()), "none");
  EXPECT_EQ(NameOf(div->GetNextSibling()), "none");
  EXPECT_EQ(NameOf(root->GetNextSibling()), "none");
  EXPECT_EQ(NameOf(root->GetPreviousSibling()), "none");
  HtmlElement unowned;
  EXPECT_EQ(unowned.GetNextSibling(), nullptr);
  EXPECT_EQ(unowned.GetPreviousSibling(), nullptr);
}

TEST_F(QueriesTest, AttributeLookupNeverAddsEntries) {
  EXPECT_EQ(span->GetAttribute("class"), "y");
  EXPECT_EQ(span->GetAttribute("title"), "");
  EXPECT_EQ(span->attributes.size(), 1u);
  EXPECT_EQ(p->GetAttribute("id"), "");
  EXPECT_TRUE(p->attributes.empty());
}

TEST(QueriesLifetimeTest, NodeOutlivesItsTreeAndParser) {
  ElementRef kept;
  {
    HtmlParser parser;
    const std::string source = "<ul><li class=k>one</li><li>two</li></ul>";
    const DocumentRef document = parser.Parse(source.c_str(), static_cast<std::uint32_t>(source.size()));
    kept = document->root->GetElementsByClassName("k").at(0);
  }
  EXPECT_TRUE(kept->parent.expired());
  EXPECT_EQ(kept->GetNextSibling(), nullptr);
  EXPECT_EQ(kept->GetText(), "one");
  EXPECT_EQ(kept->GetAttribute("class"), "k");
  std::string markup;
  kept->AppendMarkup(markup);
  EXPECT_EQ(markup, "<li class=\"k\">one</li>");
}

TEST(QueriesLifetimeTest, SiblingsOfWideListsAndRepeatedNames) {
  std::string source = "<ul>";
  for (int i = 0; i < 1000; ++i) source += "<li>" + std::to_string(i) + "</li>";
  source += "</ul>";
  const DocumentRef document = ParseQuietly(source);
  const ElementList items = document->root->GetElementsByTagName("li");
  ASSERT_EQ(items.size(), 1000u);
  for (std::size_t i = 0; i + 1 < items.size(); ++i) {
    ASSERT_EQ(items[i]->GetNextSibling(), items[i + 1]);
    ASSERT_EQ(items[i + 1]->GetPreviousSibling(), items[i]);
  }
}

// Releasing a tree while some of its nodes are held: exactly the held nodes
// and their descendants stay alive (whole, with their text), everything else
// dies, and a held node's parent link is empty unless its parent survives.
TEST(QueriesLifetimeTest, ReleaseKeepsExactlyTheHeldSubtrees) {
  const std::string source = "<a><b><c>1</c><d>2</d></b><e><f>3</f></e>4</a><g>5</g><h><i></i></h>";
  const std::vector<std::vector<std::string>> heldSets = {
      {}, {"a"}, {"b"}, {"c"}, {"e"}, {"f", "b"}, {"c", "d"}, {"g"}, {"a", "f"}, {"i"}, {"h", "i"}};
  for (const std::vector<std::string>& heldNames : heldSets) {
    SCOPED_TRACE(::testing::PrintToString(heldNames));
    DocumentRef document = ParseQuietly(source);
    std::map<const HtmlElement*, std::weak_ptr<HtmlElement>> watched;
    std::map<const HtmlElement*, bool> survives;
    std::map<const HtmlElement*, std::string> markupOf;
    ElementList held;
    WalkDescendants(*document->root, [&](const ElementRef& node) {
      const ElementRef parentNode = node->parent.lock();
      const bool isHeld = std::find(heldNames.begin(), heldNames.end(), std::string(node->name)) != heldNames.end();
      if (isHeld) held.push_back(node);
      survives[node.get()] = isHeld || (parentNode != document->root && survives.at(parentNode.get()));
      watched[node.get()] = node;
      node->AppendMarkup(markupOf[node.get()]);
      return true;
    });
    ASSERT_EQ(held.size(), heldNames.size());
    document.reset();
    for (const auto& [node, watch] : watched) EXPECT_EQ(watch.expired(), !survives.at(node)) << markupOf.at(node);
    for (const ElementRef& node : held) {
      std::string markup;
      node->AppendMarkup(markup);
      EXPECT_EQ(markup, markupOf.at(node.get()));
      const ElementRef parentNode = node->parent.lock();
      EXPECT_EQ(parentNode != nullptr, watched.count(parentNode.get()) == 1 && survives.at(parentNode.get()))
          << markup;
    }
  }
}

}  // namespace
}  // namespace qrl::testing
