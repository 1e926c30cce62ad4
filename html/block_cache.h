// Memory blocks of arenas that have died, kept for the trees that follow. A
// document is usually replaced by one of similar size, so its blocks serve
// the next parse without asking the system for fresh (zeroed) pages again.
// The cache holds a bounded amount; whatever exceeds it is freed.
#pragma once

#include <cstddef>

namespace qrl {

struct CachedBlock {
  void* memory = nullptr;
  std::size_t size = 0;
};

// A cached block of at least `atLeast` bytes (the smallest that fits), or an
// empty one when none fits.
CachedBlock TakeCachedBlock(std::size_t atLeast);

// Keeps the block for later, or frees it when the cache is full.
void GiveBlockBack(CachedBlock block);

}  // namespace qrl
