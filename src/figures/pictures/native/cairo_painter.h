// Paints a display list in a context of the graphics library, whose unit is the point.
#pragma once

#include "figures/drawing/display_list.h"
#include "figures/pictures/native/cairo_library.h"

namespace kelo::pictures::native {

class CairoPainter {
 public:
  /// `scale`: device pixels a point, for which straight edges are put on whole pixels
  CairoPainter(const CairoLibrary& cairo, cairo_t* context, double scale);
  void paint(const drawing::DisplayList& list);

 private:
  using Item = drawing::DisplayList::Item;

  void paint(const Item& item);
  void path(const Item& item, bool closes);
  void markers(const Item& item);
  void text(const Item& item);
  void clip(const Item& item);
  void fillAndStroke(const drawing::Paint& paint);
  void source(drawing::Rgba color);
  bool isCrisp(const Item& item) const;
  double snapped(double value, double width) const;

  const CairoLibrary& cairo_;
  cairo_t* context_;
  double scale_;
};

}  // namespace kelo::pictures::native
