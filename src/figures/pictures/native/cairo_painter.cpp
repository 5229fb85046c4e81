#include "figures/pictures/native/cairo_painter.h"

#include <cmath>
#include <numbers>

#include "figures/pictures/native/marker_stamps.h"
#include "figures/pictures/native/text_layout.h"

namespace kelo::pictures::native {

using drawing::DisplayList;
using drawing::Paint;
using drawing::Rgba;
using Part = drawing::Role::Part;

namespace {

/// Coordinates beyond which strokes stand so close that fine edges are not seen.
constexpr size_t kCrowded = 200000;

}  // namespace

CairoPainter::CairoPainter(const CairoLibrary& cairo, cairo_t* context, double scale, Bitmap* bitmap)
    : cairo_(cairo), context_(context), scale_(scale), bitmap_(bitmap) {
  cairo_font_options_t* options = cairo_.plainFontOptions();
  cairo_.set_font_options(context_, options);
  cairo_.font_options_destroy(options);
  if (cairo_.font != nullptr) {
    cairo_.set_font_face(context_, cairo_.font);
  } else {
    cairo_.select_font_face(context_, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  }
  cairo_.set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
}

void CairoPainter::paint(const DisplayList& list) {
  clip_ = {0, 0, list.size.width, list.size.height};
  if (bitmap_ != nullptr) {
    lines_.emplace(*bitmap_, scale_);
    lines_->setCrowded(list.numCoordinates() > kCrowded);
  }
  for (size_t i = 0; i < list.count(); ++i) {
    if (list[i].kind == DisplayList::Kind::restore) clip_ = {0, 0, list.size.width, list.size.height};
    paint(list[i]);
  }
  flushLines();
}

void CairoPainter::flushLines() {
  if (lines_ && !lines_->isEmpty()) onBitmap([&] { lines_->flush(); });
}

void CairoPainter::paint(const Item& item) {
  const bool isShape = item.kind != DisplayList::Kind::clip && item.kind != DisplayList::Kind::restore;
  if (isShape && item.kind != DisplayList::Kind::path) flushLines();
  if (item.role.part == Part::background) {  // all of it, also where a pixel is only begun
    source(item.paint.fill);
    return cairo_.paint(context_);
  }
  switch (item.kind) {
    case DisplayList::Kind::path: path(item, false); break;
    case DisplayList::Kind::polygon: path(item, true); break;
    case DisplayList::Kind::marker: markers(item); break;
    case DisplayList::Kind::text: text(item); break;
    case DisplayList::Kind::clip: clip(item); break;
    case DisplayList::Kind::restore: cairo_.restore(context_); break;
  }
}

/// Axes, ticks and grids are upright and level: on whole pixels they are sharp and equally strong.
bool CairoPainter::isCrisp(const Item& item) const {
  switch (item.role.part) {
    case Part::xAxis: case Part::xTick: case Part::yAxis: case Part::yTick: case Part::grid: case Part::plotArea:
    case Part::legend: break;
    default: return false;
  }
  const auto p = item.points;
  for (size_t i = 2; i + 1 < p.size(); i += 2) {
    if (p[i] != p[i - 2] && p[i + 1] != p[i - 1] && !std::isnan(p[i]) && !std::isnan(p[i - 2])) return false;
  }
  return true;
}

std::vector<float> CairoPainter::snapped(std::span<const float> points, double width) const {
  const bool isOdd = width > 0 && std::lround(std::fmax(width * scale_, 1)) % 2 != 0;
  std::vector<float> result(points.begin(), points.end());
  for (float& value : result) {
    const double place = value * scale_;
    value = static_cast<float>((isOdd ? std::floor(place) + 0.5 : std::round(place)) / scale_);
  }
  return result;
}

void CairoPainter::path(const Item& item, bool closes) {
  Paint paint = item.paint;
  std::span<const float> points = item.points;
  std::vector<float> onPixels;
  if (isCrisp(item)) {
    if (paint.width > 0) paint.width = static_cast<float>(std::round(std::fmax(paint.width * scale_, 1)) / scale_);
    points = onPixels = snapped(points, paint.width);
  }
  if (lines_ && !closes && !paint.fill.isVisible()) {
    if (!paint.stroke.isVisible() || paint.width <= 0) return;
    return lines_->add(points, paint, clip_);
  }
  flushLines();
  addPath(points, closes);
  fillAndStroke(paint);
}

void CairoPainter::addPath(std::span<const float> points, bool closes) {
  bool isOpen = false;
  for (size_t i = 0; i + 1 < points.size(); i += 2) {
    if (std::isnan(points[i])) {
      if (closes && isOpen) cairo_.close_path(context_);
      isOpen = false;
      continue;
    }
    (isOpen ? cairo_.line_to : cairo_.move_to)(context_, points[i], points[i + 1]);
    isOpen = true;
  }
  if (closes && isOpen) cairo_.close_path(context_);
}

/// What is painted by `paints` bypasses the context.
template <class Paints>
void CairoPainter::onBitmap(Paints paints) {
  cairo_surface_t* surface = cairo_.get_target(context_);
  cairo_.surface_flush(surface);
  paints();
  cairo_.surface_mark_dirty(surface);
}

void CairoPainter::source(Rgba color) {
  cairo_.set_source_rgba(context_, color.red / 255.0, color.green / 255.0, color.blue / 255.0, color.alpha / 255.0);
}

void CairoPainter::fillAndStroke(const Paint& paint) {
  if (paint.fill.isVisible()) {
    source(paint.fill);
    paint.stroke.isVisible() ? cairo_.fill_preserve(context_) : cairo_.fill(context_);
  }
  if (paint.stroke.isVisible() && paint.width > 0) {
    double dashes[4];
    for (int i = 0; i < paint.dash.count; ++i) dashes[i] = paint.dash.lengths[i];
    cairo_.set_dash(context_, dashes, paint.dash.count, 0);
    cairo_.set_line_width(context_, paint.width);
    source(paint.stroke);
    cairo_.stroke(context_);
  }
  cairo_.new_path(context_);
}

void CairoPainter::addMarker(const drawing::MarkerOutline& outline, double x, double y) {
  if (outline.radius > 0) {
    cairo_.new_sub_path(context_);
    cairo_.arc(context_, x, y, outline.radius, 0, 2 * std::numbers::pi);
    cairo_.close_path(context_);
    return;
  }
  for (const auto& piece : outline.pieces) {
    for (size_t k = 0; k < piece.size(); ++k) {
      (k == 0 ? cairo_.move_to : cairo_.line_to)(context_, x + piece[k].x, y + piece[k].y);
    }
    if (outline.isClosed) cairo_.close_path(context_);
  }
}

/// Markers of one colour may make one path; others cover each other one by one.
void CairoPainter::markers(const Item& item) {
  const drawing::MarkerOutline outline = drawing::markerOutline(*item.marker);
  Paint paint = item.paint;
  if (!outline.isClosed) paint.fill = {};
  const double reach = (item.marker->size + paint.width) * scale_;
  if (bitmap_ != nullptr && MarkerStamps::pays(item.points.size() / 2, reach)) {
    return stampMarkers(item, outline, paint);
  }
  const bool isOnePath = bitmap_ == nullptr && (!paint.fill.isVisible() || !paint.stroke.isVisible());
  for (size_t i = 0; i + 1 < item.points.size(); i += 2) {
    addMarker(outline, item.points[i], item.points[i + 1]);
    if (!isOnePath) fillAndStroke(paint);
  }
  if (isOnePath) fillAndStroke(paint);
}

void CairoPainter::stampMarkers(const Item& item, const drawing::MarkerOutline& outline, const Paint& paint) {
  const double reach = (item.marker->size + paint.width) * scale_;
  MarkerStamps stamps(cairo_, reach, [&](cairo_t* context) {
    cairo_.scale(context, scale_, scale_);
    CairoPainter painter(cairo_, context, scale_, nullptr);
    painter.addMarker(outline, 0, 0);
    painter.fillAndStroke(paint);
  });
  const drawing::Rect clip{clip_.left * scale_, clip_.top * scale_, clip_.right * scale_, clip_.bottom * scale_};
  onBitmap([&] {
    for (size_t i = 0; i + 1 < item.points.size(); i += 2) {
      stamps.paint(*bitmap_, drawing::Vec2{item.points[i], item.points[i + 1]} * scale_, clip);
    }
  });
}

void CairoPainter::text(const Item& item) {
  const drawing::Text& text = *item.text;
  const double share = text.anchor == drawing::Anchor::start ? 0 : text.anchor == drawing::Anchor::middle ? 0.5 : 1;
  cairo_.save(context_);
  cairo_.translate(context_, item.points[0], item.points[1]);
  cairo_.rotate(context_, text.angle * std::numbers::pi / 180);
  source(text.color);
  const bool isPainted = needsLayout(cairo_, text.text) && paintLaidOut(cairo_, context_, text.text, text.size, share);
  if (!isPainted) plainText(text, share);
  cairo_.restore(context_);
  cairo_.new_path(context_);
}

void CairoPainter::plainText(const drawing::Text& text, double share) {
  cairo_.set_font_size(context_, text.size);
  cairo_text_extents_t extents{};
  cairo_.text_extents(context_, text.text.c_str(), &extents);
  cairo_.move_to(context_, -share * extents.x_advance, 0);
  cairo_.show_text(context_, text.text.c_str());
}

/// OPTIMIZATION: in documents lines and markers end by themselves before the clip does, and without
/// it a document of many of them takes a quarter less time.
void CairoPainter::clip(const Item& item) {
  const auto p = item.points;
  clip_ = {p[0], p[1], p[2], p[3]};
  cairo_.save(context_);
  if (bitmap_ == nullptr) return;
  cairo_.rectangle(context_, p[0], p[1], p[2] - p[0], p[3] - p[1]);
  cairo_.clip(context_);
}

}  // namespace kelo::pictures::native
