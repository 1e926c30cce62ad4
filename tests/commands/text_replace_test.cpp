#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "commands/text_utils.h"

namespace qrl {
namespace {

// Replacement in place, searching on behind the inserted text: quadratic,
// but plainly right.
std::string ReplaceInPlace(std::string text, std::string_view from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

TEST(ReplaceAllTest, DoesNotRescanAndIgnoresEmptyFrom) {
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(ReplaceAll("a-b-", "-", ""), "ab");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll(std::string("a\0b", 3), std::string("\0", 1), "0"), "a0b");
  EXPECT_EQ(ReplaceAll(u"a\u00e9a", u"a", u"aa"), u"aa\u00e9aa");
  EXPECT_EQ(ReplaceAll(u"abc", u"", u"x"), u"abc");
}

// Every text of up to eight letters over {a, b} against every pattern of up
// to four: catches a search that loses an occurrence after a partial match
// or resumes at the wrong place.
TEST(ReplaceAllTest, AgreesWithInPlaceReplacementExhaustively) {
  std::vector<std::string> words;
  for (std::size_t length = 1; length <= 8; ++length) {
    for (unsigned bits = 0; bits < (1u << length); ++bits) {
      std::string word;
      for (std::size_t i = 0; i < length; ++i) word.push_back((bits >> i) & 1 ? 'b' : 'a');
      words.push_back(word);
    }
  }
  for (const auto& text : words) {
    for (const auto& from : words) {
      if (from.size() > 4) break;
      ASSERT_EQ(ReplaceAll(text, from, "ba"), ReplaceInPlace(text, from, "ba")) << text << " / " << from;
    }
  }
}

}  // namespace
}  // namespace qrl
