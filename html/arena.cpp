#include "html/arena.h"

#include <algorithm>
#include <cstdlib>

#include "html/block_cache.h"

namespace qrl {

struct Arena::Block {
  Block* next;
  std::size_t size;
};

namespace {

constexpr std::size_t kLargestBlock = 8 * 1024 * 1024;

std::size_t AlignUp(std::size_t value, std::size_t alignment) {
  return (value + alignment - 1) & ~(alignment - 1);
}

}  // namespace

Arena* Arena::Create() { return new Arena(); }

Arena::~Arena() {
  while (blocks_ != nullptr) {
    Block* next = blocks_->next;
    GiveBlockBack({blocks_, blocks_->size});
    blocks_ = next;
  }
}

void* Arena::AllocateInNewBlock(std::size_t bytes, std::size_t alignment) {
  const std::size_t header = AlignUp(sizeof(Block), alignof(std::max_align_t));
  CachedBlock fresh = TakeCachedBlock(header + bytes + alignment);
  if (fresh.memory == nullptr) {
    fresh.size = std::max(nextBlockSize_, header + bytes + alignment);
    fresh.memory = std::malloc(fresh.size);
    if (fresh.memory == nullptr) throw std::bad_alloc();
  }
  void* const memory = fresh.memory;
  const std::size_t size = fresh.size;
  auto* block = static_cast<Block*>(memory);
  block->size = size;
  block->next = blocks_;
  blocks_ = block;
  limit_ = static_cast<char*>(memory) + size;
  nextBlockSize_ = std::min(nextBlockSize_ * 2, kLargestBlock);
  const std::uintptr_t start = AlignUp(reinterpret_cast<std::uintptr_t>(memory) + header, alignment);
  cursor_ = reinterpret_cast<char*>(start + bytes);
  return reinterpret_cast<void*>(start);
}

void Arena::FinishBuilding() noexcept {
  const std::int64_t change = holdersAddedWhileBuilding_ - kBuilderHold;
  if (holders_.fetch_add(change, std::memory_order_acq_rel) + change == 0) Destroy();
}

void Arena::Destroy() noexcept { delete this; }

}  // namespace qrl
