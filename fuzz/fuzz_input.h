// What the fuzz targets share: a failed check aborts, so that libFuzzer keeps
// the input that made it fail, and an input is cut into pieces front first.
#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace qrl::fuzz {

inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "fuzz check failed: %s\n", what);
  std::abort();
}

// Up to `length` bytes from the front of `rest`, which then no longer holds them.
inline std::string_view TakeFront(std::string_view& rest, std::size_t length) {
  const std::string_view part = rest.substr(0, length);
  rest.remove_prefix(part.size());
  return part;
}

}  // namespace qrl::fuzz
