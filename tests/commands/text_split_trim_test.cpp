#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commands/text_utils.h"

namespace qrl {
namespace {

using Pieces = std::vector<std::string>;

TEST(SplitWordsTest, CutsAtBlanksOnly) {
  EXPECT_EQ(SplitWords("   "), Pieces{});
  EXPECT_EQ(SplitWords("  a  b a "), (Pieces{"a", "b", "a"}));
  EXPECT_EQ(SplitWords("a\tb c\n"), (Pieces{"a\tb", "c\n"}));
}

TEST(SplitFieldsTest, CutsTrimsAndSizes) {
  const struct {
    char delimiter;
    int keepEmpty, fieldCount;
    std::string text;
    Pieces expected;
  } cases[] = {
      {'*', 1, 0, "", {}},
      {'*', 1, 0, "a*b", {"a", "b"}},
      {'*', 1, 0, "*abc*", {"", "abc", ""}},
      {'*', 1, 0, "*", {"", ""}},
      {'*', 1, 0, "a * b", {"a", "b"}},
      {'*', 1, 0, "a**b", {"a", "", "b"}},
      {'*', 1, 0, " *  * \t", {"", " ", "\t"}},
      // Empty pieces are skipped before trimming, so a blank piece survives.
      {'*', 0, 0, "*a** *b*", {"a", "", "b", ""}},
      // With the blank as delimiter, the blank standing in for a trailing
      // delimiter is itself one, and nothing follows it.
      {' ', 1, 0, "a ", {"a", ""}},
      {'*', 1, 2, "a*b*c", {"a", "b"}},
      {'*', 1, 4, "a*b", {"a", "b", "", ""}},
      {'*', 0, 2, "*a", {"a", ""}},
      {'*', 1, -1, "a*b*c", {"a", "b", "c"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SplitFields(c.delimiter, c.keepEmpty, c.fieldCount, c.text), c.expected)
        << '"' << c.text << "\" '" << c.delimiter << "' " << c.keepEmpty << ' ' << c.fieldCount;
  }
}

TEST(TrimTextTest, KeepsLastByteAndHonoursSide) {
  const TrimSide unknown = static_cast<TrimSide>('X');
  const struct {
    std::string text;
    TrimSide side;
    std::string expected;
  } cases[] = {
      {" ", TrimSide::Left, ""},
      {" ", unknown, ""},
      {"   ", TrimSide::Both, " "},
      {"\t", TrimSide::Both, "\t"},
      {"\r\n", TrimSide::Right, "\r"},
      {"  a  ", TrimSide::Left, "a  "},
      {"  a  ", TrimSide::Right, "  a"},
      {"\t\r\n a \n\r\t", TrimSide::Both, "a"},
      {"\va b\f", TrimSide::Both, "\va b\f"},
      {"  a  ", unknown, "  a  "},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(TrimText(c.text, c.side), c.expected) << '"' << c.text << "\" " << char(c.side);
  }
}

}  // namespace
}  // namespace qrl
