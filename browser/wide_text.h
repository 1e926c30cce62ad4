// Conversions between the browser's UTF-16 and the bytes that the document,
// standard output and the operating system take.
#pragma once

#include <string>
#include <string_view>

namespace qrl {

// Each 16-bit unit on its own: below 0x80 one byte, below 0x800 two, else
// three. A surrogate pair thus becomes two three-byte sequences; nothing fails
// and no byte-order mark is written. This is how a captured page reaches the
// parser.
std::string EachUnitToUtf8(std::u16string_view text);

// Proper UTF-8, with surrogate pairs joined; a lone surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);

// UTF-8 to UTF-16; a byte that starts no valid sequence becomes U+FFFD.
std::u16string FromUtf8(std::string_view text);

}  // namespace qrl
