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
    out.append(!node ? std::string_view("none") : node->name() == "plain" ? node->text() : node->name());
  }
  return out;
}

class QueriesTest : public ::testing::Test {
 protected:
  const DocumentRef document =
      ParseQuietly("<div id=\"a\" class=\"x y\"><span class=\"y\">p</span><b id=\"a\" class=\"x\">q</b></div>");
  const ElementRef& root = document->root;
  const ElementRef div = root->GetChildren()[0];
  const ElementRef span = div->GetChildren()[0];
  const ElementRef b = div->GetChildren()[1];
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

// A node held after its document has gone keeps the whole tree readable
// (its parent and siblings too), and the tree goes with the last reference.
TEST(QueriesLifetimeTest, AHeldNodeKeepsItsTreeUntilItGoes) {
  DocumentRef document = ParseQuietly("<a><b><c>1</c><d>2</d></b><e>3</e></a>");
  ElementRef d = document->root->GetElementsByTagName("d").front();
  const std::weak_ptr<HtmlElement> watch = document->root;
  document.reset();
  EXPECT_EQ(MarkupOf(*d->GetParent()->GetParent()), "<a><b><c>1</c><d>2</d></b><e>3</e></a>");
  EXPECT_EQ(d->GetPreviousSibling()->GetText(), "1");
  EXPECT_FALSE(watch.expired());
  d.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
}  // namespace qrl::testing
