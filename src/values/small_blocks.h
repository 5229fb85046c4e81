// Memory for what is small and lives shortly: bodies of structures and handles, and the elements of
// short texts and vectors. Freed blocks wait here for the next of their length, which is several
// times quicker than the C library; a store of one length is bounded, so that little is kept.
//
// Thread: each has a store of its own; a block may be freed by another thread than made it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace kelo {

class SmallBlocks {
 public:
  static constexpr size_t kLargest = 512;  ///< bytes; what is larger comes from the system

  /// At least `bytes` bytes, aligned to 16; null when the system has none.
  static void* take(size_t bytes) {
    const size_t which = listOf(bytes);
    if (bytes <= kLargest) [[likely]] {
      List& list = lists_[which];
      if (Block* block = list.first) [[likely]] {
        list.first = block->next;
        --list.count;
        return block;
      }
      bytes = which * kGranule;
    }
    return fresh(bytes);
  }
  /// bytes  what was asked for
  static void give(void* memory, size_t bytes) noexcept {
    if (bytes <= kLargest) [[likely]] {
      List& list = lists_[listOf(bytes)];
      if (list.count < kMost) [[likely]] {
        list.first = new (memory) Block{list.first};
        ++list.count;
        return;
      }
    }
    release(memory);
  }

 private:
#if defined(__SANITIZE_ADDRESS__)
  static constexpr int32_t kMost = 0;  // so that the sanitizer sees each block's end
#else
  static constexpr int32_t kMost = 512;
#endif
  static constexpr size_t kGranule = 16;
  static size_t listOf(size_t bytes) { return (bytes + kGranule - 1) / kGranule; }
  static void* fresh(size_t bytes) noexcept;
  static void release(void* memory) noexcept;

  struct Block {
    Block* next;
  };
  struct List {
    Block* first;
    int32_t count;
  };
  static constinit inline thread_local std::array<List, kLargest / kGranule + 1> lists_{};
};

/// A vector whose elements lie in such memory as long as they are few.
template <class T>
struct SmallAllocator {
  using value_type = T;
  SmallAllocator() = default;
  template <class U> SmallAllocator(const SmallAllocator<U>&) {}
  T* allocate(size_t n) {
    if (n > SIZE_MAX / sizeof(T)) throw std::bad_alloc();
    if (void* memory = SmallBlocks::take(n * sizeof(T))) return static_cast<T*>(memory);
    throw std::bad_alloc();
  }
  void deallocate(T* memory, size_t n) noexcept { SmallBlocks::give(memory, n * sizeof(T)); }
  friend bool operator==(SmallAllocator, SmallAllocator) { return true; }
};
template <class T>
using SmallVector = std::vector<T, SmallAllocator<T>>;

/// Gives the objects of a class memory of that kind.
struct FromSmallBlocks {
  static void* operator new(size_t bytes) {
    if (void* memory = SmallBlocks::take(bytes)) return memory;
    throw std::bad_alloc();
  }
  static void* operator new(size_t, void* place) noexcept { return place; }
  static void operator delete(void* memory, size_t bytes) noexcept { SmallBlocks::give(memory, bytes); }
};

}  // namespace kelo
