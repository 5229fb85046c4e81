// Work on a picture, split over the cores.
#pragma once

#include <atomic>
#include <new>

#include "platform/parallel.h"

namespace kelo::pictures {

/// parallelForUnits for a body that needs memory. throws std::bad_alloc, when there was none
template <class Body>
void forPieces(int64_t count, int64_t costEach, Body&& body) {
  std::atomic<bool> lacksMemory = false;
  platform::parallelForUnits(count, costEach, [&](int64_t begin, int64_t end) {
    try {
      body(begin, end);
    } catch (const std::bad_alloc&) {
      lacksMemory = true;
    }
  });
  if (lacksMemory) throw std::bad_alloc();
}

}  // namespace kelo::pictures
