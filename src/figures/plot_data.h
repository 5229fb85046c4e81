// PlotData: the whole state of a 2-D figure, as a plain value.
//
// Its laws: limits and ticks that are automatic follow the data by the rules of the setters here
// and of AxisState; whoever writes a limit, a tick or a flag goes through them. Points are shared,
// so a copy costs little.
#pragma once

#include "figures/axis.h"
#include "figures/line.h"

namespace kelo::figures {

struct Legend {
  enum class Position : uint8_t { topRight, topLeft, bottomLeft, bottomRight };

  Line::Style borderLineType = Line::Style::solid;
  Color borderColor = ColorRole::opaqueSeparator;
  double borderWidth = 0.5;
  double lineLength = 80;
  double contentToPlotViewMargin = 10;
  Position position = Position::topRight;
  Color fillColor = ColorRole::systemBackground;
  double rowHeight = 20;

  friend bool operator==(const Legend&, const Legend&) = default;
};

struct Grids {
  Line::Style lineType = Line::Style::solid;
  Color color = ColorRole::opaqueSeparator;
  double width = 0.5;

  friend bool operator==(const Grids&, const Grids&) = default;
};

class PlotData {
 public:
  /// Limits from the data on both axes, ticks from the limits. throws Problem, an internal fault
  explicit PlotData(std::vector<Line> lines = {});

  std::vector<Line> lines;
  bool shouldShowLegend = false;
  bool shouldShowGrid = true;
  bool shouldHold = false;
  std::optional<std::string> xLabel;
  std::optional<std::string> yLabel;
  std::optional<std::string> title;
  Legend legendAttributes;
  Grids gridAttributes;
  Limits xlims;
  bool autoXLimits = true;
  bool autoXTicks = true;
  std::vector<double> xTickPositions;
  Limits ylims;
  bool autoYLimits = true;
  bool autoYTicks = true;
  std::vector<double> yTickPositions;

  /// REQUIRES: x or y
  AxisState axis(Axis axis);
  AxisReading axis(Axis axis) const;

  /// True: the axis's limits come from the data, inside the other axis's limits when those are
  /// manual; when both are automatic both are computed anew. Recomputes also when the flag was true
  /// before.
  void setAutoLimits(Axis axis, bool isAuto);
  /// What a held plot does with new lines: automatic limits and ticks follow.
  void append(std::vector<Line> newLines);

  friend bool operator==(const PlotData&, const PlotData&) = default;

 private:
  void fitBoth();
  void fitInsideOther(Axis axis);
};

}  // namespace kelo::figures
