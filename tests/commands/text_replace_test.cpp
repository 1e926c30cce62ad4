#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "commands/text_utils.h"

namespace qrl {
namespace {

// The plain description of ReplaceAll: replace in place, search on behind
// the inserted text. Quadratic, but obviously right on short texts.
std::string ReplaceInPlace(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

TEST(ReplaceAllTest, NarrowCases) {
  const struct {
    std::string text, from, to, expected;
  } cases[] = {
      {"aaa", "a", "aa", "aaaaaa"},
      {"a-b-c", "-", "", "abc"},
      {"abc", "", "x", "abc"},
      {"", "a", "b", ""},
      {"abc", "abcd", "x", "abc"},
      {"abc", "abc", "", ""},
      {"aaaa", "aa", "b", "bb"},
      {"aaa", "aa", "b", "ba"},
      {"ababc", "abc", "!", "ab!"},
      {"aabaabaaab", "aabaaab", "#", "aab#"},
      {"x&amp;y&amp;", "&amp;", "&", "x&y&"},
      {std::string("a\0b\0", 4), std::string("\0", 1), "0", "a0b0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ReplaceAll(c.text, c.from, c.to), c.expected)
        << '"' << c.text << "\" from \"" << c.from << "\" to \"" << c.to << '"';
  }
}

TEST(ReplaceAllTest, WideCasesMatchNarrowRules) {
  EXPECT_EQ(ReplaceAll(u"a\u00e9a", u"a", u"aa"), u"aa\u00e9aa");
  EXPECT_EQ(ReplaceAll(u"\\\\x", u"\\", u"/"), u"//x");
  EXPECT_EQ(ReplaceAll(u"abc", u"", u"x"), u"abc");
  EXPECT_EQ(ReplaceAll(u"abab", u"ab", u""), u"");
}

// Every text of up to eight letters over {a, b} against every pattern of up
// to four letters: catches a search that misses occurrences after a partial
// match or resumes at the wrong place.
TEST(ReplaceAllTest, AgreesWithInPlaceReplacementExhaustively) {
  auto words = [](std::size_t maxLength) {
    std::vector<std::string> all;
    for (std::size_t length = 1; length <= maxLength; ++length) {
      for (unsigned bits = 0; bits < (1u << length); ++bits) {
        std::string word;
        for (std::size_t i = 0; i < length; ++i) word.push_back((bits >> i) & 1 ? 'b' : 'a');
        all.push_back(word);
      }
    }
    return all;
  };
  const auto texts = words(8);
  const auto patterns = words(4);
  for (const auto& text : texts) {
    for (const auto& from : patterns) {
      ASSERT_EQ(ReplaceAll(text, from, "ba"), ReplaceInPlace(text, from, "ba"))
          << '"' << text << "\" from \"" << from << '"';
    }
  }
}

}  // namespace
}  // namespace qrl
