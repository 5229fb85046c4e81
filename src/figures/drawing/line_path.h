// The points of a line as the path that is drawn: reduced to what the pixels can tell apart, as
// steps where it is stairs.
//
// Of neighbouring points that fall into one column of pixels, the first, the lowest, the highest
// and the last are kept, in their order: what is drawn between columns and the height of what is
// drawn within one stay as they are.
// Source: Jugel, Jerzak, Hackenbroich and Markl, "M4", 2014.
#pragma once

#include "figures/drawing/axis_scale.h"
#include "figures/drawing/line_index.h"
#include "figures/drawing/polyline.h"

namespace kelo::drawing {

/// A plot's box and the scales of its axes.
struct PlotFrame {
  Rect area;
  AxisScale x, y;
  figures::Limits xlims, ylims;
};

/// Columns a point of width is cut into; 0: every point is kept. Points on a straight way are left
/// out as well.
struct Reduction {
  double columnsPerPoint = 0;
};

/// Adds the line to the last item of the list. `index`, where there is one, is that of the line's
/// points.
void addLinePath(DisplayList& list, const figures::Line& line, const PlotFrame& frame, Reduction reduction,
                 const LineIndex* index);

}  // namespace kelo::drawing
