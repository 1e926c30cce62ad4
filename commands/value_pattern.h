// The small search language of the link and image commands. A star is no
// wildcard of its own: it is removed from the text, and only says at which
// end of the value the rest must stand. Without a star, or with the star flag
// off, a value must equal the text (directly or after its character
// references are decoded).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qrl {

struct ValuePattern {
  enum class Anchor { None, End, Start };

  std::string literal;         // the pattern without its stars
  std::size_t pieceCount = 0;  // stars + 1, or 0 for an empty pattern
  Anchor anchor = Anchor::None;  // End: "*abc"; Start: "abc*"
  bool starMode = false;       // containment rules instead of equality
  bool emptySelectsAll = false;  // an empty literal makes no demand

  static ValuePattern Make(std::string_view pattern, bool starFlag);

  // `value` is trimmed at both ends by the caller.
  bool Selects(std::string_view value) const;
};

// What a search by value looks for: elements of one tag whose value (an
// attribute, or the visible text) the pattern selects.
struct ValueSearch {
  std::string tagName;
  std::string attributeName;
  bool byText = false;
  ValuePattern pattern;
};

}  // namespace qrl
