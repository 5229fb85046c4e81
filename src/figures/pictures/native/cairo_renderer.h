// Pictures by cairo.
#pragma once

#include "figures/pictures/renderer.h"

namespace kelo::pictures::native {

class CairoRenderer : public Renderer {
 public:
  Bitmap bitmap(const drawing::DisplayList& list, double scale) override;
  std::string pdf(const drawing::DisplayList& list) override;
};

}  // namespace kelo::pictures::native
