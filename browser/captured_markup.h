// The bytes that the parser gets from the answer of the page's markup
// script.
#pragma once

#include <string>
#include <string_view>

namespace qrl {

// The JSON escapes are undone (as UnescapeJsonText does), a text that then
// begins with a double quote loses its first and its last unit, and each
// unit becomes UTF-8 on its own (as EachUnitToUtf8 does). Done in one pass
// without the unescaped text in between, since a page's answer runs to
// megabytes.
std::string CapturedMarkup(std::u16string_view resultJson);

}  // namespace qrl
