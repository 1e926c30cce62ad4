// The three warning lines of the engine. Each goes to the standard error
// stream as one write of one whole line, flushed at once. They are rare, so
// they stay out of line and away from the hot paths of the parser.
#pragma once

#include <string_view>

namespace qrl {

[[gnu::cold]] void WarnElementNotClosed(std::string_view elementName);
[[gnu::cold]] void WarnUnexpectedClose(std::string_view closingName, std::string_view elementName);
[[gnu::cold]] void WarnUnexpectedAttributeQuote(char quote);

}  // namespace qrl
