#include "html/arena.h"

#include <algorithm>
#include <cstdlib>

namespace qrl {

struct Arena::Block {
  Block* next;
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
    std::free(blocks_);
    blocks_ = next;
  }
}

void* Arena::Allocate(std::size_t bytes, std::size_t alignment) {
  auto cursor = reinterpret_cast<std::uintptr_t>(cursor_);
  std::uintptr_t start = AlignUp(cursor, alignment);
  if (cursor_ == nullptr || start + bytes > reinterpret_cast<std::uintptr_t>(limit_)) {
    AddBlock(bytes + alignment);
    start = AlignUp(reinterpret_cast<std::uintptr_t>(cursor_), alignment);
  }
  cursor_ = reinterpret_cast<char*>(start + bytes);
  return reinterpret_cast<void*>(start);
}

void Arena::AddBlock(std::size_t atLeast) {
  const std::size_t header = AlignUp(sizeof(Block), alignof(std::max_align_t));
  const std::size_t size = std::max(nextBlockSize_, header + atLeast);
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  auto* block = static_cast<Block*>(memory);
  block->next = blocks_;
  blocks_ = block;
  cursor_ = static_cast<char*>(memory) + header;
  limit_ = static_cast<char*>(memory) + size;
  nextBlockSize_ = std::min(nextBlockSize_ * 2, kLargestBlock);
}

void Arena::FinishBuilding() noexcept {
  const std::int64_t change = holdersAddedWhileBuilding_ - kBuilderHold;
  if (holders_.fetch_add(change, std::memory_order_acq_rel) + change == 0) delete this;
}

void Arena::DropHolder() noexcept {
  if (holders_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

}  // namespace qrl
