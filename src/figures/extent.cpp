// The coordinates of all points lie one after the other: x, y, x, y, ... A lane of the vectors
// sees every so manieth of them, always the same coordinate, and skips by a choice instead of a
// branch.
#include "figures/extent.h"

#include <cmath>

#include "platform/vector_clones.h"

namespace kelo::figures {
namespace {

/// Coordinates walked at once; a multiple of those of a point.
template <int kCoordinates> constexpr int kLanes = 8 * kCoordinates;

template <class T, int kCoordinates>
__attribute__((always_inline)) inline void include(const T* values, int64_t count, Extent<T>* extents) {
  constexpr int lanes = kLanes<kCoordinates>;
  constexpr T largest = std::numeric_limits<T>::max();
  constexpr T none = std::numeric_limits<T>::infinity();
  T lower[lanes], upper[lanes];
  for (int k = 0; k < lanes; ++k) {
    lower[k] = none;
    upper[k] = -none;
  }
  int64_t i = 0;
  for (; i + lanes <= count; i += lanes) {
    for (int k = 0; k < lanes; ++k) {
      const T value = values[i + k];
      const bool isFinite = std::fabs(value) <= largest;
      const T low = isFinite ? value : none;
      const T high = isFinite ? value : -none;
      lower[k] = low < lower[k] ? low : lower[k];
      upper[k] = high > upper[k] ? high : upper[k];
    }
  }
  for (int k = 0; k < lanes; ++k) extents[k % kCoordinates].include(Extent<T>{lower[k], upper[k]});
  for (; i < count; ++i) {
    if (std::isfinite(values[i])) extents[i % kCoordinates].include(values[i]);
  }
}

KELO_VECTOR_CLONES void includePlane(const double* values, int64_t count, Extent<double>* extents) {
  include<double, 2>(values, count, extents);
}

KELO_VECTOR_CLONES void includeSpace(const float* values, int64_t count, Extent<float>* extents) {
  include<float, 3>(values, count, extents);
}

}  // namespace

PlotExtent finiteExtent(std::span<const Point> points) {
  static_assert(sizeof(Point) == 2 * sizeof(double));
  Extent<double> extents[2];
  if (!points.empty()) includePlane(&points.front().x, 2 * static_cast<int64_t>(points.size()), extents);
  return {extents[0], extents[1]};
}

SurfaceExtent finiteExtent(std::span<const SCNVector3> points) {
  static_assert(sizeof(SCNVector3) == 3 * sizeof(float));
  Extent<float> extents[3];
  if (!points.empty()) includeSpace(&points.front().x, 3 * static_cast<int64_t>(points.size()), extents);
  return {extents[0], extents[1], extents[2]};
}

}  // namespace kelo::figures
