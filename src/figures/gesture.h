// What fingers, mouse and keys do to a figure that is shown.
#pragma once

#include "figures/figure_panel.h"
#include "figures/plot_area.h"

namespace kelo::figures {

/// The view that a gesture was made on, and the plot's area in it (of a plot only).
struct GestureView {
  double width, height;  ///< points
  PlotArea plotArea;
};

// Each changes a figure by the gesture. Limits of a plot that move are no longer automatic; its
// ticks follow when they are. What would leave the doubles, or an axis without width, changes
// nothing. Without a figure nothing happens.

/// Moves the data by so many points: to the right and downwards.
void pan(Figure& figure, const GestureView& view, double dx, double dy);
/// Spreads the data about a place of the view, each direction by its own factor; a surface by their
/// mean.
void pinch(Figure& figure, const GestureView& view, ViewPoint center, double scaleX, double scaleY);
/// Spreads the data about the middle.
void zoom(Figure& figure, const GestureView& view, double scale);
/// Turns a surface: half a turn for the width of the view about its z axis, and as much for the
/// height about the horizontal axis of the view, from straight above to straight below. A plot
/// stays.
void rotate(Figure& figure, const GestureView& view, double dx, double dy);
/// Automatic limits again, or the first view of a surface.
void reset(Figure& figure);

}  // namespace kelo::figures
