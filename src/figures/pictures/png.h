// A bitmap as a PNG.
#pragma once

#include <string>

#include "figures/pictures/bitmap.h"

namespace kelo::pictures {

/// With a palette where 256 colours suffice, as in most plots. `pixelsPerPoint` is noted as the
/// resolution.
std::string png(const Bitmap& bitmap, double pixelsPerPoint);

}  // namespace kelo::pictures
