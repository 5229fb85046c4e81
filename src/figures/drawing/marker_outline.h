// The shapes of markers.
#pragma once

#include <vector>

#include "figures/drawing/display_list.h"

namespace kelo::drawing {

/// A marker around (0, 0), as pieces of a path.
struct MarkerOutline {
  std::vector<std::vector<Vec2>> pieces;
  bool isClosed = true;    ///< the pieces have an inside
  double radius = 0;       ///< above 0: a circle, of which `pieces` is a polygon
};

MarkerOutline markerOutline(const MarkerShape& shape);

/// "circle", "fivePointedStar".
std::string_view nameOf(figures::Marker::Style style);

}  // namespace kelo::drawing
