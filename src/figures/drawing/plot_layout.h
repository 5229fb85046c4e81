// Where everything around a plot's box stands: title, labels, the texts at the ticks, the powers of
// ten. Nothing overlaps and nothing is cut: texts that find no room are shortened, and left out
// where even that does not help.
#pragma once

#include <string>
#include <vector>

#include "figures/drawing/sheet.h"
#include "figures/plot_data.h"
#include "figures/tick_labels.h"

namespace kelo::drawing {

struct PlotLayout {
  Rect area;  ///< the box of the axes
  figures::TickLabels xTicks, yTicks;
  std::vector<std::string> title;
  std::string xLabel, yLabel;
  double titleBaseline = 0;   ///< of its first line
  double xTickBaseline = 0;
  double xLabelBaseline = 0;  ///< also of the power of x
  double yTickRight = 0;      ///< where the texts at the ticks of y end
  double yLabelX = 0;         ///< the baseline of the turned label
  double yPowerBaseline = 0;
};

PlotLayout layOut(const figures::PlotData& plot, const Sheet& sheet);

}  // namespace kelo::drawing
