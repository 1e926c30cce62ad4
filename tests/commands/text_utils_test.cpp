#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "commands/text_utils.h"
#include "commands/unicode_text.h"

namespace qrl {
namespace {

std::u16string Units(std::initializer_list<char16_t> units) { return std::u16string(units); }

TEST(UnescapeJsonTextTest, EscapesShortTailsAndNumbers) {
  const std::pair<std::u16string, std::u16string> cases[] = {
      {u"\"a\\\"b\"", u"\"a\"b\""},  // surrounding quotes stay
      {u"\\n\\r\\t\\\\\\/\\b\\f", u"\n\r\t\\/bf"}, {u"\\\\n", u"\\n"}, {u"ab\\", u"ab\\"}, {u"\\u\\n", u"u\n"},
      {u"\\u00e9", u"\u00e9"},  // exactly six units at the end
      // The four units read as a lenient number: up to a non-digit, with a
      // sign, a 0x prefix only before a digit, blanks in front.
      {u"\\u12G4", Units({0x12})}, {u"\\u-001", Units({0xFFFF})}, {u"\\u0x41", u"A"}, {u"\\u0xZ1", Units({0})},
      {u"\\u +7F", Units({0x7F})},
  };
  for (const auto& [input, expected] : cases)
    EXPECT_EQ(UnescapeJsonText(input), expected) << testing::PrintToString(input);
}

TEST(DecodeEntitiesTest, RowsApplyInTableOrder) {
  const std::pair<std::string, std::string> cases[] = {
      {"&amp;&apos;&copy;&gt;&lt;&quot;&reg;&nbsp;", "&'\xA9><\"\xAE&nbsp;"},
      {"&amp;lt;", "<"},       // an earlier row feeds a later one
      {"&amp;amp;", "&amp;"},  // but never itself
  };
  for (const auto& [input, expected] : cases) EXPECT_EQ(DecodeEntities(input), expected) << input;
}

// Only ASCII letters fold, and only the blank cuts a list of words.
TEST(ToLowerAndSplitWordsTest, TouchAsciiLettersAndBlanksOnly) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(ToLower(std::string("AZaz@[`{09 \xC3\x89\xFF")), "azaz@[`{09 \xC3\x89\xFF");
  EXPECT_EQ(ToLower(std::u16string(u"HTTPS://\u00c9X\u0130")), u"https://\u00c9x\u0130");
  EXPECT_EQ(SplitWords("  a\tb  c\n a "), (Words{"a\tb", "c\n", "a"}));
}

TEST(SplitFieldsTest, CutsTrimsAndSizes) {
  // delimiter, keepEmpty, fieldCount, text, fields
  const std::tuple<char, int, int, std::string, std::vector<std::string>> cases[] = {
      {'*', 1, 0, "", {}}, {'*', 1, 0, "*abc*", {"", "abc", ""}}, {'*', 1, 0, "a * b", {"a", "b"}},
      // Empty pieces are skipped before trimming, so a blank piece survives.
      {'*', 0, 0, "*a** *b*", {"a", "", "b", ""}},
      // With the blank as delimiter, the blank standing in for a trailing
      // delimiter is itself one, and nothing follows it.
      {' ', 1, 0, "a ", {"a", ""}},
      {'*', 1, 2, "a*b*c", {"a", "b"}}, {'*', 1, 4, "a*b", {"a", "b", "", ""}}, {'*', 1, -1, "a*b*c", {"a", "b", "c"}},
  };
  for (const auto& [delimiter, keepEmpty, fieldCount, text, fields] : cases) {
    EXPECT_EQ(SplitFields(delimiter, keepEmpty, fieldCount, text), fields)
        << '"' << text << "\" '" << delimiter << "' " << keepEmpty << ' ' << fieldCount;
  }
}

TEST(TrimTextTest, KeepsLastByteAndHonoursSide) {
  const TrimSide unknown{'X'};
  const std::tuple<std::string, TrimSide, std::string> cases[] = {
      {" ", TrimSide::Left, ""}, {"   ", TrimSide::Both, " "}, {"\r\n", TrimSide::Right, "\r"},
      {"  a  ", TrimSide::Left, "a  "}, {"  a  ", TrimSide::Right, "  a"}, {"  a  ", unknown, "  a  "},
      {"\t\r\n a \n\r\t", TrimSide::Both, "a"}, {"\va b\f", TrimSide::Both, "\va b\f"},
  };
  for (const auto& [text, side, expected] : cases)
    EXPECT_EQ(TrimText(text, side), expected) << '"' << text << "\" " << char(side);
}

// Every text of up to eight letters over {a, b} against every pattern of up
// to four, compared with a plain in-place replacement that searches on behind
// the inserted text: catches a search that loses an occurrence after a
// partial match, resumes at the wrong place or rescans what it inserted. The
// wide form is the same template.
TEST(ReplaceAllTest, AgreesWithInPlaceReplacementExhaustively) {
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  std::vector<std::string> words{"a", "b"};  // shortest first
  for (std::size_t i = 0; words[i].size() < 8; ++i) words.insert(words.end(), {words[i] + 'a', words[i] + 'b'});
  for (const auto& text : words) {
    for (const auto& from : words) {
      if (from.size() > 4) break;
      for (const std::string to : {"", "ba"}) {
        std::string expected = text;
        for (auto at = expected.find(from); at != std::string::npos; at = expected.find(from, at + to.size())) {
          expected.replace(at, from.size(), to);
        }
        ASSERT_EQ(ReplaceAll(text, from, to), expected) << text << " / " << from << " / " << to;
      }
    }
  }
}

// Well-formed text converts both ways; what either side cannot read becomes
// U+FFFD, in the one direction given.
TEST(UnicodeTextTest, ConvertsAndReplacesWhatItCannotRead) {
  enum Direction { Both, ToWide, ToNarrow };
  const std::tuple<std::string, std::u16string, Direction> cases[] = {
      {"caf\xC3\xA9", u"caf\u00E9", Both}, {"\xEF\xBF\xBF", u"\uFFFF", Both}, {"\xF0\x9F\x98\x80", u"\U0001F600", Both},
      {"\xF4\x8F\xBF\xBF", u"\U0010FFFF", Both},
      // A stray continuation byte, a sequence cut off at the end or missing its
      // continuation (the next byte stays), an overlong one, an encoded
      // surrogate, a code point above U+10FFFF.
      {"\x80", u"\uFFFD", ToWide}, {"a\xC3", u"a\uFFFD", ToWide}, {"\xC3(", u"\uFFFD(", ToWide},
      {"\xC0\xAF", u"\uFFFD\uFFFD", ToWide}, {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", ToWide},
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", ToWide},
      // Unpaired surrogates.
      {"\xEF\xBF\xBD", Units({0xD800}), ToNarrow}, {"\xEF\xBF\xBD" "a", Units({0xDC00, u'a'}), ToNarrow},
      {"\xEF\xBF\xBD\xF0\x9F\x98\x80", Units({0xD83D, 0xD83D, 0xDE00}), ToNarrow},
  };
  for (const auto& [utf8, utf16, direction] : cases) {
    SCOPED_TRACE(testing::PrintToString(utf8));
    if (direction != ToNarrow) { EXPECT_EQ(Utf8ToUtf16(utf8), utf16); }
    if (direction != ToWide) { EXPECT_EQ(Utf16ToUtf8(utf16), utf8); }
  }
}

}  // namespace
}  // namespace qrl
