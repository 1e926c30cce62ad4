// The bytes that the parser gets from the answer of the page's markup
// script.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qrl {

// The JSON escapes are undone (as UnescapeJsonText does), a text that then
// begins with a double quote loses its first and its last unit, and each
// unit becomes UTF-8 on its own (as EachUnitToUtf8 does). Done in one pass
// without the unescaped text in between, since a page's answer runs to
// megabytes.
std::string CapturedMarkup(std::u16string_view resultJson);

// The same bytes for an answer that is a string value, from that string's
// UTF-8: a character beyond the basic plane becomes its two UTF-16 units,
// three bytes each, as the capture writes every unit on its own. Nothing
// when the text holds U+FFFD, which a browser also writes for a lone
// surrogate that the capture keeps as it is; the JSON answer decides then.
std::optional<std::string> CapturedMarkupFromUtf8(std::string_view utf8);

}  // namespace qrl
