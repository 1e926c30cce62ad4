#include <gtest/gtest.h>

#include <string>

#include "browser/captured_markup.h"
#include "commands/unicode_text.h"

namespace qrl {
namespace {

TEST(CapturedMarkup, GivesTheParserTheseBytes) {
  const struct Case {
    std::u16string json;
    std::string bytes;
  } cases[] = {
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
      // Without a first quote nothing is dropped.
      {u"a\"", "a\""},
      // Escapes at the very end.
      {u"\"a\\", "a"},
      {u"a\\u12", "au12"},
      {u"a\\uZZZZb", std::string("a\0b", 3)},
  };
  for (const Case& c : cases) EXPECT_EQ(CapturedMarkup(c.json), c.bytes) << Utf16ToUtf8(c.json);
  // Long runs cross the writer's chunks.
  std::u16string json = u"\"";
  std::string bytes;
  for (int i = 0; i < 5000; ++i) {
    json += u"<b class=\\\"x\\\">\u00e9t\\u00e9 \xD83D\xDE00</b>\\n";
    bytes += "<b class=\"x\">\xC3\xA9t\xC3\xA9 \xED\xA0\xBD\xED\xB8\x80</b>\n";
  }
  EXPECT_EQ(CapturedMarkup(json + u"\""), bytes);
}

// A string read straight as UTF-8 gives the bytes that its JSON form gives.
TEST(CapturedMarkup, StringsReadAsUtf8GiveTheSameBytes) {
  const std::string samples[] = {
      "",
      "<p>plain ASCII, long enough to cross a word or two</p>",
      "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 at the end \xF0\x9F\x98\x80",
      std::string(5000, 'x') + "\xF4\x8F\xBF\xBF" + std::string(3, 'y'),
  };
  for (const std::string& utf8 : samples) {
    const std::u16string json = u"\"" + Utf8ToUtf16(utf8) + u"\"";
    EXPECT_EQ(CapturedMarkupFromUtf8(utf8), CapturedMarkup(json)) << utf8;
  }
  // U+FFFD may stand for a lone surrogate, which only the JSON form keeps.
  EXPECT_EQ(CapturedMarkupFromUtf8("a\xEF\xBF\xBD"), std::nullopt);
  EXPECT_EQ(CapturedMarkupFromUtf8("\xEF\xBC\x81"), "\xEF\xBC\x81");
}

}  // namespace
}  // namespace qrl
