// Memory for trees straight from the system. Chunks are all of one size and
// each aligned to its size, so that the chunk of any node is found from the
// node's address alone and a node needs no pointer to its tree. Blocks serve
// single allocations too large for a chunk, such as the copy of a page. Each
// system maps them its own way (posix/, windows/), with the hints it has for
// memory that is about to be filled at once.
#pragma once

#include <cstddef>

namespace qrl {

inline constexpr std::size_t kChunkBytes = std::size_t{256} * 1024;

// A new chunk of kChunkBytes at an address that is a multiple of
// kChunkBytes, or null when the system has no memory left.
void* MapChunk() noexcept;
void UnmapChunk(void* chunk) noexcept;

// A new block of `bytes`, or null.
void* MapBlock(std::size_t bytes) noexcept;
void UnmapBlock(void* block, std::size_t bytes) noexcept;

}  // namespace qrl
