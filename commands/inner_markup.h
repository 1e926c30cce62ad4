#pragma once

#include <string>
#include <string_view>

namespace qrl {

// Cuts the inner markup out of an element's markup by its angle brackets
// alone: from the first tag behind the opening one to the end of the last
// tag in front of the closing one.
std::string CutInnerMarkup(std::string_view markup);

}  // namespace qrl
