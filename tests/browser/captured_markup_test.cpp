#include <gtest/gtest.h>

#include <random>
#include <string>

#include "browser/captured_markup.h"
#include "commands/text_utils.h"

namespace qrl {
namespace {

// The steps one by one, the slow way: unescape, drop the quotes, each unit
// to UTF-8 on its own.
std::string StepByStep(std::u16string_view json) {
  std::u16string text = UnescapeJsonText(json);
  if (!text.empty() && text.front() == u'"') {
    text.erase(0, 1);
    if (!text.empty()) text.pop_back();
  }
  std::string bytes;
  for (const char16_t unit : text) {
    if (unit < 0x80) {
      bytes += static_cast<char>(unit);
    } else if (unit < 0x800) {
      bytes += static_cast<char>(0xC0 | (unit >> 6));
      bytes += static_cast<char>(0x80 | (unit & 0x3F));
    } else {
      bytes += static_cast<char>(0xE0 | (unit >> 12));
      bytes += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
      bytes += static_cast<char>(0x80 | (unit & 0x3F));
    }
  }
  return bytes;
}

TEST(CapturedMarkup, GivesTheParserTheseBytes) {
  struct Case {
    std::u16string json;
    std::string bytes;
  };
  const Case cases[] = {
      {u"\"<p a=\\\"q\\\">x\\\\y\\nz\\t\\r\\/\\b</p>\"", "<p a=\"q\">x\\y\nz\t\r/b</p>"},
      {u"\"", ""},
      {u"\"\\u00e9\\u20ac\"", "\xC3\xA9\xE2\x82\xAC"},
      // A pair, escaped or not, becomes two three-byte sequences.
      {u"\"\\ud83d\\ude00\"", "\xED\xA0\xBD\xED\xB8\x80"},
      {u"\"\xD83D\xDE00\"", "\xED\xA0\xBD\xED\xB8\x80"},
      // The last unit goes whatever it is, also when an escape made it.
      {u"\"ab", "a"},
      {u"\"ab\\u00e9", "ab"},
      // A quote that an escape makes is a first quote too.
      {u"\\\"ab\"", "ab"},
      {u"\\u0022ab\"", "ab"},
      // Without a first quote nothing is dropped.
      {u"null", "null"},
      {u"a\"", "a\""},
      // Escapes at the very end.
      {u"\"a\\", "a"},
      {u"a\\u12", "au12"},
      {u"a\\uZZZZb", std::string("a\0b", 3)},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CapturedMarkup(c.json), c.bytes);
    EXPECT_EQ(StepByStep(c.json), c.bytes) << "the reference disagrees";
  }
}

// Texts made of the units where the one-pass form could go wrong: quotes,
// backslashes, escape letters, hex digits, signs, units of every UTF-8
// length and both surrogate halves.
TEST(CapturedMarkup, AgreesWithTheStepsOnMixedTexts) {
  const std::u16string alphabet = u"\"\\\\\\untrb/u0x+- 9aF<>\u00e9\u07ff\u0800\uffff\xD83D\xDE00z";
  std::mt19937 random(20261122);
  std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
  std::uniform_int_distribution<std::size_t> length(0, 24);
  for (int round = 0; round < 20000; ++round) {
    std::u16string json;
    const std::size_t size = length(random);
    for (std::size_t i = 0; i < size; ++i) json += alphabet[pick(random)];
    ASSERT_EQ(CapturedMarkup(json), StepByStep(json)) << "round " << round;
  }
}

// Long plain runs cross the writer's chunks.
TEST(CapturedMarkup, LongTextsComeThroughWhole) {
  std::u16string json = u"\"";
  for (int i = 0; i < 5000; ++i) json += u"<b class=\\\"x\\\">\u00e9t\u00e9 \xD83D\xDE00</b>\\n";
  EXPECT_EQ(CapturedMarkup(json + u"\""), StepByStep(json + u"\""));
}

}  // namespace
}  // namespace qrl
