// Distances are those in the view, where both axes count alike. Tested by
// tests/figures/interaction_test.cpp.
#include "figures/tip.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace kelo::figures {
namespace {

constexpr int64_t kFewPoints = 1024;

/// The search for the nearest point over several lines.
class Nearest {
 public:
  Nearest(const PlotData& plot, const PlotArea& area, ViewPoint place) : plot_(plot), area_(area), place_(place) {}

  void include(int64_t line, std::span<const Point> points, int64_t firstIndex) {
    for (size_t k = 0; k < points.size(); ++k) {
      const Point& point = points[k];
      if (!plot_.xlims.contains(point.x) || !plot_.ylims.contains(point.y)) continue;
      const ViewPoint at = area_.placeOf(point, plot_.xlims, plot_.ylims);
      const double square = squareOf(at.x - place_.x, at.y - place_.y);
      const Tip found{line, firstIndex + static_cast<int64_t>(k), point, at};
      if (!(square < nearest_) && !(square == nearest_ && isBefore(found))) continue;
      nearest_ = square;
      tip_ = found;
    }
  }

  /// The square of the least distance at which a point within these extents can be seen; infinite
  /// when none can.
  double squareTo(const PlotExtent& extent) const {
    const auto [x, y] = extent;
    if (!(x.lower <= plot_.xlims.upper && x.upper >= plot_.xlims.lower)) return HUGE_VAL;
    if (!(y.lower <= plot_.ylims.upper && y.upper >= plot_.ylims.lower)) return HUGE_VAL;
    const ViewPoint low = area_.placeOf({x.lower, y.upper}, plot_.xlims, plot_.ylims);
    const ViewPoint high = area_.placeOf({x.upper, y.lower}, plot_.xlims, plot_.ylims);
    const double dx = std::max({low.x - place_.x, place_.x - high.x, 0.0});
    const double dy = std::max({low.y - place_.y, place_.y - high.y, 0.0});
    return squareOf(dx, dy);
  }
  bool isFar(double square) const { return square == HUGE_VAL || square > nearest_ * kRoundingRoom; }

  const std::optional<Tip>& tip() const { return tip_; }

 private:
  static constexpr double kRoundingRoom = 1 + 1e-9;
  static double squareOf(double dx, double dy) { return dx * dx + dy * dy; }
  bool isBefore(const Tip& found) const { return tip_ && found.line == tip_->line && found.index < tip_->index; }

  const PlotData& plot_;
  const PlotArea& area_;
  const ViewPoint place_;
  double nearest_ = HUGE_VAL;
  std::optional<Tip> tip_;
};

}  // namespace

std::optional<Tip> TipFinder::find(const PlotData& plot, const PlotArea& area, ViewPoint place) {
  forgetOthers(plot);
  Nearest nearest(plot, area, place);
  for (size_t n = 0; n < plot.lines.size(); ++n) {
    const Points& points = plot.lines[n].points;
    const auto line = static_cast<int64_t>(n);
    if (points.size() <= kFewPoints) {
      nearest.include(line, points.values(), 0);
      continue;
    }
    const PointIndex& index = indices_.try_emplace(points.identity(), points).first->second;
    index.search([&](const PlotExtent& extent) { return nearest.squareTo(extent); },
                 [&](double square) { return nearest.isFar(square); },
                 [&](int64_t first, int64_t count) {
                   nearest.include(
                       line, points.values().subspan(static_cast<size_t>(first), static_cast<size_t>(count)), first);
                 });
  }
  return nearest.tip();
}

void TipFinder::forgetOthers(const PlotData& plot) {
  if (indices_.empty()) return;
  std::set<const void*> present;
  for (const Line& line : plot.lines) present.insert(line.points.identity());
  std::erase_if(indices_, [&](const auto& entry) { return !present.contains(entry.first); });
}

}  // namespace kelo::figures
