// Conversions between the UTF-8 of script strings and the UTF-16 of wide
// texts. Neither direction fails: what cannot be read becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace qrl {

std::u16string Utf8ToUtf16(std::string_view bytes);
std::string Utf16ToUtf8(std::u16string_view units);

}  // namespace qrl
