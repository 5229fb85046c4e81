// One marker at many places of a bitmap: painted once for each of a few positions within a pixel,
// then copied.
#pragma once

#include <functional>
#include <vector>

#include "figures/drawing/geometry.h"
#include "figures/pictures/bitmap.h"
#include "figures/pictures/native/cairo_library.h"

namespace kelo::pictures::native {

class MarkerStamps {
 public:
  /// Paints the marker about the origin of a context whose unit is the pixel.
  using Painter = std::function<void(cairo_t*)>;

  /// `reach`: how far the marker's paint reaches from its place, in pixels
  MarkerStamps(const CairoLibrary& cairo, double reach, Painter painter);

  /// Whether so many markers of that reach are painted faster this way.
  static bool pays(size_t count, double reach) { return count > kPhases * kPhases && reach < 100; }
  /// `at` and `clip` in pixels; of the clip whole pixels count.
  void paint(Bitmap& bitmap, drawing::Vec2 at, const drawing::Rect& clip);

 private:
  static constexpr int kPhases = 8;  ///< positions within a pixel, each way

  /// Colours times alpha, and alpha, row by row.
  using Stamp = std::vector<uint32_t>;
  const Stamp& stampFor(int phaseX, int phaseY);

  const CairoLibrary& cairo_;
  int half_, side_;  // of a stamp, in pixels
  Painter painter_;
  Stamp stamps_[kPhases][kPhases];
};

}  // namespace kelo::pictures::native
