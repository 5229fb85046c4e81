// What strokes leave on a few rows of pixels, painted from the front to the back.
#pragma once

#include <cstdint>
#include <vector>

#include "figures/drawing/display_list.h"
#include "figures/pictures/bitmap.h"
#include "figures/pictures/sample_band.h"

namespace kelo::pictures {

class LayerBand {
 public:
  explicit LayerBand(int width);

  /// Paints a colour behind what is there: of eight pixels from x on, with their coverages in a
  /// byte each.
  void paintBehind(int y, int x, uint64_t coverages, drawing::Rgba color);
  /// Whether nothing shows through any more in the columns of pixels x to end - 1.
  bool hides(int x, int end) const {
    for (int word = x / 8; word <= (end - 1) / 8; ++word) {
      if (hiddenRows_[static_cast<size_t>(word)] < SampleBand::kHeight) return false;
    }
    return true;
  }
  /// Puts everything over the rows of a bitmap from `top` on, and begins anew.
  void putOver(Bitmap& bitmap, int top);

 private:
  /// In parts of 256; red and blue side by side.
  struct Pixel {
    uint32_t shown = kAll;  // of what is behind
    uint32_t redBlue = 0, green = 0;
  };
  static constexpr uint32_t kAll = 256;

  int width_, words_;  // words of eight pixels
  std::vector<Pixel> pixels_;
  std::vector<uint8_t> isTouched_, isHidden_;  // of each word
  std::vector<uint8_t> hiddenRows_;            // of each column of words
};

}  // namespace kelo::pictures
