// Paints a display list in a context of the graphics library, whose unit is the point.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "figures/drawing/display_list.h"
#include "figures/drawing/marker_outline.h"
#include "figures/pictures/line_painter.h"
#include "figures/pictures/native/cairo_library.h"

namespace kelo::pictures::native {

class CairoPainter {
 public:
  /// `scale`: device pixels a point, for which straight edges are put on whole pixels. `bitmap`:
  /// what the context paints on, or null where it writes a document
  CairoPainter(const CairoLibrary& cairo, cairo_t* context, double scale, Bitmap* bitmap);
  void paint(const drawing::DisplayList& list);

 private:
  using Item = drawing::DisplayList::Item;

  void paint(const Item& item);
  void path(const Item& item, bool closes);
  void addPath(std::span<const float> points, bool closes);
  void flushLines();
  template <class Paints>
  void onBitmap(Paints paints);
  void markers(const Item& item);
  void stampMarkers(const Item& item, const drawing::MarkerOutline& outline, const drawing::Paint& paint);
  void addMarker(const drawing::MarkerOutline& outline, double x, double y);
  void text(const Item& item);
  void plainText(const drawing::Text& text, double share);
  void clip(const Item& item);
  void fillAndStroke(const drawing::Paint& paint);
  void source(drawing::Rgba color);
  bool isCrisp(const Item& item) const;
  std::vector<float> snapped(std::span<const float> points, double width) const;

  const CairoLibrary& cairo_;
  cairo_t* context_;
  double scale_;
  Bitmap* bitmap_;
  std::optional<LinePainter> lines_;
  drawing::Rect clip_;  ///< in points
};

}  // namespace kelo::pictures::native
