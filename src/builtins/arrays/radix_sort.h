// Stable sorting of 64-bit keys, alone or with positions.
//
// Values of every kind are sorted by unsigned keys that stand in the same order (sort_keys.h), so
// that one sort serves all. Large arrays are sorted digit by digit from below (radix sort), but
// only by the highest bits in which the keys differ at all: enough to tell nearly all of them
// apart; the few that still stand in disorder are then put right where they are.
#pragma once

#include <cstdint>

namespace kelo::builtins {

struct KeyAndPosition {
  uint64_t key;
  int64_t position;
};

/// Sorts in increasing order; equal keys keep their order. The result stands in `keys`.
/// scratch  room for n more, overwritten
void radixSort(uint64_t* keys, uint64_t* scratch, int64_t n);
void radixSort(KeyAndPosition* keys, KeyAndPosition* scratch, int64_t n);

}  // namespace kelo::builtins
