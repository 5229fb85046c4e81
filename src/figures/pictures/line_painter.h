// Stroked paths on a bitmap. The graphics library's own stroking takes most of the time of a
// picture of a long line; here a stroke is the union of simple shapes, and costs by its length.
#pragma once

#include <span>

#include "figures/drawing/display_list.h"
#include "figures/pictures/bitmap.h"

namespace kelo::pictures {

/// `points`, `paint`: of a path of a display list, in points. `scale`: pixels a point. Nothing is
/// painted outside of `clip`, which is in pixels.
void paintLine(Bitmap& bitmap, std::span<const float> points, const drawing::Paint& paint, double scale,
               const drawing::Rect& clip);

}  // namespace kelo::pictures
