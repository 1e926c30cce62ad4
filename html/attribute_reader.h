// Reading the raw text of a start tag into attributes, in place.
#pragma once

#include <cstdint>
#include <vector>

#include "html/attribute_map.h"

namespace qrl {

// Fills `found` (emptied first) with the attributes of `raw`, sorted by name
// in byte order, the last value winning among equal names. Names and values
// become views into `raw`, which is rewritten where a name loses bytes and
// where a string needs its terminating NUL; raw[size] must be writable.
void ReadAttributes(char* raw, std::uint32_t size, std::vector<Attribute>& found);

}  // namespace qrl
