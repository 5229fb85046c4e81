// What a picture says to whoever cannot see it: a title and a sentence or two.
#pragma once

#include "figures/drawing/display_list.h"
#include "figures/plot_data.h"
#include "figures/surf_data.h"

namespace kelo::drawing {

void describe(const figures::PlotData& plot, DisplayList& list);
void describe(const figures::SurfData& surface, DisplayList& list);

}  // namespace kelo::drawing
