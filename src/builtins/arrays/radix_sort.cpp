// The radix sort. Source: least-significant-digit radix sort (D. Knuth, The Art of Computer
// Programming 3, 5.2.5) over a window of bits, with a repairing pass after it.
//
// The window holds the highest bits in which any two keys differ; for doubles spread over a range
// it tells all but a few pairs in a million apart. The repairing pass walks over the result once.
// Where a key is smaller than the one before it, both lie in a group of equal window bits, and the
// group alone is sorted by the bits below: small ones by insertion, large ones by the same method,
// whose window is now a lower one.
#include "builtins/arrays/radix_sort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace kelo::builtins {
namespace {

constexpr int64_t kInsertionAtMost = 40;

uint64_t keyOf(uint64_t key) { return key; }
uint64_t keyOf(const KeyAndPosition& pair) { return pair.key; }

template <class Item>
void insertionSort(Item* items, int64_t n) {
  for (int64_t i = 1; i < n; ++i) {
    const Item item = items[i];
    int64_t j = i;
    for (; j > 0 && keyOf(items[j - 1]) > keyOf(item); --j) items[j] = items[j - 1];
    items[j] = item;
  }
}

// Bits in which keys differ, and whether they stand in order already.
template <class Item>
uint64_t differingBits(const Item* items, int64_t n, bool* inOrder) {
  uint64_t bits = 0;
  bool order = true;
  for (int64_t i = 1; i < n; ++i) {
    bits |= keyOf(items[i]) ^ keyOf(items[0]);
    order &= keyOf(items[i - 1]) <= keyOf(items[i]);
  }
  *inOrder = order;
  return bits;
}

template <int kBits, int kPasses, class Item>
void sortByWindow(Item* items, Item* scratch, int64_t n, int shift) {
  constexpr size_t kBuckets = size_t{1} << kBits;
  constexpr uint64_t kMask = kBuckets - 1;
  std::array<std::array<int64_t, kBuckets>, kPasses> starts{};
  for (int64_t i = 0; i < n; ++i) {
    const uint64_t key = keyOf(items[i]) >> shift;
    for (size_t p = 0; p < kPasses; ++p) ++starts[p][(key >> (p * kBits)) & kMask];
  }
  Item* from = items;
  Item* to = scratch;
  for (size_t p = 0; p < kPasses; ++p) {
    std::array<int64_t, kBuckets>& start = starts[p];
    int64_t sum = 0;
    bool oneBucket = false;
    for (int64_t& count : start) {
      oneBucket |= count == n;
      const int64_t own = count;
      count = sum;
      sum += own;
    }
    if (oneBucket) continue;
    const int digit = shift + static_cast<int>(p) * kBits;
    for (int64_t i = 0; i < n; ++i) to[start[(keyOf(from[i]) >> digit) & kMask]++] = from[i];
    std::swap(from, to);
  }
  if (from != items) std::memcpy(items, from, static_cast<size_t>(n) * sizeof(Item));
}

template <class Item>
void sortItems(Item* items, Item* scratch, int64_t n);

// Puts the groups of equal bits from `shift` upwards in order.
template <class Item>
void repair(Item* items, Item* scratch, int64_t n, int shift) {
  for (int64_t i = 1; i < n; ++i) {
    if (keyOf(items[i - 1]) <= keyOf(items[i])) continue;
    const uint64_t group = keyOf(items[i]) >> shift;
    int64_t first = i - 1;
    while (first > 0 && keyOf(items[first - 1]) >> shift == group) --first;
    while (i < n && keyOf(items[i]) >> shift == group) ++i;
    sortItems(items + first, scratch, i - first);
  }
}

template <class Item>
void sortItems(Item* items, Item* scratch, int64_t n) {
  if (n <= kInsertionAtMost) return insertionSort(items, n);
  bool inOrder = false;
  const uint64_t bits = differingBits(items, n, &inOrder);
  if (inOrder) return;
  // The window: small counts take small digits, whose tables are cleared faster.
  const bool small = n < 4000;
  const int width = small ? 24 : n < (1 << 20) ? 33 : 36;
  const int shift = std::max(0, static_cast<int>(std::bit_width(bits)) - width);
  if (small) sortByWindow<8, 3>(items, scratch, n, shift);
  else if (n < (1 << 20)) sortByWindow<11, 3>(items, scratch, n, shift);
  else sortByWindow<9, 4>(items, scratch, n, shift);
  if (shift > 0 && (bits & ((uint64_t{1} << shift) - 1)) != 0) repair(items, scratch, n, shift);
}

}  // namespace

void radixSort(uint64_t* keys, uint64_t* scratch, int64_t n) { sortItems(keys, scratch, n); }
void radixSort(KeyAndPosition* keys, KeyAndPosition* scratch, int64_t n) { sortItems(keys, scratch, n); }

}  // namespace kelo::builtins
