#include <gtest/gtest.h>

#include <string>

#include "commands/text_utils.h"

namespace qrl {
namespace {

std::u16string Units(std::initializer_list<char16_t> units) { return std::u16string(units); }

TEST(UnescapeJsonTextTest, EscapesShortTailsAndNumbers) {
  const struct {
    std::u16string input, expected;
  } cases[] = {
      {u"\"a\\\"b\"", u"\"a\"b\""},  // surrounding quotes stay
      {u"\\n\\r\\t\\\\\\/\\b\\f", u"\n\r\t\\/bf"},
      {u"\\\\n", u"\\n"},
      {u"ab\\", u"ab\\"},
      {u"x\\u12", u"xu12"},
      {u"\\u\\n", u"u\n"},
      {u"\\u00e9", u"\u00e9"},  // exactly six units at the end
      {u"\\ud83d\\ude00", Units({0xD83D, 0xDE00})},
      {u"\\uZZZZ!", Units({0, u'!'})},
      {u"\\u12G4", Units({0x12})},
      {u"\\u-001", Units({0xFFFF})},
      {u"\\u0x41", u"A"},
      {u"\\u0xZ1", Units({0})},
      {u"\\u +7F", Units({0x7F})},
      {u"\\u+-12", Units({0})},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(UnescapeJsonText(c.input), c.expected) << testing::PrintToString(c.input);
  }
}

TEST(DecodeEntitiesTest, RowsApplyInTableOrder) {
  const struct {
    std::string input, expected;
  } cases[] = {
      {"&amp;&apos;&copy;&gt;&lt;&quot;&reg;", "&'\xA9><\"\xAE"},
      {"&amp &lt", "&amp &lt"},
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

}  // namespace
}  // namespace qrl
