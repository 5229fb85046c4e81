// Where the markers and the stems of a line stand, reduced to what the pixels can tell apart.
#pragma once

#include "figures/drawing/line_path.h"

namespace kelo::drawing {

/// Adds the places of the points inside the frame to the last item. Of many that fall on one pixel
/// only the one on top, the last, is kept.
void addMarkerPlaces(DisplayList& list, std::span<const figures::Point> points, const PlotFrame& frame,
                     Reduction reduction);

/// Adds a stroke from the baseline to each point inside the frame. Many in one column become the
/// longest ones.
void addStems(DisplayList& list, std::span<const figures::Point> points, const PlotFrame& frame, double baseY,
              Reduction reduction);

}  // namespace kelo::drawing
