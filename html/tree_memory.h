// Memory of one parsed tree. Everything a parse keeps comes from here: a copy
// of the input (which the tree's strings point into), the nodes, the child
// arrays and the attribute blocks. Nothing is freed on its own; the whole
// tree goes at once when the last reference into it goes, with no walk over
// its nodes, whose destruction does nothing.
//
// Small allocations (every node among them) come from blocks of kChunkBytes
// aligned to their size, each starting with a header that names the tree.
// A node so finds its tree, and its place in document order, from its own
// address. Larger ones get memory of their own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "html/chunk_cache.h"
#include "html/chunk_memory.h"

namespace qrl {

class HtmlElement;
using ElementRef = std::shared_ptr<HtmlElement>;

class TreeMemory : public std::enable_shared_from_this<TreeMemory> {
 public:
  static std::shared_ptr<TreeMemory> Create();
  TreeMemory(const TreeMemory&) = delete;
  TreeMemory& operator=(const TreeMemory&) = delete;
  ~TreeMemory();

  // Anything up to this size comes from a chunk.
  static constexpr std::size_t kLargestSmallAllocation = kChunkBytes / 8;

  void* Allocate(std::size_t bytes, std::size_t alignment) {
    if (bytes > kLargestSmallAllocation) return AllocateLarge(bytes);
    const std::size_t padding = (alignment - reinterpret_cast<std::uintptr_t>(cursor_) % alignment) % alignment;
    if (bytes + padding > static_cast<std::size_t>(limit_ - cursor_)) return AllocateInNewChunk(bytes, alignment);
    void* start = cursor_ + padding;
    cursor_ += padding + bytes;
    return start;
  }
  template <typename T>
  T* AllocateArray(std::size_t count) {
    return static_cast<T*>(Allocate(count * sizeof(T), alignof(T)));
  }
  // A new node, which must stay small enough to come from a chunk.
  HtmlElement* NewNode();

  // The tree that `node` belongs to.
  static TreeMemory& Of(const HtmlElement& node) noexcept { return *HeaderOf(&node).owner; }
  // Rises with document order among the nodes of one tree: nodes are made in
  // that order, in chunks numbered as they were taken.
  static std::uint64_t DocumentOrderKey(const HtmlElement& node) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(&node);
    return (std::uint64_t{HeaderOf(&node).sequence} << 32) | (address & (kChunkBytes - 1));
  }

  // A reference to a node of this tree that keeps the whole tree alive.
  ElementRef Share(const HtmlElement& node);

 private:
  struct ChunkHeader {
    TreeMemory* owner;
    std::uint32_t sequence;
  };

  TreeMemory() = default;
  static const ChunkHeader& HeaderOf(const void* address) noexcept {
    return *reinterpret_cast<const ChunkHeader*>(reinterpret_cast<std::uintptr_t>(address) &
                                                 ~(std::uintptr_t{kChunkBytes} - 1));
  }
  void* AllocateInNewChunk(std::size_t bytes, std::size_t alignment);
  void* AllocateLarge(std::size_t bytes);

  std::vector<void*> chunks_;
  std::vector<void*> heapBlocks_;
  std::vector<MappedBlock> mappedBlocks_;
  char* cursor_ = nullptr;
  char* limit_ = nullptr;
};

}  // namespace qrl
