// Chunks and blocks of trees that have died, kept for the trees that follow.
// A document is usually replaced by one of similar size, so its memory serves
// the next parse without asking the system for fresh pages again. The cache
// holds a bounded amount; whatever exceeds it goes back to the system.
#pragma once

#include <cstddef>

namespace qrl {

// A chunk of kChunkBytes, cached or new; null when the system has none left.
void* TakeChunk() noexcept;
// Keeps the chunk for later, or unmaps it when the cache is full.
void GiveChunkBack(void* chunk) noexcept;

struct MappedBlock {
  void* memory = nullptr;
  std::size_t bytes = 0;  // what the block holds, at least what was asked for
};

// A block of at least `bytes`, cached or new; empty when the system has none.
MappedBlock TakeBlock(std::size_t bytes) noexcept;
// Keeps the block for later, or unmaps it when the cache is full.
void GiveBlockBack(MappedBlock block) noexcept;

}  // namespace qrl
