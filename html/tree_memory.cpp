#include "html/tree_memory.h"

#include <cstdlib>
#include <new>

#include "html/html_element.h"

namespace qrl {

namespace {

// Allocations from this size on (a page's copy above all) come from the
// system directly, where they get its hints for memory filled at once.
constexpr std::size_t kMappedBlockBytes = std::size_t{1} << 20;

}  // namespace

static_assert(std::is_trivially_destructible_v<HtmlElement>,
              "a tree is released without visiting its nodes");
static_assert(sizeof(HtmlElement) <= TreeMemory::kLargestSmallAllocation);

std::shared_ptr<TreeMemory> TreeMemory::Create() { return std::shared_ptr<TreeMemory>(new TreeMemory()); }

TreeMemory::~TreeMemory() {
  for (void* chunk : chunks_) GiveChunkBack(chunk);
  for (void* block : heapBlocks_) std::free(block);
  for (const MappedBlock& block : mappedBlocks_) GiveBlockBack(block);
}

HtmlElement* TreeMemory::NewNode() { return new (Allocate(sizeof(HtmlElement), alignof(HtmlElement))) HtmlElement(); }

ElementRef TreeMemory::Share(const HtmlElement& node) {
  return ElementRef(shared_from_this(), const_cast<HtmlElement*>(&node));
}

void* TreeMemory::AllocateInNewChunk(std::size_t bytes, std::size_t alignment) {
  chunks_.reserve(chunks_.size() + 1);
  void* chunk = TakeChunk();
  if (chunk == nullptr) throw std::bad_alloc();
  chunks_.push_back(chunk);
  auto* header = static_cast<ChunkHeader*>(chunk);
  header->owner = this;
  header->sequence = static_cast<std::uint32_t>(chunks_.size());
  cursor_ = static_cast<char*>(chunk) + sizeof(ChunkHeader);
  limit_ = static_cast<char*>(chunk) + kChunkBytes;
  return Allocate(bytes, alignment);
}

void* TreeMemory::AllocateLarge(std::size_t bytes) {
  if (bytes >= kMappedBlockBytes) {
    mappedBlocks_.reserve(mappedBlocks_.size() + 1);
    const MappedBlock block = TakeBlock(bytes);
    if (block.memory == nullptr) throw std::bad_alloc();
    mappedBlocks_.push_back(block);
    return block.memory;
  }
  heapBlocks_.reserve(heapBlocks_.size() + 1);
  void* block = std::malloc(bytes);
  if (block == nullptr) throw std::bad_alloc();
  heapBlocks_.push_back(block);
  return block;
}

}  // namespace qrl
