// Limits from data. They hug it: no margin, no rounding to nice numbers.
#pragma once

#include <span>

#include "figures/line.h"
#include "figures/surf_data.h"

namespace kelo::figures {

struct PlotLimits {
  Limits x, y;
};

/// Limits of both axes over all points of all lines; coordinates that are NaN or infinite are
/// skipped, each by itself. One value v gives v - 1 to v + 1, none 0 to 1. The baseline 0 of a stem
/// line on one side of it joins y.
/// throws  Problem, an internal fault
PlotLimits limitsFromData(std::span<const Line> lines);

/// Limits of `axis` from what lies inside the limits of the other: points, and the places where a
/// line rises through an edge of the window; where it falls through one, nothing counts. NOTE:
/// intended. One value v gives v - 0.5 to v + 0.5, none 0 to 1. throws Problem, an internal fault
Limits limitsFromWindow(std::span<const Line> lines, Axis axis, const Limits& window);

/// Limits of one axis over all points of all surfaces, in 32-bit floats. One value v gives v - 1 to
/// v, none 0 to 1. NOTE: intended. throws Problem, an internal fault
Limits limitsFromSurfaces(std::span<const SurfData::Surface> surfaces, Axis axis);

}  // namespace kelo::figures
