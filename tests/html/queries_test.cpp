#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "html/tree_walk.h"
#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

class QueriesTest : public ::testing::Test {
 protected:
  const DocumentRef document =
      ParseQuietly("<div id=\"a\" class=\"x y\"><span class=\"y\">p</span><b id=\"a\" class=\"x\">q</b></div>");
  const ElementRef& root = document->root;
  const ElementRef& div = root->children[0];
  const ElementRef& span = div->children[0];
  const ElementRef& b = div->children[1];

  // Text runs are named for their text, elements for their tag.
  static std::string NameOf(const ElementRef& node) {
    if (!node) return "none";
    return std::string(node->name == "plain" ? node->text : node->name);
  }
  static std::string Names(const ElementList& found) {
    std::string out;
    for (const ElementRef& node : found) out.append(out.empty() ? "" : " ").append(NameOf(node));
    return out;
  }
};

TEST_F(QueriesTest, ById) {
  const struct {
    const ElementRef& start;
    std::string id, found;
  } cases[] = {{root, "a", "div"}, {root, "A", "none"}, {div, "a", "b"}, {root, "", "span"}, {b, "a", "none"}};
  for (const auto& c : cases) EXPECT_EQ(NameOf(c.start->GetElementById(c.id)), c.found) << c.id;
}

TEST_F(QueriesTest, ByClassAndTag) {
  const struct {
    const ElementRef& start;
    std::string classList, found;
  } byClass[] = {{root, "y", "div span"}, {root, " x  y x ", "div"}, {div, "x y", ""},
                 {root, "z", ""},         {root, "   ", "div span p b q"}, {b, "", "q"}};
  for (const auto& c : byClass) EXPECT_EQ(Names(c.start->GetElementsByClassName(c.classList)), c.found) << c.classList;

  const struct {
    std::string tag, found;
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
  EXPECT_EQ(Names({span->GetPreviousSibling(), span->GetNextSibling(), b->GetPreviousSibling(), b->GetNextSibling(),
                   root->GetPreviousSibling(), root->GetNextSibling()}),
            "none b span none none none");
}

// Releasing a tree while some of its nodes are held: exactly the held nodes
// and their descendants stay alive (whole, with their text), everything else
// dies, and a held node's parent link is empty unless its parent survives.
TEST(QueriesLifetimeTest, ReleaseKeepsExactlyTheHeldSubtrees) {
  const std::string source = "<a><b><c>1</c><d>2</d></b><e><f>3</f></e>4</a><g>5</g><h><i></i></h>";
  const std::vector<std::vector<std::string>> heldSets = {{},         {"a"},        {"c"},      {"f", "b"},
                                                          {"c", "d"}, {"a", "f"},   {"i"},      {"h", "i"}};
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
      if (!parentNode) {
        EXPECT_EQ(node->GetNextSibling(), nullptr) << markup;
      }
    }
  }
}

// A held node keeps its link while its parent lives on, held too, and loses
// it when that parent goes later.
TEST(QueriesLifetimeTest, AParentThatGoesLaterEmptiesTheLink) {
  DocumentRef document = ParseQuietly("<h><i></i><j></j></h>");
  ElementRef h = document->root->children.front();
  const ElementRef i = h->children.front();
  document.reset();
  EXPECT_EQ(i->parent.lock(), h);
  EXPECT_EQ(i->GetNextSibling(), h->children.back());
  h.reset();
  EXPECT_TRUE(i->parent.expired());
  EXPECT_EQ(i->GetNextSibling(), nullptr);
}

}  // namespace
}  // namespace qrl::testing
