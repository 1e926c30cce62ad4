// Memory of one parsed tree. A parse takes everything it keeps from one arena:
// a copy of the input (which the strings of the tree point into), the nodes,
// the child arrays and the attribute arrays. Nothing is freed on its own; the
// arena gives all of its memory back at once when the last node that was
// allocated from it has gone, so a node that outlives its tree keeps its
// bytes. Each node's control block counts as one holder of the arena.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define QRL_HAVE_SINGLE_THREADED_FLAG 1
#endif

namespace qrl {

class Arena {
 public:
  // The builder of a tree holds the new arena until FinishBuilding.
  static Arena* Create();

  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  void* Allocate(std::size_t bytes, std::size_t alignment) {
    const std::size_t padding = (alignment - reinterpret_cast<std::uintptr_t>(cursor_) % alignment) % alignment;
    if (bytes + padding > static_cast<std::size_t>(limit_ - cursor_)) return AllocateInNewBlock(bytes, alignment);
    void* start = cursor_ + padding;
    cursor_ += padding + bytes;
    return start;
  }
  template <typename T>
  T* AllocateArray(std::size_t count) {
    return static_cast<T*>(Allocate(count * sizeof(T), alignof(T)));
  }

  // A holder is counted without an atomic operation while the tree is built,
  // since no other thread can see the arena yet.
  void AddHolderWhileBuilding() noexcept { ++holdersAddedWhileBuilding_; }
  // Publishes the holders counted while building and drops the builder's hold.
  void FinishBuilding() noexcept;
  void DropHolder() noexcept {
    // While the process has a single thread, nothing can race with this
    // count, and a plain update spares an atomic operation per released node.
    if (ProcessIsSingleThreaded()) {
      const std::int64_t left = holders_.load(std::memory_order_relaxed) - 1;
      holders_.store(left, std::memory_order_relaxed);
      if (left == 0) Destroy();
      return;
    }
    if (holders_.fetch_sub(1, std::memory_order_acq_rel) == 1) Destroy();
  }

 private:
  struct Block;

  Arena() = default;
  ~Arena();
  void Destroy() noexcept;

  static bool ProcessIsSingleThreaded() noexcept {
#if QRL_HAVE_SINGLE_THREADED_FLAG
    return __libc_single_threaded != 0;
#else
    return false;
#endif
  }
  void* AllocateInNewBlock(std::size_t bytes, std::size_t alignment);

  // The builder's hold is a large bias, so that nodes dropped while the tree
  // is still being built can never bring the count to zero.
  static constexpr std::int64_t kBuilderHold = std::int64_t{1} << 62;

  std::atomic<std::int64_t> holders_{kBuilderHold};
  std::int64_t holdersAddedWhileBuilding_ = 0;
  Block* blocks_ = nullptr;
  char* cursor_ = nullptr;
  char* limit_ = nullptr;
  std::size_t nextBlockSize_ = 64 * 1024;
};

// Allocator for std::allocate_shared: every control block it makes holds the
// arena, and giving the block back releases that hold.
template <typename T>
class ArenaAllocator {
 public:
  using value_type = T;

  explicit ArenaAllocator(Arena& arena) noexcept : arena_(&arena) {}
  template <typename U>
  ArenaAllocator(const ArenaAllocator<U>& other) noexcept : arena_(other.arena()) {}

  // A node starts on a cache line and fills whole lines, so that the fields
  // read when it is released (the counts, then its first fields) share the
  // first line.
  T* allocate(std::size_t count) {
    constexpr std::size_t kCacheLine = 64;
    const std::size_t bytes = (count * sizeof(T) + kCacheLine - 1) / kCacheLine * kCacheLine;
    arena_->AddHolderWhileBuilding();
    return static_cast<T*>(arena_->Allocate(bytes, kCacheLine));
  }
  void deallocate(T*, std::size_t) noexcept { arena_->DropHolder(); }

  Arena* arena() const noexcept { return arena_; }
  friend bool operator==(const ArenaAllocator& a, const ArenaAllocator& b) noexcept {
    return a.arena_ == b.arena_;
  }

 private:
  Arena* arena_;
};

}  // namespace qrl
