// A figure as a display list: model, size and theme in, list out.
#pragma once

#include "figures/drawing/line_index.h"
#include "figures/drawing/sheet.h"
#include "figures/figure_panel.h"

namespace kelo::drawing {

/// `cache`, when given, keeps an index of long lines for the next drawing. No figure gives the
/// empty ground.
DisplayList draw(const figures::Figure& figure, const DrawingOptions& options, DrawingCache* cache = nullptr);
DisplayList draw(const figures::PlotData& plot, const DrawingOptions& options, DrawingCache* cache = nullptr);
DisplayList draw(const figures::SurfData& surface, const DrawingOptions& options);

}  // namespace kelo::drawing
