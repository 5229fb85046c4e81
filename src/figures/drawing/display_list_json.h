// A display list as JSON text, for front ends that paint it themselves.
#pragma once

#include <string>

#include "figures/drawing/display_list.h"

namespace kelo::drawing {

/// `{"width", "height", "title", "description", "plotArea": [left, top, right, bottom], "items":
/// [...]}`. An item is `{"kind", "role", ...}`: paths and polygons with `points` [x0, y0, x1, y1,
/// ...] (null, null breaks a path), `stroke` and `fill` ("#rrggbbaa"), `width`, `dash` where they
/// are; a clip with the two corners as `points`; texts with `text`, `x`, `y`, `size`, `anchor`,
/// `baseline` (always "alphabetic"), `angle` (degrees, clockwise) and `color`; markers with
/// `points`, their `shape` and `size`, and `outline`, the pieces of the shape around (0, 0), which
/// `closed` tells to close. Coordinates have two decimals.
std::string json(const DisplayList& list);

}  // namespace kelo::drawing
