#include <gtest/gtest.h>

#include <string>

#include "browser/captured_markup.h"
#include "commands/unicode_text.h"

namespace qrl {
namespace {

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
  for (const Case& c : cases) EXPECT_EQ(CapturedMarkup(c.json), c.bytes) << Utf16ToUtf8(c.json);
}

// Long runs cross the writer's chunks.
TEST(CapturedMarkup, LongTextsComeThroughWhole) {
  std::u16string json = u"\"";
  std::string bytes;
  for (int i = 0; i < 5000; ++i) {
    json += u"<b class=\\\"x\\\">\u00e9t\\u00e9 \xD83D\xDE00</b>\\n";
    bytes += "<b class=\"x\">\xC3\xA9t\xC3\xA9 \xED\xA0\xBD\xED\xB8\x80</b>\n";
  }
  EXPECT_EQ(CapturedMarkup(json + u"\""), bytes);
}

}  // namespace
}  // namespace qrl
