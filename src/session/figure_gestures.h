// What fingers do to a figure: moving, pinching, turning.
#pragma once

#include "figures/drawing/geometry.h"
#include "figures/figure_panel.h"

namespace kelo::session {

/// A view of so many points, and in it a gesture. Lengths in points, y downwards.
struct Gesture {
  enum class Kind { pan, pinch, rotate, zoom, reset };
  Kind kind;
  drawing::Size view;
  double dx = 0, dy = 0;          ///< of pan and rotate
  double x = 0, y = 0;            ///< what stays in its place in a pinch
  double scaleX = 1, scaleY = 1;  ///< of a pinch, and both the scale of a zoom; above 1 shows less, larger
};

/// The figure after a gesture; the same where the gesture means nothing to it.
///
/// plot     pan and pinch set the limits, which are manual from then on; reset makes them automatic
/// surface  pan moves, pinch and zoom scale, rotate turns; reset gives the first view back
figures::Figure moved(const figures::Figure& figure, const Gesture& gesture);

}  // namespace kelo::session
