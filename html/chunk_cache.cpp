#include "html/chunk_cache.h"

#include <mutex>
#include <vector>

#include "html/chunk_memory.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#define QRL_POISON(memory, size) ASAN_POISON_MEMORY_REGION(memory, size)
#define QRL_UNPOISON(memory, size) ASAN_UNPOISON_MEMORY_REGION(memory, size)
#else
#define QRL_POISON(memory, size) static_cast<void>(0)
#define QRL_UNPOISON(memory, size) static_cast<void>(0)
#endif

namespace qrl {

namespace {

constexpr std::size_t kCacheBytes = std::size_t{64} * 1024 * 1024;
constexpr std::size_t kCachedChunks = kCacheBytes / kChunkBytes;
// A few blocks: the copies of the last pages, which the next ones of about
// their size reuse.
constexpr std::size_t kCachedBlocks = 4;

struct Cache {
  std::mutex lock;
  std::vector<void*> chunks;
  std::vector<MappedBlock> blocks;
  std::size_t bytes = 0;
};

// Never destroyed: trees that live until the process ends give their memory
// back after static destruction has begun. The lists never grow past what is
// reserved here, so keeping memory never allocates.
Cache& TheCache() {
  static Cache* const cache = [] {
    auto* made = new Cache();
    made->chunks.reserve(kCachedChunks);
    made->blocks.reserve(kCachedBlocks);
    return made;
  }();
  return *cache;
}

// The smallest cached block that holds `bytes` without being more than twice
// as large, which would keep memory out of use for a long time.
std::size_t BestFit(const std::vector<MappedBlock>& blocks, std::size_t bytes) {
  std::size_t best = blocks.size();
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    const std::size_t size = blocks[i].bytes;
    if (size < bytes || size / 2 > bytes) continue;
    if (best == blocks.size() || size < blocks[best].bytes) best = i;
  }
  return best;
}

}  // namespace

void* TakeChunk() noexcept {
  Cache& cache = TheCache();
  {
    const std::lock_guard<std::mutex> guard(cache.lock);
    if (!cache.chunks.empty()) {
      void* chunk = cache.chunks.back();
      cache.chunks.pop_back();
      cache.bytes -= kChunkBytes;
      QRL_UNPOISON(chunk, kChunkBytes);
      return chunk;
    }
  }
  return MapChunk();
}

void GiveChunkBack(void* chunk) noexcept {
  Cache& cache = TheCache();
  {
    const std::lock_guard<std::mutex> guard(cache.lock);
    if (cache.bytes + kChunkBytes <= kCacheBytes) {
      cache.chunks.push_back(chunk);
      cache.bytes += kChunkBytes;
      // A sanitized build still reports any use of a tree that has died.
      QRL_POISON(chunk, kChunkBytes);
      return;
    }
  }
  UnmapChunk(chunk);
}

MappedBlock TakeBlock(std::size_t bytes) noexcept {
  Cache& cache = TheCache();
  {
    const std::lock_guard<std::mutex> guard(cache.lock);
    const std::size_t best = BestFit(cache.blocks, bytes);
    if (best != cache.blocks.size()) {
      const MappedBlock taken = cache.blocks[best];
      cache.blocks[best] = cache.blocks.back();
      cache.blocks.pop_back();
      cache.bytes -= taken.bytes;
      QRL_UNPOISON(taken.memory, taken.bytes);
      return taken;
    }
  }
  MappedBlock made{MapBlock(bytes), bytes};
  if (made.memory == nullptr) made.bytes = 0;
  return made;
}

void GiveBlockBack(MappedBlock block) noexcept {
  Cache& cache = TheCache();
  {
    const std::lock_guard<std::mutex> guard(cache.lock);
    if (cache.blocks.size() < kCachedBlocks && cache.bytes + block.bytes <= kCacheBytes) {
      cache.blocks.push_back(block);
      cache.bytes += block.bytes;
      QRL_POISON(block.memory, block.bytes);
      return;
    }
  }
  UnmapBlock(block.memory, block.bytes);
}

}  // namespace qrl
