// What the machine allows for the elements of arrays; a shell sets it once, at start.
#pragma once

#include <cstdint>

namespace kelo::platform {

struct MemoryHints {
  int64_t arrayByteLimit = int64_t{3} << 30;  ///< the greatest size of one array in bytes
  /// An array may show the elements of another one in place of a copy when it has at least so many
  /// bytes and keeps at most so many times as many from being freed.
  int64_t leastShownBytes = 8 << 10;
  int64_t mostKeptTimes = 2;
  /// Called with each large block that is fresh from the system, for instance to ask for huge
  /// pages. Null: nothing.
  void (*freshBlock)(void* block, int64_t bytes) = nullptr;
};

inline MemoryHints memoryHints;

}  // namespace kelo::platform
