// The colours of heights: a path through OKLab from a deep blue over teal and green to a pale gold,
// lightness rising evenly and equal steps looking equally large. It reads the same in print without
// colour and to colour-blind eyes.
#pragma once

#include "figures/drawing/display_list.h"

namespace kelo::drawing {

/// The colour of a height, 0 to 1; others take the nearer end.
Rgba heightColor(double share);

}  // namespace kelo::drawing
