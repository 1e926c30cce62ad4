#include <gtest/gtest.h>

#include <string>

#include "browser/url_rule.h"
#include "browser/wide_text.h"

namespace qrl {
namespace {

struct UrlCase {
  std::u16string input;
  std::u16string expected;
};

class NormalizeUrlTest : public ::testing::TestWithParam<UrlCase> {};

TEST_P(NormalizeUrlTest, GivesTheUrlToLoad) {
  EXPECT_EQ(ToUtf8(NormalizeUrl(GetParam().input)), ToUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    Table, NormalizeUrlTest,
    ::testing::Values(
        UrlCase{u"C:\\pages\\a.html", u"file:///C:/pages/a.html"},
        UrlCase{u"c:/pages/a.html", u"file:///c:/pages/a.html"},
        UrlCase{u"FILE://server\\a", u"FILE://server/a"},
        UrlCase{u"pages\\a.html", u"https://pages/a.html"},
        UrlCase{u"about:blank", u"https://about:blank"},
        UrlCase{u"edge://version/", u"https://edge://version/"},
        UrlCase{u"ab", u"https://ab"},
        UrlCase{u"a", u"https://a"},
        // The default start URL of a browser.
        UrlCase{u"https::edge://version/", u"https://https::edge://version/"},
        // No drive: too short, or the colon in the wrong place.
        UrlCase{u"C:", u"https://C:"},
        UrlCase{u"ab:\\x", u"https://ab:/x"},
        UrlCase{u":\\", u"https://:/"},
        // The scheme test ignores case and the URL keeps it.
        UrlCase{u"HTTPS://A", u"HTTPS://A"},
        UrlCase{u"Http://a\\b", u"Http://a/b"},
        // Backslashes go everywhere, query and fragment included.
        UrlCase{u"http://a/?q=x\\y#f\\g", u"http://a/?q=x/y#f/g"},
        // An almost-scheme is no scheme.
        UrlCase{u"http:/a", u"https://http:/a"},
        UrlCase{u"files://a", u"https://files://a"},
        // Nothing at all is a short text like any other.
        UrlCase{u"", u"https://"}));

TEST(WideText, ProperUtf8JoinsPairsAndReplacesLoneHalves) {
  EXPECT_EQ(ToUtf8(u"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(ToUtf8(u"\xD83Dx"), "\xEF\xBF\xBDx");
  EXPECT_EQ(ToUtf8(u"x\xDE00"), "x\xEF\xBF\xBD");
}

TEST(WideText, Utf8ComesBackAsTheSameUnits) {
  const std::u16string units = u"a\u00e9\u20ac\xD83D\xDE00z";
  EXPECT_EQ(FromUtf8(ToUtf8(units)), units);
}

TEST(WideText, BrokenUtf8BecomesReplacementCharacters) {
  struct Case {
    std::string bytes;
    std::u16string expected;
  };
  const Case cases[] = {
      {"\x80", u"\xFFFD"},                       // continuation without a lead
      {"\xC3", u"\xFFFD"},                       // cut short at the end
      {"\xC3x", u"\xFFFDx"},                     // cut short before a plain byte
      {"\xC0\xAF", u"\xFFFD\xFFFD"},             // overlong two-byte form
      {"\xE0\x80\xAF", u"\xFFFD"},               // overlong three-byte form
      {"\xED\xA0\xBD", u"\xFFFD"},               // an encoded surrogate
      {"\xF4\x90\x80\x80", u"\xFFFD"},           // beyond the last code point
  };
  for (const Case& c : cases) EXPECT_EQ(FromUtf8(c.bytes), c.expected) << c.bytes;
}

}  // namespace
}  // namespace qrl
