// Least and greatest coordinates of points: one pass over memory for all coordinates of a point.
#pragma once

#include <limits>

#include "figures/line.h"
#include "figures/surf_data.h"

namespace kelo::figures {

/// The span of some values; none yet when `lower` exceeds `upper`.
template <class T>
struct Extent {
  T lower = std::numeric_limits<T>::infinity();
  T upper = -std::numeric_limits<T>::infinity();

  bool isEmpty() const { return lower > upper; }
  void include(T value) {
    if (value < lower) lower = value;
    if (value > upper) upper = value;
  }
  void include(const Extent& other) {
    if (other.lower < lower) lower = other.lower;
    if (other.upper > upper) upper = other.upper;
  }
};

struct PlotExtent {
  Extent<double> x, y;
};
struct SurfaceExtent {
  Extent<float> x, y, z;
};

/// Coordinates that are NaN or infinite are skipped, each by itself.
PlotExtent finiteExtent(std::span<const Point> points);
SurfaceExtent finiteExtent(std::span<const SCNVector3> points);

}  // namespace kelo::figures
