#include <gtest/gtest.h>

#include <string>

#include "html/class_names.h"
#include "html/html_element.h"
#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

std::string Written(const AttributeMap& attributes) {
  std::string out;
  for (const auto& [name, value] : attributes) out.append("[").append(name).append("=").append(value).append("]");
  return out;
}

struct AttributeCase {
  std::string raw;
  std::string attributes;
  int warnings;
};

class AttributeReaderTest : public ::testing::TestWithParam<AttributeCase> {};

// The same raw text read on its own and inside a parsed tag must agree.
TEST_P(AttributeReaderTest, ReadsRawTagText) {
  const AttributeCase& c = GetParam();
  HtmlElement element;
  ::testing::internal::CaptureStderr();
  element.ParseAttributes(c.raw);
  const std::string warnings = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(Written(element.attributes), c.attributes);
  std::size_t lines = 0;
  for (std::size_t at = warnings.find("WARN : attribute unexpected "); at != std::string::npos;
       at = warnings.find("WARN : attribute unexpected ", at + 1))
    ++lines;
  EXPECT_EQ(lines, static_cast<std::size_t>(c.warnings));

  const ParseOutcome parsed = ParseCapturingWarnings("<e " + c.raw + "></e>");
  ASSERT_EQ(parsed.document->root->children.size(), 1u);
  EXPECT_EQ(Written(parsed.document->root->children[0]->attributes), c.attributes);
  EXPECT_EQ(parsed.warnings, warnings);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, AttributeReaderTest,
    ::testing::Values(AttributeCase{"b=1 b=2", "[b=2]", 0}, AttributeCase{"c d=e", "[c=][d=e]", 0},
                      AttributeCase{"f=\"g h\" i='j'", "[f=g h][i=j]", 0}, AttributeCase{"K=L k=l", "[K=L][k=l]", 0},
                      AttributeCase{"t='say \"hi\"'", "[t=say \"hi\"]", 0},
                      AttributeCase{"b=\" c \"", "[b= c ]", 0}, AttributeCase{"b=c=d e", "[b=c=d][e=]", 0},
                      AttributeCase{"b=\"c\"d=\"e\"", "[b=c][d=e]", 0}, AttributeCase{"b= c", "[b=][c=]", 0},
                      AttributeCase{"b =c", "[b=]", 0}, AttributeCase{"= b", "[b=]", 0},
                      AttributeCase{"=\"v\"", "[=v]", 0}, AttributeCase{"=v", "", 0},
                      AttributeCase{"\"x\" b", "[b=][x=]", 2}, AttributeCase{"b=\"open", "[b=open]", 0},
                      AttributeCase{"b\nc=d\te=f", "[bc=d][e=f]", 0},
                      AttributeCase{"a\"b\"c=1 'd", "[abc=1][d=]", 3},
                      AttributeCase{"z y x w v u t s r q p o n m l k j i h g", "[g=][h=][i=][j=][k=][l=][m=][n=][o=][p=][q=][r=][s=][t=][u=][v=][w=][x=][y=][z=]", 0},
                      AttributeCase{"b=2 a=1 b=3 a=4", "[a=4][b=3]", 0},
                      AttributeCase{"\xC3\xA9=1 a=2 Z=3", "[Z=3][a=2][\xC3\xA9=1]", 0}));

TEST(AttributeReaderTest, TrimsSpacesOnlyAroundText) {
  HtmlElement element;
  const std::string text = "  \tx y\n  ";
  element.text = NodeString(text.c_str(), static_cast<std::uint32_t>(text.size()));
  element.ParseAttributes("");
  EXPECT_EQ(std::string_view(element.text), "\tx y\n");
  EXPECT_STREQ(element.text.c_str(), "\tx y\n");
}

TEST(AttributeReaderTest, FindsOnlyExactNames) {
  HtmlElement element;
  element.ParseAttributes("id=a ID=b");
  EXPECT_EQ(element.GetAttribute("id"), "a");
  EXPECT_EQ(element.GetAttribute("ID"), "b");
  EXPECT_EQ(element.GetAttribute("Id"), "");
  EXPECT_FALSE(element.attributes.contains("i"));
  EXPECT_EQ(element.attributes.size(), 2u);
}

TEST(ClassNamesTest, SplitsAtSpacesOnly) {
  using Names = std::set<std::string, std::less<>>;
  EXPECT_EQ(SplitClassNames("b a  b"), (Names{"a", "b"}));
  EXPECT_EQ(SplitClassNames(""), Names{});
  EXPECT_EQ(SplitClassNames("   "), Names{});
  EXPECT_EQ(SplitClassNames("a\tb"), Names{"a\tb"});
  EXPECT_EQ(SplitClassNames(" x\ny "), Names{"x\ny"});
}

}  // namespace
}  // namespace qrl::testing
