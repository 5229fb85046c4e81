// A stroked path as simple shapes whose union is the stroke: a bar for every stretch and, where the
// path turns, a disc. Ends are cut off at the last point, joins are round, dashes begin anew with
// each piece of the path.
#pragma once

#include <span>
#include <vector>

#include "figures/drawing/display_list.h"

namespace kelo::pictures {

/// All in pixels.
struct StrokeParts {
  /// The rectangle whose middle line runs between two points, half the stroke to each side.
  struct Bar {
    drawing::Vec2 from, to;
    drawing::Vec2 along;  ///< the direction, of length 1
  };
  double half = 0;  ///< half the stroke's width
  std::vector<Bar> bars;
  std::vector<drawing::Vec2> discs;
};

/// `points`: of a path of a display list, in points; `scale`: pixels a point
StrokeParts strokeParts(std::span<const float> points, const drawing::Paint& paint, double scale);

}  // namespace kelo::pictures
