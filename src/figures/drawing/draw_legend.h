// The legend of a plot in a corner of its box: a sample of each line and its name.
#pragma once

#include "figures/drawing/sheet.h"
#include "figures/plot_data.h"

namespace kelo::drawing {

void drawLegend(Sheet& sheet, const figures::PlotData& plot, const Rect& area);

}  // namespace kelo::drawing
