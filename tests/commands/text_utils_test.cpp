#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commands/text_utils.h"

namespace qrl {
namespace {

std::u16string Units(std::initializer_list<char16_t> units) { return std::u16string(units); }

TEST(UnescapeJsonTextTest, EscapesShortTailsAndNumbers) {
  const struct {
    std::u16string input, expected;
  } cases[] = {
      {u"\"a\\\"b\"", u"\"a\"b\""},  // surrounding quotes stay
      {u"\\n\\r\\t\\\\\\/\\b\\f", u"\n\r\t\\/bf"}, {u"\\\\n", u"\\n"}, {u"ab\\", u"ab\\"}, {u"x\\u12", u"xu12"},
      {u"\\u\\n", u"u\n"}, {u"\\u00e9", u"\u00e9"},  // exactly six units at the end
      {u"\\ud83d\\ude00", Units({0xD83D, 0xDE00})}, {u"\\uZZZZ!", Units({0, u'!'})}, {u"\\u12G4", Units({0x12})},
      {u"\\u-001", Units({0xFFFF})}, {u"\\u0x41", u"A"}, {u"\\u0xZ1", Units({0})}, {u"\\u +7F", Units({0x7F})},
      {u"\\u+-12", Units({0})},
  };
  for (const auto& c : cases) EXPECT_EQ(UnescapeJsonText(c.input), c.expected) << testing::PrintToString(c.input);
}

TEST(DecodeEntitiesTest, RowsApplyInTableOrder) {
  const struct {
    std::string input, expected;
  } cases[] = {
      {"&amp;&apos;&copy;&gt;&lt;&quot;&reg;", "&'\xA9><\"\xAE"}, {"&amp &lt", "&amp &lt"},
      {"&AMP;&#169;&nbsp;", "&AMP;&#169;&nbsp;"},
      {"&amp;lt;", "<"},       // an earlier row feeds a later one
      {"&amp;amp;", "&amp;"},  // but never itself
      {"&lt;amp;", "<amp;"},   // nor an earlier one
  };
  for (const auto& c : cases) EXPECT_EQ(DecodeEntities(c.input), c.expected) << c.input;
}

TEST(ToLowerTest, FoldsAsciiLettersOnly) {
  EXPECT_EQ(ToLower(std::string("AZaz@[`{09 \xC3\x89\xFF")), "azaz@[`{09 \xC3\x89\xFF");
  EXPECT_EQ(ToLower(std::u16string(u"HTTPS://\u00c9X\u0130")), u"https://\u00c9x\u0130");
}

using Pieces = std::vector<std::string>;

TEST(SplitWordsTest, CutsAtBlanksOnly) {
  EXPECT_EQ(SplitWords("   "), Pieces{});
  EXPECT_EQ(SplitWords("  a  b a "), (Pieces{"a", "b", "a"}));
  EXPECT_EQ(SplitWords("a\tb c\n"), (Pieces{"a\tb", "c\n"}));
}

TEST(SplitFieldsTest, CutsTrimsAndSizes) {
  const struct {
    char delimiter;
    int keepEmpty, fieldCount;
    std::string text;
    Pieces expected;
  } cases[] = {
      {'*', 1, 0, "", {}}, {'*', 1, 0, "*abc*", {"", "abc", ""}}, {'*', 1, 0, "*", {"", ""}},
      {'*', 1, 0, "a * b", {"a", "b"}}, {'*', 1, 0, "a**b", {"a", "", "b"}}, {'*', 1, 0, " *  * \t", {"", " ", "\t"}},
      // Empty pieces are skipped before trimming, so a blank piece survives.
      {'*', 0, 0, "*a** *b*", {"a", "", "b", ""}},
      // With the blank as delimiter, the blank standing in for a trailing
      // delimiter is itself one, and nothing follows it.
      {' ', 1, 0, "a ", {"a", ""}},
      {'*', 1, 2, "a*b*c", {"a", "b"}}, {'*', 1, 4, "a*b", {"a", "b", "", ""}}, {'*', 0, 2, "*a", {"a", ""}},
      {'*', 1, -1, "a*b*c", {"a", "b", "c"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SplitFields(c.delimiter, c.keepEmpty, c.fieldCount, c.text), c.expected)
        << '"' << c.text << "\" '" << c.delimiter << "' " << c.keepEmpty << ' ' << c.fieldCount;
  }
}

TEST(TrimTextTest, KeepsLastByteAndHonoursSide) {
  const TrimSide unknown = static_cast<TrimSide>('X');
  const struct {
    std::string text;
    TrimSide side;
    std::string expected;
  } cases[] = {
      {" ", TrimSide::Left, ""}, {" ", unknown, ""}, {"   ", TrimSide::Both, " "}, {"\t", TrimSide::Both, "\t"},
      {"\r\n", TrimSide::Right, "\r"}, {"  a  ", TrimSide::Left, "a  "}, {"  a  ", TrimSide::Right, "  a"},
      {"\t\r\n a \n\r\t", TrimSide::Both, "a"}, {"\va b\f", TrimSide::Both, "\va b\f"}, {"  a  ", unknown, "  a  "},
  };
  for (const auto& c : cases) EXPECT_EQ(TrimText(c.text, c.side), c.expected) << '"' << c.text << "\" " << char(c.side);
}

TEST(ReplaceAllTest, IgnoresEmptyFromAndKeepsEveryUnit) {
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll("a-b-", "-", ""), "ab");
  EXPECT_EQ(ReplaceAll(std::string("a\0b", 3), std::string("\0", 1), "0"), "a0b");
  EXPECT_EQ(ReplaceAll(u"a\u00e9a", u"a", u"aa"), u"aa\u00e9aa");
  EXPECT_EQ(ReplaceAll(u"abc", u"", u"x"), u"abc");
}

// Every text of up to eight letters over {a, b} against every pattern of up
// to four, compared with a plain in-place replacement that searches on behind
// the inserted text: catches a search that loses an occurrence after a
// partial match, resumes at the wrong place or rescans what it inserted.
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
      const std::string to = "ba";
      std::string expected = text;
      for (auto at = expected.find(from); at != std::string::npos; at = expected.find(from, at + to.size())) {
        expected.replace(at, from.size(), to);
      }
      ASSERT_EQ(ReplaceAll(text, from, to), expected) << text << " / " << from;
    }
  }
}

}  // namespace
}  // namespace qrl
