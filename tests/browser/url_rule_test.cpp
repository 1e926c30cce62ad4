#include <gtest/gtest.h>

#include <string>

#include "browser/url_rule.h"
#include "browser/wide_text.h"

namespace qrl {
namespace {

TEST(NormalizeUrl, GivesTheUrlToLoad) {
  struct Case {
    std::u16string input;
    std::u16string expected;
  };
  const Case cases[] = {
      {u"C:\\pages\\a.html", u"file:///C:/pages/a.html"},
      {u"c:/pages/a.html", u"file:///c:/pages/a.html"},
      {u"FILE://server\\a", u"FILE://server/a"},
      {u"pages\\a.html", u"https://pages/a.html"},
      {u"", u"https://"},
      // No drive: too short, or the colon in the wrong place.
      {u"C:", u"https://C:"},
      {u"ab:\\x", u"https://ab:/x"},
      // The scheme test ignores case and the URL keeps it; backslashes go
      // everywhere, query and fragment included.
      {u"Http://a/?q=x\\y#f\\g", u"Http://a/?q=x/y#f/g"},
      // An almost-scheme is no scheme.
      {u"http:/a", u"https://http:/a"},
      {u"files://a", u"https://files://a"},
  };
  for (const Case& c : cases) 
    EXPECT_EQ(ToUtf8(NormalizeUrl(c.input)), ToUtf8(c.expected)) << ToUtf8(c.input);
}

TEST(WideText, ProperUtf8JoinsPairsReplacesLoneHalvesAndComesBack) {
  EXPECT_EQ(ToUtf8(u"\xD83Dx\xDE00"), "\xEF\xBF\xBDx\xEF\xBF\xBD");
  const std::u16string units = u"a\u00e9\u20ac\xD83D\xDE00z";
  EXPECT_EQ(ToUtf8(units), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z");
  EXPECT_EQ(FromUtf8(ToUtf8(units)), units);
}

TEST(WideText, BrokenUtf8BecomesReplacementCharacters) {
  struct Case {
    std::string bytes;
    std::u16string expected;
  };
  const Case cases[] = {
      {"\x80", u"\xFFFD"},                       // continuation without a lead
      {"\xC3x\xC3", u"\xFFFDx\xFFFD"},           // cut short
      {"\xC0\xAF", u"\xFFFD\xFFFD"},             // overlong two-byte form
      {"\xE0\x80\xAF", u"\xFFFD"},               // overlong three-byte form
      {"\xED\xA0\xBD", u"\xFFFD"},               // an encoded surrogate
      {"\xF4\x90\x80\x80", u"\xFFFD"},           // beyond the last code point
  };
  for (const Case& c : cases) EXPECT_EQ(FromUtf8(c.bytes), c.expected) << c.bytes;
}

}  // namespace
}  // namespace qrl
