#include "session/figure_tip.h"

#include <cmath>
#include <limits>

#include "figures/drawing/axis_scale.h"
#include "figures/drawing/drawing.h"

namespace kelo::session {

std::optional<FigureTip> nearestPoint(const figures::Figure& figure, drawing::Vec2 place, drawing::Size view) {
  const auto* plot = std::get_if<figures::PlotData>(&figure);
  if (plot == nullptr) return std::nullopt;
  drawing::DrawingOptions options;
  options.size = view;
  const drawing::Rect area = drawing::draw(*plot, options).plotArea;
  const drawing::AxisScale toX(plot->xlims, area.left, area.right), toY(plot->ylims, area.bottom, area.top);

  std::optional<FigureTip> nearest;
  double least = std::numeric_limits<double>::infinity();
  for (size_t line = 0; line < plot->lines.size(); ++line) {
    int64_t index = 0;
    for (const figures::Point& point : plot->lines[line].points.values()) {
      const int64_t here = index++;
      if (!plot->xlims.contains(point.x) || !plot->ylims.contains(point.y)) continue;
      const drawing::Vec2 there{toX(point.x), toY(point.y)};
      const double distance = std::hypot(there.x - place.x, there.y - place.y);
      if (!(distance < least)) continue;
      least = distance;
      nearest = FigureTip{static_cast<int64_t>(line), here, point.x, point.y, there.x, there.y};
    }
  }
  return nearest;
}

}  // namespace kelo::session
