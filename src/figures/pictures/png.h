// A bitmap as a PNG.
#pragma once

#include <string>

#include "figures/pictures/bitmap.h"

namespace kelo::pictures {

/// Fast: for lines on an even ground. Small: for surfaces, which take long to paint anyway and
/// whose files are a third smaller.
enum class Packing { fast, small };

/// With a palette where 256 colours suffice, as in most plots. `pixelsPerPoint` is noted as the
/// resolution.
std::string png(const Bitmap& bitmap, double pixelsPerPoint, Packing packing = Packing::fast);

}  // namespace kelo::pictures
