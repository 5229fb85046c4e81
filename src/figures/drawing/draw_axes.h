// The box of a plot: grid and axes below its lines, texts around it.
#pragma once

#include "figures/drawing/line_path.h"
#include "figures/drawing/plot_layout.h"

namespace kelo::drawing {

/// The ground of the box, the grid, the axes and their ticks.
void drawBox(Sheet& sheet, const figures::PlotData& plot, const PlotFrame& frame);
/// Title, labels, texts at the ticks, powers of ten.
void drawTexts(Sheet& sheet, const PlotLayout& layout);

}  // namespace kelo::drawing
