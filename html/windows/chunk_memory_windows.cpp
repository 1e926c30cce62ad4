// Aligned blocks from VirtualAlloc. Its addresses are only aligned to the
// allocation granularity (64 KiB), so a range twice the size is reserved to
// find an aligned address in it, released, and the block is then taken at
// that address; another thread may take the range in between, hence the
// retries.
#include <windows.h>

#include <cstdint>

#include "html/chunk_memory.h"

namespace qrl {

void* MapChunk() noexcept {
  constexpr int kAttempts = 16;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    void* probe = VirtualAlloc(nullptr, 2 * kChunkBytes, MEM_RESERVE, PAGE_NOACCESS);
    if (probe == nullptr) return nullptr;
    const auto start = reinterpret_cast<std::uintptr_t>(probe);
    const std::uintptr_t aligned = (start + kChunkBytes - 1) & ~(std::uintptr_t{kChunkBytes} - 1);
    VirtualFree(probe, 0, MEM_RELEASE);
    void* chunk =
        VirtualAlloc(reinterpret_cast<void*>(aligned), kChunkBytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (chunk != nullptr) return chunk;
  }
  return nullptr;
}

void UnmapChunk(void* chunk) noexcept { VirtualFree(chunk, 0, MEM_RELEASE); }

void* MapBlock(std::size_t bytes) noexcept {
  return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void UnmapBlock(void* block, std::size_t) noexcept { VirtualFree(block, 0, MEM_RELEASE); }

}  // namespace qrl
