// The paints that need a graphics library, as an interface: the layer above knows none.
#pragma once

#include <string>

#include "figures/drawing/display_list.h"
#include "figures/pictures/bitmap.h"

namespace kelo::pictures {

class Renderer {
 public:
  virtual ~Renderer() = default;
  /// `scale` pixels a point. throws Problem, when the library or the font is missing or memory runs
  /// out
  virtual Bitmap bitmap(const drawing::DisplayList& list, double scale) = 0;
  /// A document of one page as large as the list. throws Problem
  virtual std::string pdf(const drawing::DisplayList& list) = 0;
};

}  // namespace kelo::pictures
