// Class lists: names cut at the space byte (0x20) only, so a TAB or a line
// break stays inside its name.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

// The distinct names of a class list, in byte order.
std::set<std::string, std::less<>> SplitClassNames(std::string_view classList);

// The same names as views into `classList`, for a query that splits its list
// once and then tests many elements.
std::vector<std::string_view> SplitClassNameViews(std::string_view classList);

// Whether the class list `have` bears every one of `wanted`; allocates nothing.
bool BearsAllClassNames(std::string_view have, const std::vector<std::string_view>& wanted);

}  // namespace qrl
