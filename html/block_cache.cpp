#include "html/block_cache.h"

#include <cstdlib>
#include <mutex>
#include <vector>

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

constexpr std::size_t kCacheLimit = 64 * 1024 * 1024;

struct BlockCache {
  std::mutex lock;
  std::vector<CachedBlock> blocks;
  std::size_t bytes = 0;
};

// Never destroyed: trees that live until the process ends give their blocks
// back after static destruction has begun.
BlockCache& Cache() {
  static BlockCache* const cache = new BlockCache();
  return *cache;
}

}  // namespace

CachedBlock TakeCachedBlock(std::size_t atLeast) {
  BlockCache& cache = Cache();
  const std::lock_guard<std::mutex> guard(cache.lock);
  std::size_t best = cache.blocks.size();
  for (std::size_t i = 0; i < cache.blocks.size(); ++i) {
    const std::size_t size = cache.blocks[i].size;
    if (size >= atLeast && (best == cache.blocks.size() || size < cache.blocks[best].size)) best = i;
  }
  if (best == cache.blocks.size()) return {};
  const CachedBlock taken = cache.blocks[best];
  cache.blocks[best] = cache.blocks.back();
  cache.blocks.pop_back();
  cache.bytes -= taken.size;
  QRL_UNPOISON(taken.memory, taken.size);
  return taken;
}

void GiveBlockBack(CachedBlock block) {
  BlockCache& cache = Cache();
  {
    const std::lock_guard<std::mutex> guard(cache.lock);
    if (cache.bytes + block.size <= kCacheLimit) {
      cache.blocks.push_back(block);
      cache.bytes += block.size;
      // A sanitized build still reports any use of a tree that has died.
      QRL_POISON(block.memory, block.size);
      return;
    }
  }
  std::free(block.memory);
}

}  // namespace qrl
