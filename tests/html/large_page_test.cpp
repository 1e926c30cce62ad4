// A page of about 100 MB, as large as a capture gets: its offsets, node
// counts and memory run far past anything a single corpus page reaches. It is
// built from code.html many times over, so every copy must come out of the
// parse exactly as a page of one copy does.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

constexpr std::size_t kLargePageBytes = 100'000'000;

std::string ReadCorpusPage(std::string_view name) {
  const char* folder = std::getenv("QRL_CORPUS");
  std::ifstream file(std::filesystem::path(folder ? folder : QRL_CORPUS_DIR) / (std::string(name) + ".html"),
                     std::ios::binary);
  return std::string{std::istreambuf_iterator<char>(file), {}};
}

// Copies end to end would not do: text between them ends the document, and
// an element one copy leaves open would take in the next. Each copy stands in
// an element of a name the page never uses, so that its closing tag closes
// whatever the copy left open, and every copy is read in the same
// surroundings.
std::string Copies(const std::string& page, std::size_t count) {
  constexpr std::string_view kOpen = "<copy>";
  constexpr std::string_view kClose = "</copy>\n";
  std::string copies;
  copies.reserve(count * (kOpen.size() + page.size() + kClose.size()));
  for (std::size_t i = 0; i < count; ++i) copies.append(kOpen).append(page).append(kClose);
  return copies;
}

// Where two markups part, with a little of each from there; empty when they
// are the same. Megabytes of markup are too much to print on a failure.
std::string Divergence(const std::string& markup, const std::string& expected) {
  const std::size_t common = std::min(markup.size(), expected.size());
  const auto at = static_cast<std::size_t>(
      std::mismatch(markup.begin(), markup.begin() + common, expected.begin()).first - markup.begin());
  if (at == common && markup.size() == expected.size()) return {};
  return "from byte " + std::to_string(at) + ": \"" + markup.substr(at, 80) + "\" where a lone copy has \"" +
         expected.substr(at, 80) + "\"";
}

TEST(LargePageTest, EveryCopyInAHundredMegabytePageParsesLikeALoneCopy) {
  const std::string page = ReadCorpusPage("code");
  if (page.empty()) GTEST_SKIP() << "corpus page code not found";
  const std::size_t count = (kLargePageBytes + page.size() - 1) / page.size();
  const DocumentRef lone = ParseQuietly(Copies(page, 1));
  const std::size_t loneSpans = lone->root->GetElementsByTagName("span").size();
  ASSERT_GT(loneSpans, 0u);

  const DocumentRef large = ParseQuietly(Copies(page, count));
  const HtmlElement& root = *large->root;
  // One child per copy: none lost at the end of the input, none taken into
  // another.
  ASSERT_EQ(root.children().size(), count);
  EXPECT_EQ(root.GetElementsByTagName("span").size(), count * loneSpans);
  // The last copy lies furthest into the input, and its nodes and strings
  // were made last, when the tree's memory was largest.
  EXPECT_EQ(Divergence(MarkupOf(*root.children().back()), MarkupOf(*lone->root->children().back())), "");
}

}  // namespace
}  // namespace qrl::testing
