#include <gtest/gtest.h>

#include <string>

#include "commands/text_utils.h"

namespace qrl {
namespace {

struct UnescapeCase {
  const char* label;
  std::u16string input;
  std::u16string expected;
};

class UnescapeJsonTextTest : public testing::TestWithParam<UnescapeCase> {};

TEST_P(UnescapeJsonTextTest, GivesExpectedUnits) {
  EXPECT_EQ(UnescapeJsonText(GetParam().input), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Escapes, UnescapeJsonTextTest,
    testing::Values(
        UnescapeCase{"quotes_stay", u"\"a b\"", u"\"a b\""},
        UnescapeCase{"simple_escapes", u"\\\"\\n\\r\\t\\\\", u"\"\n\r\t\\"},
        UnescapeCase{"unknown_escape_gives_unit", u"\\/\\b\\f\\x", u"/bfx"},
        UnescapeCase{"escaped_backslash_then_n", u"\\\\n", u"\\n"},
        UnescapeCase{"lone_trailing_backslash_kept", u"ab\\", u"ab\\"},
        UnescapeCase{"backslash_only", u"\\", u"\\"},
        UnescapeCase{"short_unicode_at_end", u"x\\u12", u"xu12"},
        UnescapeCase{"bare_u_at_end", u"\\u", u"u"},
        UnescapeCase{"short_unicode_then_escape", u"\\u\\n", u"u\n"},
        UnescapeCase{"unicode_exactly_at_end", u"\\u00e9", u"\u00e9"},
        UnescapeCase{"unicode_upper_hex", u"\\u00C9z", u"\u00c9z"},
        UnescapeCase{"surrogates_arrive_as_two_units", u"\\ud83d\\ude00",
                     std::u16string{char16_t(0xD83D), char16_t(0xDE00)}},
        UnescapeCase{"zero_unit", u"a\\u0000b", std::u16string(u"a\0b", 3)},
        UnescapeCase{"bad_digits_consume_six", u"\\uZZZZ!", std::u16string(u"\0!", 2)},
        UnescapeCase{"digits_stop_at_non_digit", u"\\u12G4", std::u16string(1, char16_t(0x12))},
        UnescapeCase{"negative_keeps_low_bits", u"\\u-001", u"\uffff"},
        UnescapeCase{"hex_prefix", u"\\u0x41", u"A"},
        UnescapeCase{"hex_prefix_without_digit", u"\\u0xZ1", std::u16string(1, u'\0')},
        UnescapeCase{"leading_space_and_sign", u"\\u +7F", u"\u007f"},
        UnescapeCase{"sign_twice_reads_nothing", u"\\u+-12", std::u16string(1, u'\0')},
        UnescapeCase{"wide_units_pass_through", u"\u4e2d\\n\u00e9", u"\u4e2d\n\u00e9"}),
    [](const testing::TestParamInfo<UnescapeCase>& info) { return info.param.label; });

struct EntityCase {
  const char* label;
  std::string input;
  std::string expected;
};

class DecodeEntitiesTest : public testing::TestWithParam<EntityCase> {};

TEST_P(DecodeEntitiesTest, GivesExpectedBytes) {
  EXPECT_EQ(DecodeEntities(GetParam().input), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    References, DecodeEntitiesTest,
    testing::Values(
        EntityCase{"all_seven", "&amp;&apos;&copy;&gt;&lt;&quot;&reg;", "&'\xA9><\"\xAE"},
        EntityCase{"copy_is_one_byte", "&copy;", "\xA9"},
        EntityCase{"signs_side_by_side", "&lt;&gt;", "<>"},
        EntityCase{"no_semicolon", "&amp &lt", "&amp &lt"},
        EntityCase{"case_matters", "&AMP;&Lt;", "&AMP;&Lt;"},
        EntityCase{"numeric_unknown", "&#169;&nbsp;", "&#169;&nbsp;"},
        EntityCase{"earlier_row_feeds_later", "&amp;lt;", "<"},
        EntityCase{"row_does_not_feed_itself", "&amp;amp;", "&amp;"},
        EntityCase{"later_row_does_not_feed_earlier", "&lt;amp;", "<amp;"},
        EntityCase{"feeding_through_quot", "&amp;quot;x", "\"x"},
        EntityCase{"plain_text", "a & b", "a & b"},
        EntityCase{"empty", "", ""}),
    [](const testing::TestParamInfo<EntityCase>& info) { return info.param.label; });

TEST(ToLowerTest, FoldsAsciiLettersOnly) {
  EXPECT_EQ(ToLower(std::string("AZaz@[`{09 \xC3\x89\xFF")), "azaz@[`{09 \xC3\x89\xFF");
  EXPECT_EQ(ToLower(std::u16string(u"HTTPS://\u00c9X\u0130")), u"https://\u00c9x\u0130");
}

}  // namespace
}  // namespace qrl
