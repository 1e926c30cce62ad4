#include "html/arena.h"

#include <algorithm>
#include <cstdlib>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define QRL_HAVE_SINGLE_THREADED_FLAG 1
#endif

namespace qrl {

struct Arena::Block {
  Block* next;
};

namespace {

constexpr std::size_t kLargestBlock = 8 * 1024 * 1024;

bool ProcessIsSingleThreaded() {
#if QRL_HAVE_SINGLE_THREADED_FLAG
  return __libc_single_threaded != 0;
#else
  return false;
#endif
}

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

void* Arena::AllocateInNewBlock(std::size_t bytes, std::size_t alignment) {
  const std::size_t header = AlignUp(sizeof(Block), alignof(std::max_align_t));
  const std::size_t size = std::max(nextBlockSize_, header + bytes + alignment);
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  auto* block = static_cast<Block*>(memory);
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
  if (holders_.fetch_add(change, std::memory_order_acq_rel) + change == 0) delete this;
}

void Arena::DropHolder() noexcept {
  // While the process has a single thread, nothing can race with this count,
  // and a plain update spares an atomic operation per released node.
  if (ProcessIsSingleThreaded()) {
    const std::int64_t left = holders_.load(std::memory_order_relaxed) - 1;
    holders_.store(left, std::memory_order_relaxed);
    if (left == 0) delete this;
    return;
  }
  if (holders_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

}  // namespace qrl
