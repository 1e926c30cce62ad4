// Conversions between the browser's UTF-16 and the UTF-8 that standard
// output, WebKit and the operating system take. (A captured page has its own
// conversion: see CapturedMarkup.)
#pragma once

#include <string>
#include <string_view>

namespace qrl {

// Proper UTF-8, with surrogate pairs joined; a lone surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);

// UTF-8 to UTF-16; a byte that starts no valid sequence becomes U+FFFD.
std::u16string FromUtf8(std::string_view text);

}  // namespace qrl
