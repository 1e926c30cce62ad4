// Chunks and blocks from mmap, in regions aligned to 2 MiB and marked as
// worth huge pages: a tree fills its memory at once, and one fault per 2 MiB
// costs far less than one per 4 KiB page, which would otherwise be most of
// the time of a page's first parse. Chunks are cut from such regions in
// turn. Each chunk or block is populated as soon as it is handed out, in one
// call rather than a fault per page; a kernel without the huge page or the
// populate hint simply ignores it.
#include <sys/mman.h>

#include <cstdint>
#include <mutex>

#include "html/chunk_memory.h"

namespace qrl {

namespace {

constexpr std::size_t kRegionBytes = std::size_t{2} * 1024 * 1024;
static_assert(kRegionBytes % kChunkBytes == 0);

std::uintptr_t AlignUp(std::uintptr_t value, std::size_t alignment) {
  return (value + alignment - 1) & ~(std::uintptr_t{alignment} - 1);
}

void Populate(void* memory, std::size_t bytes) {
#ifdef MADV_POPULATE_WRITE
  madvise(memory, bytes, MADV_POPULATE_WRITE);
#else
  static_cast<void>(memory);
  static_cast<void>(bytes);
#endif
}

// `bytes` (a multiple of the page size) at an address aligned to
// kRegionBytes: more is mapped, and what lies outside is unmapped again.
void* MapAligned(std::size_t bytes) {
  const std::size_t mapped = bytes + kRegionBytes;
  void* memory = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return nullptr;
  const auto start = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t aligned = AlignUp(start, kRegionBytes);
  if (aligned > start) munmap(memory, aligned - start);
  const std::uintptr_t tail = start + mapped - (aligned + bytes);
  if (tail > 0) munmap(reinterpret_cast<void*>(aligned + bytes), tail);
  void* region = reinterpret_cast<void*>(aligned);
#ifdef MADV_HUGEPAGE
  madvise(region, bytes, MADV_HUGEPAGE);
#endif
  return region;
}

struct RegionCursor {
  std::mutex lock;
  char* next = nullptr;
  char* end = nullptr;
};

RegionCursor& Cursor() {
  static RegionCursor* const cursor = new RegionCursor();
  return *cursor;
}

}  // namespace

void* MapChunk() noexcept {
  RegionCursor& cursor = Cursor();
  void* chunk = nullptr;
  {
    const std::lock_guard<std::mutex> guard(cursor.lock);
    if (cursor.next == cursor.end) {
      auto* region = static_cast<char*>(MapAligned(kRegionBytes));
      if (region == nullptr) return nullptr;
      cursor.next = region;
      cursor.end = region + kRegionBytes;
    }
    chunk = cursor.next;
    cursor.next += kChunkBytes;
  }
  Populate(chunk, kChunkBytes);
  return chunk;
}

void UnmapChunk(void* chunk) noexcept { munmap(chunk, kChunkBytes); }

void* MapBlock(std::size_t bytes) noexcept {
  void* block = MapAligned(AlignUp(bytes, kChunkBytes));
  if (block != nullptr) Populate(block, bytes);
  return block;
}

void UnmapBlock(void* block, std::size_t bytes) noexcept { munmap(block, AlignUp(bytes, kChunkBytes)); }

}  // namespace qrl
