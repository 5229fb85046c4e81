// The lines of a plot: paths, stems and markers.
#pragma once

#include "figures/drawing/line_path.h"
#include "figures/drawing/sheet.h"
#include "figures/plot_data.h"

namespace kelo::drawing {

/// The stroke of a line as it is drawn; invisible for a hidden one.
Paint linePaint(const Sheet& sheet, const figures::Line::Attributes& attributes);
/// The edge and face of a line's markers, and their shape.
Paint markerPaint(const Sheet& sheet, const figures::Line::Attributes& attributes);
MarkerShape markerShape(const Sheet& sheet, const figures::Line::Attributes& attributes);

/// All lines inside the frame, in their order, each with its markers on it.
void drawLines(Sheet& sheet, const figures::PlotData& plot, const PlotFrame& frame, DrawingCache* cache);

}  // namespace kelo::drawing
