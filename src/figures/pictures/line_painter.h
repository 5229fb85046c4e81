// Stroked paths on a bitmap. The graphics library's own stroking takes most of the time of a
// picture of a long line; here a stroke is the union of simple shapes, and costs by its length.
//
// Strokes are collected and painted together, band by band and from the last one down to the first:
// what is hidden by later strokes costs next to nothing.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "figures/drawing/display_list.h"
#include "figures/pictures/band_painter.h"
#include "figures/pictures/bitmap.h"

namespace kelo::pictures {

class LinePainter {
 public:
  /// `scale`: pixels a point
  LinePainter(Bitmap& bitmap, double scale) : bitmap_(bitmap), scale_(scale) {}

  /// Long lists of lines are painted with fewer samples a pixel.
  void setCrowded(bool isCrowded) { isCrowded_ = isCrowded; }
  /// Takes a stroke. `points`, `paint`: of a path of a display list, in points. Nothing is painted
  /// outside of `clip`, which is in points too.
  void add(std::span<const float> points, const drawing::Paint& paint, const drawing::Rect& clip);
  bool isEmpty() const { return strokes_.empty(); }
  /// Paints what was taken; to be called before anything else is painted.
  void flush();

 private:
  struct Entry {
    uint32_t stroke, part;
  };

  template <class Body>
  void forEachBand(const Stroke& stroke, size_t part, Body body) const;
  void sort();
  void paintBand(size_t band, BandPainter& painter);

  Bitmap& bitmap_;
  double scale_;
  bool isCrowded_ = false;
  std::vector<Stroke> strokes_;
  std::vector<size_t> first_;  // of the entries of each band
  std::vector<Entry> entries_;
};

}  // namespace kelo::pictures
