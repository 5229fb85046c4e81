// A picture as pixels.
#pragma once

#include <cstdint>
#include <vector>

namespace kelo::pictures {

/// Opaque pixels 0x00RRGGBB, row by row from the top.
struct Bitmap {
  int width = 0, height = 0;
  std::vector<uint32_t> pixels;
};

}  // namespace kelo::pictures
