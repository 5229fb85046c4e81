#include "figures/plot_data.h"

#include <iterator>

#include "figures/data_limits.h"

namespace kelo::figures {
namespace {

Axis otherThan(Axis axis) { return axis == Axis::x ? Axis::y : Axis::x; }

/// To write, or of a constant plot to read.
template <class State, class Plot>
State stateOf(Plot& plot, Axis axis) {
  if (axis == Axis::x) return {plot.xlims, plot.autoXLimits, plot.autoXTicks, plot.xTickPositions};
  return {plot.ylims, plot.autoYLimits, plot.autoYTicks, plot.yTickPositions};
}

}  // namespace

PlotData::PlotData(std::vector<Line> newLines) : lines(std::move(newLines)) { fitBoth(); }

AxisState PlotData::axis(Axis axis) { return stateOf<AxisState>(*this, axis); }
AxisReading PlotData::axis(Axis axis) const { return stateOf<AxisReading>(*this, axis); }

void PlotData::fitBoth() {
  const PlotLimits limits = limitsFromData(lines);
  xlims = limits.x;
  ylims = limits.y;
  axis(Axis::x).refreshTicks();
  axis(Axis::y).refreshTicks();
}

void PlotData::fitInsideOther(Axis which) {
  AxisState state = axis(which);
  state.limits = limitsFromWindow(lines, which, axis(otherThan(which)).limits);
  state.refreshTicks();
}

void PlotData::setAutoLimits(Axis which, bool isAuto) {
  axis(which).autoLimits = isAuto;
  if (!isAuto) return;
  if (axis(otherThan(which)).autoLimits)
    fitBoth();
  else
    fitInsideOther(which);
}

void PlotData::append(std::vector<Line> newLines) {
  lines.insert(lines.end(), std::make_move_iterator(newLines.begin()), std::make_move_iterator(newLines.end()));
  if (autoXLimits && autoYLimits)
    fitBoth();
  else if (autoXLimits)
    fitInsideOther(Axis::x);
  else if (autoYLimits)
    fitInsideOther(Axis::y);
}

}  // namespace kelo::figures
