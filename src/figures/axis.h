// What all axes have, whatever the figure: limits, ticks, and whether the two follow the data by
// themselves.
#pragma once

#include <cstdint>
#include <vector>

namespace kelo::figures {

enum class Axis : uint8_t { x, y, z };

/// Invariant: lower <= upper, both finite. They may be equal, where the data lies so far out that
/// nothing else fits.
struct Limits {
  double lower = 0;
  double upper = 1;

  double width() const { return upper - lower; }  ///< Inf when it passes the doubles
  bool contains(double x) const { return lower <= x && x <= upper; }
  friend bool operator==(const Limits&, const Limits&) = default;
};

/// The state of one axis of a figure, to read and write by axis instead of by field. What is the
/// same for plots and surfaces is done here; how limits follow the data they know.
struct AxisState {
  Limits& limits;
  bool& autoLimits;
  bool& autoTicks;
  std::vector<double>& ticks;  ///< as a command gave them, ascending; not clipped to the limits

  /// Manual limits; the ticks follow when they are automatic.
  void setLimits(Limits limits);
  /// Manual ticks, as they are. REQUIRES: ascending
  void setTicks(std::vector<double> ticks);
  /// True: the ticks are computed anew.
  void setAutoTicks(bool isAuto);
  /// Takes the ticks of the limits when the ticks are automatic.
  void refreshTicks();
};

/// The same to read.
struct AxisReading {
  const Limits& limits;
  bool autoLimits;
  bool autoTicks;
  const std::vector<double>& ticks;
};

/// throws  Problem (an internal fault) when lower exceeds upper
Limits checkedLimits(double lower, double upper);

}  // namespace kelo::figures
