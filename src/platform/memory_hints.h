// What the machine allows for the elements of arrays; a shell sets it once, at start.
#pragma once

#include <cstdint>

namespace kelo::platform {

struct MemoryHints {
  int64_t arrayByteLimit = int64_t{3} << 30;  ///< the greatest size of one array in bytes
  /// Called with each large block that is fresh from the system, for instance to ask for huge
  /// pages. Null: nothing.
  void (*freshBlock)(void* block, int64_t bytes) = nullptr;
};

inline MemoryHints memoryHints;

}  // namespace kelo::platform
