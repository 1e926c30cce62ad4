// Real pages: the tree must hang together, and the engine's own markup must
// be a fixed point (parsing what it wrote and writing again changes nothing).
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "html/tree_walk.h"
#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

class CorpusTest : public ::testing::TestWithParam<std::string> {};

TEST_P(CorpusTest, TreeHangsTogetherAndMarkupIsAFixedPoint) {
  const char* folder = std::getenv("QRL_CORPUS");
  std::ifstream file(std::filesystem::path(folder ? folder : QRL_CORPUS_DIR) / (GetParam() + ".html"),
                     std::ios::binary);
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  if (page.empty()) GTEST_SKIP() << "corpus page " << GetParam() << " not found";
  const DocumentRef document = ParseQuietly(page);
  std::size_t nodes = 0;
  WalkDescendants(*document->root, [&](const HtmlElement& node) {
    ++nodes;
    EXPECT_TRUE(node.GetParent());
    EXPECT_EQ(node.name().c_str()[node.name().size()], '\0');
    EXPECT_EQ(node.text().c_str()[node.text().size()], '\0');
    if (const ElementRef next = node.GetNextSibling()) {
      EXPECT_EQ(next->GetPreviousSibling().get(), &node);
    }
    return !HasFailure();
  });
  EXPECT_GT(nodes, 1000u);
  const std::string markup = MarkupOf(*document->root);
  EXPECT_EQ(MarkupOf(*ParseQuietly(markup)->root), markup);
}

INSTANTIATE_TEST_SUITE_P(Pages, CorpusTest, ::testing::Values("small", "book", "api", "code"));

}  // namespace
}  // namespace qrl::testing
