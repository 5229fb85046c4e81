// Where the data of a plot lies in a view: what turns places in the view into data and back.
#pragma once

#include "figures/plot_data.h"

namespace kelo::figures {

/// In points, from the view's upper left corner; y grows downwards.
struct ViewPoint {
  double x, y;
};

/// The rectangle within the axes, in points.
struct PlotArea {
  double left, top, width, height;

  /// NaN or infinite where the point or the limits are.
  ViewPoint placeOf(const Point& point, const Limits& x, const Limits& y) const {
    return {left + shareOf(point.x, x) * width, top + (1 - shareOf(point.y, y)) * height};
  }
  /// 0 at the lower limit, 1 at the upper one. In halves, so that no difference of doubles
  /// overflows.
  static double shareOf(double value, const Limits& limits) {
    if (limits.lower == limits.upper) return 0.5;  // all stands in the middle
    return (value / 2 - limits.lower / 2) / (limits.upper / 2 - limits.lower / 2);
  }
};

}  // namespace kelo::figures
