// The point of a plot that a finger means.
#pragma once

#include <optional>

#include "figures/drawing/geometry.h"
#include "figures/figure_panel.h"

namespace kelo::session {

struct FigureTip {
  int64_t line;   ///< from 0
  int64_t index;  ///< of the point, from 0
  double x, y;    ///< its data
  double px, py;  ///< its place in the view
};

/// The point inside the limits that is nearest on the screen; nothing without a plot, or without such a point.
std::optional<FigureTip> nearestPoint(const figures::Figure& figure, drawing::Vec2 place, drawing::Size view);

}  // namespace kelo::session
