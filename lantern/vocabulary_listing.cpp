#include "lantern/vocabulary_listing.h"

#include <cstdio>

namespace qrl {

namespace {

const char* TypeWord(unsigned type) {
  switch (type) {
    case ArgInteger:
      return "int";
    case ArgText:
      return "text";
    case ArgWideText:
      return "wide";
    default:
      return "?";
  }
}

const char* KindWord(const VocabularyRow& row) {
  if (row.isFunction()) return "function";
  if (row.isConstant()) return "constant";
  return "unknown";
}

}  // namespace

std::string DescribeArguments(const VocabularyRow& row) {
  std::string text;
  for (unsigned position = 0; position < row.maxArgs(); ++position) {
    if (!text.empty()) text += ' ';
    const bool optional = position >= row.requiredArgs();
    if (optional) text += '[';
    text += TypeWord(row.argType(position));
    if (optional) text += ']';
  }
  return text.empty() ? "-" : text;
}

std::string FormatVocabulary(const std::vector<VocabularyRow>& rows) {
  std::string out = "row  kind      name                      req  opt  arguments / value\n";
  char line[160];
  for (const VocabularyRow& row : rows) {
    if (row.isFunction()) {
      std::snprintf(line, sizeof line, "%3d  %-8s  %-24s  %3u  %3u  %s\n", row.index, KindWord(row),
                    row.name.c_str(), row.requiredArgs(), row.optionalArgs(),
                    DescribeArguments(row).c_str());
    } else {
      std::snprintf(line, sizeof line, "%3d  %-8s  %-24s            %d\n", row.index,
                    KindWord(row), row.name.c_str(), row.constantValue());
    }
    out += line;
  }
  return out;
}

}  // namespace qrl
