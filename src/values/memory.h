// Memory for array elements: one limit for a single array, checked before asking the system, and a
// bounded store of large freed blocks. Pages that the system has just handed out are the dearest
// thing in a large computation; reused ones are several times faster to write, so a freed large
// block waits here for the next array.
//
// Thread: the interpreter's thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "platform/memory_hints.h"

namespace kelo {

/// An array that cannot be held. An ordinary error: the run fails, the workspace stays.
struct OutOfMemory : std::bad_alloc {
  const char* what() const noexcept override { return "out of memory"; }
};

/// A block of at least `bytes` bytes, aligned to 16, a large one to 64. *capacity receives its true
/// size in bytes.
/// throws OutOfMemory beyond the limit or when the system has none
void* allocateBlock(int64_t bytes, int64_t* capacity);
void freeBlock(void* block, int64_t capacity) noexcept;

/// The greatest size of one array in bytes.
inline int64_t arrayByteLimit() { return platform::memoryHints.arrayByteLimit; }

/// How many blocks were asked for so far; tests of what copies look at it.
int64_t blocksAllocated();

/// Gives the kept blocks back to the system: when idle, or short of memory.
void releaseKeptBlocks() noexcept;

}  // namespace kelo
