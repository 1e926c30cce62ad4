#include "commands/unicode_text.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TEST(UnicodeText, WellFormedTextSurvivesTheRoundTrip) {
  const struct {
    std::string utf8;
    std::u16string utf16;
  } cases[] = {
      {"", u""},
      {"caf\xC3\xA9", u"caf\u00E9"},
      {"\xE2\x82\xAC 5", u"\u20AC 5"},
      {"\xF0\x9F\x98\x80", u"\U0001F600"},
      {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
      {"\xEF\xBF\xBF", u"\uFFFF"},
      {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Utf8ToUtf16(c.utf8), c.utf16) << c.utf8;
    EXPECT_EQ(Utf16ToUtf8(c.utf16), c.utf8) << c.utf8;
  }
}

TEST(UnicodeText, MalformedTextBecomesReplacementCharacters) {
  const struct {
    std::string utf8;
    std::u16string utf16;
  } cases[] = {
      {"\x80", u"\uFFFD"},                      // stray continuation byte
      {"a\xC3", u"a\uFFFD"},                    // cut off at the end
      {"\xC3(", u"\uFFFD("},                    // continuation missing; the next byte stays
      {"\xC0\xAF", u"\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},  // an encoded surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above U+10FFFF
      {"\xFF", u"\uFFFD"},
  };
  for (const auto& c : cases) EXPECT_EQ(Utf8ToUtf16(c.utf8), c.utf16) << c.utf8;
  // Unpaired surrogates on the way back.
  EXPECT_EQ(Utf16ToUtf8(u"\xD800"), "\xEF\xBF\xBD");
  EXPECT_EQ(Utf16ToUtf8(std::u16string{0xDC00, u'a'}), "\xEF\xBF\xBD" "a");
  EXPECT_EQ(Utf16ToUtf8(std::u16string{0xD83D, 0xD83D, 0xDE00}), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace qrl
