#include "figures/surf_data.h"

#include <iterator>

#include "figures/data_limits.h"

namespace kelo::figures {
namespace {

constexpr Axis kAxes[] = {Axis::x, Axis::y, Axis::z};

/// To write, or of a constant surface to read.
template <class State, class Surface>
State stateOf(Surface& surface, Axis axis) {
  if (axis == Axis::x) return {surface.xlims, surface.autoXLimits, surface.autoXTicks, surface.xTicks};
  if (axis == Axis::y) return {surface.ylims, surface.autoYLimits, surface.autoYTicks, surface.yTicks};
  return {surface.zlims, surface.autoZLimits, surface.autoZTicks, surface.zTicks};
}

}  // namespace

SurfData::SurfData(std::vector<Surface> newSurfaces) : surfaces(std::move(newSurfaces)) {
  for (const Axis which : kAxes) setAutoLimits(which, true);
}

AxisState SurfData::axis(Axis axis) { return stateOf<AxisState>(*this, axis); }
AxisReading SurfData::axis(Axis axis) const { return stateOf<AxisReading>(*this, axis); }

void SurfData::setAutoLimits(Axis which, bool isAuto) {
  AxisState state = axis(which);
  state.autoLimits = isAuto;
  if (!isAuto) return;
  state.limits = limitsFromSurfaces(surfaces, which);
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
