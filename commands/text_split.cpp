// Splitting of class lists (SplitWords) and of delimited fields (SplitFields).
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "commands/text_utils.h"

namespace qrl {

// Only the blank separates: a class list keeps a tab or a line break inside
// its name, exactly as the document holds it.
std::vector<std::string> SplitWords(std::string_view text) {
  std::vector<std::string> words;
  std::size_t at = 0;
  while (true) {
    const std::size_t start = text.find_first_not_of(' ', at);
    if (start == std::string_view::npos) break;
    std::size_t end = text.find(' ', start);
    if (end == std::string_view::npos) end = text.size();
    words.emplace_back(text.substr(start, end - start));
    at = end;
  }
  return words;
}

namespace {

// Cuts the way a line reader does: each delimiter ends a piece (so two in a
// row give an empty one), and the rest behind the last delimiter is a piece
// only when it isn't empty.
std::vector<std::string_view> CutAtDelimiter(std::string_view text, char delimiter) {
  std::vector<std::string_view> pieces;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find(delimiter, start);
    if (end == std::string_view::npos) end = text.size();
    pieces.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return pieces;
}

}  // namespace

std::vector<std::string> SplitFields(char delimiter, int keepEmpty, int fieldCount,
                                     std::string_view text) {
  // A trailing delimiter announces one more, empty field. The line reader
  // would drop it, so a blank stands in for it and the trim empties it.
  std::string source(text);
  if (!source.empty() && source.back() == delimiter) source.push_back(' ');

  std::vector<std::string> fields;
  for (std::string_view piece : CutAtDelimiter(source, delimiter)) {
    if (keepEmpty != 1 && piece.empty()) continue;
    fields.push_back(TrimText(piece, TrimSide::Both));
  }
  // A caller that asks for a fixed number of fields always gets exactly that
  // many, whether or not empty pieces were skipped on the way.
  if (fieldCount > 0) fields.resize(static_cast<std::size_t>(fieldCount));
  return fields;
}

}  // namespace qrl
