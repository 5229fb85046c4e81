// Strokes on a few rows of pixels: a row of samples is cut from each shape as an interval, the
// samples of a stroke are united, and strokes are laid behind each other from the last one to the
// first, so that what is hidden costs next to nothing. The samples stay in the processor's cache.
#pragma once

#include "figures/pictures/bitmap.h"
#include "figures/pictures/layer_band.h"
#include "figures/pictures/sample_band.h"
#include "figures/pictures/stroke_parts.h"

namespace kelo::pictures {

/// A stroked path, in pixels.
struct Stroke {
  StrokeParts parts;
  drawing::Rect clip;  ///< inside of the bitmap
  drawing::Rgba color;
  int down;            ///< rows of samples a pixel
};

/// One at a time of the bars and discs of a stroke, bars first.
size_t numParts(const StrokeParts& parts);
/// From the highest to the lowest place of a part.
struct Interval {
  double from, to;
};
Interval heightsOf(const StrokeParts& parts, size_t part);

class BandPainter {
 public:
  explicit BandPainter(int width) : samples_(width), layer_(width) {}

  /// Begins with the rows from `top` on.
  void begin(int top) { top_ = top; }
  /// A stroke before all that come after it: begin, some of its parts, finish.
  void begin(const Stroke& stroke);
  void add(const Stroke& stroke, size_t part);
  void finish(const Stroke& stroke);
  /// Puts all strokes over what the bitmap holds.
  void putOver(Bitmap& bitmap) { layer_.putOver(bitmap, top_); }

 private:
  struct Rows;

  void add(const Stroke& stroke, const StrokeParts::Bar& bar);
  void add(const Stroke& stroke, drawing::Vec2 disc);
  bool isHidden(const Stroke& stroke, double from, double to) const;

  SampleBand samples_;
  LayerBand layer_;
  int top_ = 0;
};

}  // namespace kelo::pictures
