#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

std::string Written(const AttributeMap& attributes) {
  std::string out;
  for (const auto& [name, value] : attributes) out.append("[").append(name).append("=").append(value).append("]");
  return out;
}

// The same raw text read on its own and inside a parsed tag must agree, and
// every name read must be found again (past eight names by a binary search).
TEST(AttributeReaderTest, ReadsRawTagText) {
  const struct {
    std::string raw, attributes;
    int warnings;
  } cases[] = {
      {"c d=e", "[c=][d=e]", 0}, {"f=\"g h\" i='j' t='say \"hi\"'", "[f=g h][i=j][t=say \"hi\"]", 0},
      {"b=c=d e", "[b=c=d][e=]", 0}, {"b=\"c\"d=\"e\"", "[b=c][d=e]", 0}, {"b= c", "[b=][c=]", 0},
      {"=\"v\"", "[=v]", 0}, {"=v", "", 0}, {"b=\"open", "[b=open]", 0}, {"b\nc=d\te=f", "[bc=d][e=f]", 0},
      {"a\"b\"c=1 'd", "[abc=1][d=]", 3},
      {"z y x w v u t s r q p o n m l k j i h g", "[g=][h=][i=][j=][k=][l=][m=][n=][o=][p=][q=][r=][s=][t=][u=][v=][w=][x=][y=][z=]", 0},
      {"b=2 a=1 b=3 a=4", "[a=4][b=3]", 0}, {"\xC3\xA9=1 a=2 Z=3", "[Z=3][a=2][\xC3\xA9=1]", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.raw);
    ::testing::internal::CaptureStderr();
    const ElementRef element = HtmlElement::FromStartTag(c.raw);
    const std::string warnings = ::testing::internal::GetCapturedStderr();
    const AttributeMap attributes = element->attributes();
    EXPECT_EQ(Written(attributes), c.attributes);
    EXPECT_EQ(std::count(warnings.begin(), warnings.end(), '\n'), c.warnings);
    EXPECT_EQ(warnings.rfind("WARN : attribute unexpected ", 0), c.warnings ? 0u : std::string::npos);
    for (const Attribute& entry : attributes) EXPECT_EQ(attributes.find(entry.first), &entry);
    EXPECT_FALSE(attributes.contains("h0"));  // sorts between two of the many names

    const ParseOutcome parsed = ParseCapturingWarnings("<e " + c.raw + "></e>");
    ASSERT_EQ(parsed.document->root->children().size(), 1u);
    EXPECT_EQ(Written(parsed.document->root->children()[0]->attributes()), c.attributes);
    EXPECT_EQ(parsed.warnings, warnings);
  }
}

// Outside a parse the reader also trims the blanks, and only those, around
// the node's own text.
TEST(AttributeReaderTest, TrimsOwnText) {
  const ElementRef element = HtmlElement::FromStartTag("id=a", "  \tx y\n  ");
  EXPECT_STREQ(element->text().c_str(), "\tx y\n");
  EXPECT_EQ(element->text().size(), 5u);
  EXPECT_EQ(element->GetAttribute("id"), "a");
}

}  // namespace
}  // namespace qrl::testing
