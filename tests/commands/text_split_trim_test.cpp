#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commands/text_utils.h"

namespace qrl {
namespace {

using Pieces = std::vector<std::string>;

TEST(SplitWordsTest, CutsAtBlanksOnly) {
  const struct {
    std::string text;
    Pieces expected;
  } cases[] = {
      {"", {}},
      {"   ", {}},
      {"  a  b a ", {"a", "b", "a"}},
      {"one", {"one"}},
      {"a\tb", {"a\tb"}},
      {"a\nb c", {"a\nb", "c"}},
  };
  for (const auto& c : cases) EXPECT_EQ(SplitWords(c.text), c.expected) << '"' << c.text << '"';
}

struct FieldsCase {
  char delimiter;
  int keepEmpty;
  int fieldCount;
  std::string text;
  Pieces expected;
};

TEST(SplitFieldsTest, CutsTrimsAndSizes) {
  const FieldsCase cases[] = {
      {'*', 1, 0, "", {}},
      {'*', 1, 0, "abc", {"abc"}},
      {'*', 1, 0, "a*b", {"a", "b"}},
      {'*', 1, 0, "*abc", {"", "abc"}},
      {'*', 1, 0, "abc*", {"abc", ""}},
      {'*', 1, 0, "*abc*", {"", "abc", ""}},
      {'*', 1, 0, "*", {"", ""}},
      {'*', 1, 0, "a * b", {"a", "b"}},
      {'*', 1, 0, "a**b", {"a", "", "b"}},
      // A piece of one blank trims to nothing, a piece of two to one blank.
      {'*', 1, 0, " *  * \t", {"", " ", "\t"}},
      // Empty pieces are skipped before trimming, so a blank piece survives.
      {'*', 0, 0, "*a** *b*", {"a", "", "b", ""}},
      {'*', 0, 0, "**", {""}},
      // The blank as delimiter: the stand-in blank of a trailing delimiter
      // is itself a delimiter, and the line reader ends behind it.
      {' ', 1, 0, "a ", {"a", ""}},
      {'*', 1, 2, "a*b*c", {"a", "b"}},
      {'*', 1, 4, "a*b", {"a", "b", "", ""}},
      {'*', 0, 3, "a**b**c", {"a", "b", "c"}},
      {'*', 0, 2, "**a", {"a", ""}},
      {'*', 0, 2, "*a", {"a", ""}},
      {'*', 1, -1, "a*b*c", {"a", "b", "c"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SplitFields(c.delimiter, c.keepEmpty, c.fieldCount, c.text), c.expected)
        << '"' << c.text << "\" delimiter '" << c.delimiter << "' keepEmpty " << c.keepEmpty
        << " fieldCount " << c.fieldCount;
  }
}

TEST(TrimTextTest, KeepsLastByteAndHonoursSide) {
  const struct {
    std::string text;
    TrimSide side;
    std::string expected;
  } cases[] = {
      {"", TrimSide::Both, ""},
      {" ", TrimSide::Both, ""},
      {" ", TrimSide::Left, ""},
      {" ", static_cast<TrimSide>('X'), ""},
      {"   ", TrimSide::Both, " "},
      {"\t", TrimSide::Both, "\t"},
      {"\r\n", TrimSide::Both, "\n"},
      {"\r\n", TrimSide::Right, "\r"},
      {"  a  ", TrimSide::Left, "a  "},
      {"  a  ", TrimSide::Right, "  a"},
      {"\t\r\n a \n\r\t", TrimSide::Both, "a"},
      {"a \t b", TrimSide::Both, "a \t b"},
      {"\va\f", TrimSide::Both, "\va\f"},
      {"  a  ", static_cast<TrimSide>('X'), "  a  "},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(TrimText(c.text, c.side), c.expected)
        << '"' << c.text << "\" side " << static_cast<char>(c.side);
  }
}

}  // namespace
}  // namespace qrl
