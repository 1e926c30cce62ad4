#include <gtest/gtest.h>

#include <string>

#include "browser/url_rule.h"
#include "commands/unicode_text.h"

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
  };
  for (const Case& c : cases)
    EXPECT_EQ(Utf16ToUtf8(NormalizeUrl(c.input)), Utf16ToUtf8(c.expected)) << Utf16ToUtf8(c.input);
}

}  // namespace
}  // namespace qrl
