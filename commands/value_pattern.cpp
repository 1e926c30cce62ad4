#include "commands/value_pattern.h"

#include <vector>

#include "commands/text_utils.h"

namespace qrl {

ValuePattern ValuePattern::Make(std::string_view pattern, bool starFlag) {
  ValuePattern made;
  const std::vector<std::string> pieces = SplitFields('*', 1, 0, pattern);
  made.pieceCount = pieces.size();
  made.starMode = made.pieceCount == 1 ? false : starFlag;
  made.literal = ReplaceAll(pattern, "*", "");
  if (made.pieceCount == 2) {
    if (TrimText(pieces[0], TrimSide::Both).empty())
      made.anchor = Anchor::End;
    else if (TrimText(pieces[1], TrimSide::Both).empty())
      made.anchor = Anchor::Start;
  }
  return made;
}

bool ValuePattern::Selects(std::string_view value) const {
  if (!starMode) {
    if (value == literal || (emptySelectsAll && literal.empty())) return true;
    // Decoding only changes a value that holds a reference.
    return value.find('&') != std::string_view::npos && DecodeEntities(value) == literal;
  }
  if (value.find(literal) == std::string_view::npos) return false;
  if (anchor == Anchor::End && !value.ends_with(literal)) return false;
  if (anchor == Anchor::Start && !value.starts_with(literal)) return false;
  if (pieceCount == 3 && TrimText(value, TrimSide::Both).find(literal) == std::string::npos)
    return false;
  return true;
}

}  // namespace qrl
