// A figure as text: dots of braille characters in the plot, ticks, labels and axes as characters
// around it.
#pragma once

#include <string>

#include "figures/drawing/theme.h"
#include "figures/figure_panel.h"

namespace kelo::terminal {

struct CellPictureOptions {
  int columns = 80;
  int rows = 22;
  bool colour = false;
  const drawing::Theme* theme = &drawing::Theme::light();
};

/// Lines of text, each with a line end, none wider than the columns. Empty for no figure.
std::string cellPicture(const figures::Figure& figure, const CellPictureOptions& options);

}  // namespace kelo::terminal
