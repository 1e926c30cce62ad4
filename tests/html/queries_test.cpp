#include <gtest/gtest.h>

#include <map>
#include <string>

#include "html/tree_walk.h"
#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

// Text runs are named for their text, elements for their tag.
std::string Names(const ElementList& found) {
  std::string out;
  for (const ElementRef& node : found) {
    out.append(out.empty() ? "" : " ");
    out.append(!node ? std::string_view("none") : node->name == "plain" ? node->text : node->name);
  }
  return out;
}

class QueriesTest : public ::testing::Test {
 protected:
  const DocumentRef document =
      ParseQuietly("<div id=\"a\" class=\"x y\"><span class=\"y\">p</span><b id=\"a\" class=\"x\">q</b></div>");
  const ElementRef& root = document->root;
  const ElementRef& div = root->children[0];
  const ElementRef& span = div->children[0];
  const ElementRef& b = div->children[1];
};

// By id (the first match), by class list or by tag (every match), always
// below the start and in document order.
TEST_F(QueriesTest, SearchBelowTheStartInDocumentOrder) {
  const struct {
    const ElementRef& start;
    char by;  // i, c or t
    std::string key, found;
  } cases[] = {
      {root, 'i', "a", "div"}, {div, 'i', "a", "b"}, {root, 'i', "", "span"}, {root, 'c', "y", "div span"},
      {root, 'c', " x  y x ", "div"}, {root, 'c', "x\ty", ""},  // only the blank separates names
      {root, 'c', "   ", "div span p b q"}, {root, 't', "b", "b"},
  };
  for (const auto& c : cases) {
    const ElementList found = c.by == 'i'   ? ElementList{c.start->GetElementById(c.key)}
                              : c.by == 'c' ? c.start->GetElementsByClassName(c.key)
                                            : c.start->GetElementsByTagName(c.key);
    EXPECT_EQ(Names(found), c.found) << c.by << " \"" << c.key << '"';
  }
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
// dies, and a held node's parent link (and with it its siblings) is empty
// unless its parent survives, held itself or inside a held subtree (a held
// parent that goes later releases its children by the same walk). Nodes are
// named by the first byte of their tag or text.
TEST(QueriesLifetimeTest, ReleaseKeepsExactlyTheHeldSubtrees) {
  const struct {
    std::string held, survivors;
  } cases[] = {{"c", "1c"}, {"fb", "123bcdf"}, {"af", "1234abcdef"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.held);
    DocumentRef document = ParseQuietly("<a><b><c>1</c><d>2</d></b><e><f>3</f></e>4</a><g>5</g>");
    std::map<char, std::weak_ptr<HtmlElement>> watched;
    std::map<ElementRef, std::pair<std::string, std::weak_ptr<HtmlElement>>> held;  // its markup and parent
    WalkDescendants(*document->root, [&](const ElementRef& node) {
      const char name = (node->name == "plain" ? node->text : node->name).c_str()[0];
      watched[name] = node;
      if (c.held.find(name) != std::string::npos) held[node] = {MarkupOf(*node), node->parent.lock()};
      return true;
    });
    ASSERT_EQ(held.size(), c.held.size());
    document.reset();
    std::string survivors;
    for (const auto& [name, watch] : watched)
      if (!watch.expired()) survivors += name;
    EXPECT_EQ(survivors, c.survivors);
    for (const auto& [node, before] : held) {
      EXPECT_EQ(MarkupOf(*node), before.first);
      const ElementRef parentNode = node->parent.lock();
      EXPECT_EQ(parentNode, before.second.lock()) << before.first;
      EXPECT_EQ(node->GetNextSibling() == nullptr, !parentNode || node == parentNode->children.back()) << before.first;
    }
  }
}

}  // namespace
}  // namespace qrl::testing
