// Conversions between UTF-8 (script strings, standard output, the browser
// engine and the operating system) and UTF-16 (wide texts). Neither direction
// fails: what cannot be read becomes U+FFFD. A captured page has a conversion
// of its own, unit by unit, in CapturedMarkup.
#pragma once

#include <string>
#include <string_view>

namespace qrl {

std::u16string Utf8ToUtf16(std::string_view bytes);
std::string Utf16ToUtf8(std::u16string_view units);

}  // namespace qrl
