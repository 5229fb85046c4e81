// The store of large blocks; the smallest have their own, those between the C library gives.
// A large request is rounded up so that neighbouring sizes share blocks, and is served by the
// best fitting kept block that wastes less than a quarter.
#include "values/memory.h"

#include <cstdlib>
#include <utility>

#include "values/refused_size.h"
#include "values/small_blocks.h"

namespace kelo {
namespace {

constexpr int64_t kAlignment = 64;  // of large blocks; small ones have that of malloc
constexpr int64_t kSmallGranule = 16;
constexpr int64_t kLarge = 256 << 10;
constexpr int64_t kGranule = 64 << 10;
constexpr int64_t kKeptAtMost = int64_t{512} << 20;
constexpr int kKeptBlocksAtMost = 128;

struct Kept {
  void* block;
  int64_t capacity;
};

// Plain data, so that freeing never allocates and arrays of static objects may still be freed when
// the program ends.
Kept g_kept[kKeptBlocksAtMost];
int g_keptCount = 0;
int64_t g_keptBytes = 0;
int64_t g_blocksAllocated = 0;
double g_refusedBytes = 0;

void* takeKept(int64_t bytes, int64_t* capacity) {
  Kept* best = nullptr;
  for (Kept* it = g_kept; it != g_kept + g_keptCount; ++it) {
    const bool fits = it->capacity >= bytes && it->capacity - bytes <= it->capacity / 4;
    if (fits && (best == nullptr || it->capacity < best->capacity)) best = it;
  }
  if (best == nullptr) return nullptr;
  void* block = best->block;
  *capacity = best->capacity;
  g_keptBytes -= best->capacity;
  *best = g_kept[--g_keptCount];
  return block;
}

void* askSystem(int64_t bytes) {
  const auto size = static_cast<size_t>(bytes);
  return bytes < kLarge ? SmallBlocks::take(size) : std::aligned_alloc(kAlignment, size);
}

void* fromSystem(int64_t bytes) {
  void* block = askSystem(bytes);
  if (block == nullptr) {
    releaseKeptBlocks();
    block = askSystem(bytes);
  }
  if (block == nullptr) {
    noteRefusedBytes(static_cast<double>(bytes));
    throw OutOfMemory();
  }
  const auto hook = platform::memoryHints.freshBlock;
  if (bytes >= kLarge && hook != nullptr) hook(block, bytes);
  return block;
}

}  // namespace

void* SmallBlocks::fresh(size_t bytes) noexcept { return std::malloc(bytes); }
void SmallBlocks::release(void* memory) noexcept { std::free(memory); }

void noteRefusedBytes(double bytes) { g_refusedBytes = bytes; }
double takeRefusedBytes() { return std::exchange(g_refusedBytes, 0); }

void* allocateBlock(int64_t bytes, int64_t* capacity) {
  if (bytes > arrayByteLimit()) {
    noteRefusedBytes(static_cast<double>(bytes));
    throw OutOfMemory();
  }
  ++g_blocksAllocated;
  const int64_t granule = bytes >= kLarge ? kGranule : kSmallGranule;
  *capacity = (bytes + granule - 1) / granule * granule;
  if (bytes >= kLarge) {
    if (void* kept = takeKept(bytes, capacity)) return kept;
  }
  return fromSystem(*capacity);
}

void freeBlock(void* block, int64_t capacity) noexcept {
  if (capacity < kLarge) return SmallBlocks::give(block, static_cast<size_t>(capacity));
  if (g_keptBytes + capacity > kKeptAtMost || g_keptCount == kKeptBlocksAtMost) {
    std::free(block);
    return;
  }
  g_kept[g_keptCount++] = {block, capacity};
  g_keptBytes += capacity;
}

int64_t blocksAllocated() { return g_blocksAllocated; }

void releaseKeptBlocks() noexcept {
  while (g_keptCount > 0) std::free(g_kept[--g_keptCount].block);
  g_keptBytes = 0;
}

}  // namespace kelo
