#include "figures/plot_data.h"

#include <iterator>

#include "figures/data_limits.h"

namespace kelo::figures {
namespace {

Axis otherThan(Axis axis) { return axis == Axis::x ? Axis::y : Axis::x; }

}  // namespace

PlotData::PlotData(std::vector<Line> newLines) : lines(std::move(newLines)) { fitBoth(); }

AxisState PlotData::axis(Axis axis) {
  if (axis == Axis::x) return {xlims, autoXLimits, autoXTicks, xTickPositions};
  return {ylims, autoYLimits, autoYTicks, yTickPositions};
}

AxisReading PlotData::axis(Axis axis) const {
  if (axis == Axis::x) return {xlims, autoXLimits, autoXTicks, xTickPositions};
  return {ylims, autoYLimits, autoYTicks, yTickPositions};
}

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

void PlotData::setLimits(Axis which, Limits limits) {
  AxisState state = axis(which);
  state.limits = limits;
  state.refreshTicks();
  state.autoLimits = false;
}

void PlotData::setAutoLimits(Axis which, bool isAuto) {
  axis(which).autoLimits = isAuto;
  if (!isAuto) return;
  if (axis(otherThan(which)).autoLimits)
    fitBoth();
  else
    fitInsideOther(which);
}

void PlotData::setTicks(Axis which, std::vector<double> ticks) {
  axis(which).ticks = std::move(ticks);
  axis(which).autoTicks = false;
}

void PlotData::setAutoTicks(Axis which, bool isAuto) {
  AxisState state = axis(which);
  state.autoTicks = isAuto;
  state.refreshTicks();
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
