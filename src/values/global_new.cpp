// Objects that are made with `new`, and so the vectors, strings and maps of every layer, lie in
// small blocks too: most calls make and drop a few of them.
//
// A block comes from malloc whatever its length, so a deletion without a length may free it.
#include <cstdlib>
#include <new>

#include "values/small_blocks.h"

#if !defined(__SANITIZE_ADDRESS__)  // which has operators of its own

void* operator new(size_t bytes) {
  if (void* memory = kelo::SmallBlocks::take(bytes > 0 ? bytes : 1)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory, size_t bytes) noexcept {
  if (memory != nullptr) kelo::SmallBlocks::give(memory, bytes > 0 ? bytes : 1);
}
void operator delete(void* memory) noexcept { std::free(memory); }

#endif
