// Reading the raw text of a start tag into attributes, in place.
#pragma once

#include <cstdint>
#include <cstddef>

#include "html/attribute_map.h"

namespace qrl {

// The most attributes that a raw text of `size` bytes can hold: each one but
// the last takes at least two bytes (a name and the blank behind it).
constexpr std::size_t MostAttributesIn(std::uint32_t size) { return size / 2 + 1; }

// Writes the attributes of `raw` to `found` (room for MostAttributesIn(size))
// and returns their number. They come sorted by name in byte order, the last
// value winning among equal names. Names and values become views into `raw`,
// which is rewritten where a name loses bytes and where a string needs its
// terminating NUL; raw[size] must be writable.
std::uint32_t ReadAttributes(char* raw, std::uint32_t size, Attribute* found);

}  // namespace qrl
