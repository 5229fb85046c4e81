// From data to points along one axis. In halves where the width of the limits passes the doubles.
#pragma once

#include <cmath>

#include "figures/axis.h"

namespace kelo::drawing {

class AxisScale {
 public:
  /// `from` and `to`: where the lower and the upper limit stand, in points.
  AxisScale(const figures::Limits& limits, double from, double to) : from_(from), length_(to - from) {
    const double width = limits.width();
    half_ = !std::isfinite(width);
    lower_ = half_ ? limits.lower / 2 : limits.lower;
    width_ = half_ ? limits.upper / 2 - lower_ : width;
    if (width_ == 0) {  // everything that is drawn stands in the middle
      width_ = 1;
      from_ += length_ / 2;
    }
    rate_ = length_ / width_;
    divides_ = !std::isfinite(rate_);
  }

  /// May be far outside or not finite, as the value is.
  double operator()(double value) const {
    if (!half_ && !divides_) return from_ + (value - lower_) * rate_;
    return from_ + ((half_ ? value / 2 : value) - lower_) / width_ * length_;
  }
  /// The value that stands there; for what searches data by place.
  double inverse(double place) const {
    const double value = lower_ + (place - from_) / length_ * width_;
    return half_ ? value * 2 : value;
  }

 private:
  double from_, length_, lower_, width_, rate_;
  bool half_, divides_;
};

}  // namespace kelo::drawing
