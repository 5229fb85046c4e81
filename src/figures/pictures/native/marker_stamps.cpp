#include "figures/pictures/native/marker_stamps.h"

#include <algorithm>
#include <cmath>

namespace kelo::pictures::native {
namespace {

/// A premultiplied colour over an opaque one; channels side by side.
uint32_t over(uint32_t stamp, uint32_t pixel) {
  const uint32_t kept = 256 - (stamp >> 24) - (stamp >> 31);
  const uint32_t redBlue = (pixel & 0xff00ff) * kept >> 8 & 0xff00ff;
  const uint32_t green = (pixel & 0x00ff00) * kept >> 8 & 0x00ff00;
  return (stamp & 0xffffff) + (redBlue | green);
}

}  // namespace

MarkerStamps::MarkerStamps(const CairoLibrary& cairo, double reach, Painter painter)
    : cairo_(cairo),
      half_(static_cast<int>(std::ceil(reach)) + 1),
      side_(2 * half_ + 1),
      painter_(std::move(painter)) {}

const MarkerStamps::Stamp& MarkerStamps::stampFor(int phaseX, int phaseY) {
  Stamp& stamp = stamps_[phaseY][phaseX];
  if (!stamp.empty()) return stamp;
  stamp.resize(static_cast<size_t>(side_ * side_));
  auto* bytes = reinterpret_cast<unsigned char*>(stamp.data());
  cairo_surface_t* surface = cairo_.image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, side_, side_, side_ * 4);
  cairo_t* context = cairo_.create(surface);
  cairo_.translate(context, half_ + (phaseX + 0.5) / kPhases, half_ + (phaseY + 0.5) / kPhases);
  painter_(context);
  cairo_.destroy(context);
  cairo_.surface_finish(surface);
  cairo_.surface_destroy(surface);
  return stamp;
}

void MarkerStamps::paint(Bitmap& bitmap, drawing::Vec2 at, const drawing::Rect& clip) {
  const double column = std::floor(at.x), row = std::floor(at.y);
  const Stamp& stamp = stampFor(static_cast<int>((at.x - column) * kPhases), static_cast<int>((at.y - row) * kPhases));
  const int left = static_cast<int>(column) - half_, top = static_cast<int>(row) - half_;
  const int firstX = std::max(left, static_cast<int>(std::lround(std::max(clip.left, 0.0))));
  const int firstY = std::max(top, static_cast<int>(std::lround(std::max(clip.top, 0.0))));
  const int endX = std::min(left + side_, static_cast<int>(std::lround(std::min<double>(clip.right, bitmap.width))));
  const int endY = std::min(top + side_, static_cast<int>(std::lround(std::min<double>(clip.bottom, bitmap.height))));
  for (int y = firstY; y < endY; ++y) {
    const uint32_t* from = stamp.data() + (y - top) * side_ - left;
    uint32_t* to = bitmap.pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(bitmap.width);
    for (int x = firstX; x < endX; ++x) {
      if (from[x] != 0) to[x] = over(from[x], to[x]);
    }
  }
}

}  // namespace kelo::pictures::native
