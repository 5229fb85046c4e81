#include "figures/surf_data.h"

#include <iterator>

#include "figures/data_limits.h"

namespace kelo::figures {
namespace {

constexpr Axis kAxes[] = {Axis::x, Axis::y, Axis::z};

}  // namespace

SurfData::SurfData(std::vector<Surface> newSurfaces) : surfaces(std::move(newSurfaces)) {
  for (const Axis which : kAxes) setAutoLimits(which, true);
}

AxisState SurfData::axis(Axis axis) {
  if (axis == Axis::x) return {xlims, autoXLimits, autoXTicks, xTicks};
  if (axis == Axis::y) return {ylims, autoYLimits, autoYTicks, yTicks};
  return {zlims, autoZLimits, autoZTicks, zTicks};
}

AxisReading SurfData::axis(Axis axis) const {
  if (axis == Axis::x) return {xlims, autoXLimits, autoXTicks, xTicks};
  if (axis == Axis::y) return {ylims, autoYLimits, autoYTicks, yTicks};
  return {zlims, autoZLimits, autoZTicks, zTicks};
}

void SurfData::setLimits(Axis which, Limits limits) {
  AxisState state = axis(which);
  state.limits = limits;
  state.refreshTicks();
  state.autoLimits = false;
}

void SurfData::setAutoLimits(Axis which, bool isAuto) {
  AxisState state = axis(which);
  state.autoLimits = isAuto;
  if (!isAuto) return;
  state.limits = limitsFromSurfaces(surfaces, which);
  state.refreshTicks();
}

void SurfData::setTicks(Axis which, std::vector<double> ticks) {
  axis(which).ticks = std::move(ticks);
  axis(which).autoTicks = false;
}

void SurfData::setAutoTicks(Axis which, bool isAuto) {
  AxisState state = axis(which);
  state.autoTicks = isAuto;
  state.refreshTicks();
}

void SurfData::append(std::vector<Surface> newSurfaces) {
  surfaces.insert(surfaces.end(), std::make_move_iterator(newSurfaces.begin()),
                  std::make_move_iterator(newSurfaces.end()));
  for (const Axis which : kAxes) {
    if (axis(which).autoLimits) setAutoLimits(which, true);
  }
}

}  // namespace kelo::figures
