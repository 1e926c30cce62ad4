#include "commands/inner_markup.h"

namespace qrl {

// Text around the inner tags is not part of the cut. When there is no tag
// inside at all (`<p>hello</p>`), or nothing inside (`<p></p>`), the last ">"
// in front of the closing tag lies before the first "<" behind the opening
// one: the cut is then empty rather than a run to the end of the markup.
std::string CutInnerMarkup(std::string_view markup) {
  constexpr auto npos = std::string_view::npos;
  const auto openEnd = markup.find('>');
  const auto start = markup.find('<', openEnd == npos ? 0 : openEnd + 1);
  const auto lastOpen = markup.rfind('<');
  const auto end = (lastOpen == npos || lastOpen == 0) ? npos : markup.rfind('>', lastOpen - 1);
  if (start == npos || end == npos || end < start) return {};
  return std::string(markup.substr(start, end - start + 1));
}

}  // namespace qrl
