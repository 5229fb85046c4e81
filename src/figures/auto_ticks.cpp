// The search for a spacing. The width is split into ten parts, then nine, and so on; the size of a
// part, rounded up to a whole number of its own power of ten, is a candidate, and the first with at
// most five intervals is taken. Tested by tests/figures/axes_test.cpp.
#include "figures/auto_ticks.h"

#include <cmath>
#include <limits>

namespace kelo::figures {
namespace {

constexpr int kFirstDivisor = 10;
constexpr double kMostIntervals = 5;
constexpr double kFarthest = 1e10;  // from 0, in spacings

/// A spacing of `quantity` times ten to the power `exponent`.
struct Spacing {
  double quantity;
  int exponent;
};

Spacing roundedUp(double step) {
  const double magnitude = std::fabs(step);
  if (!(magnitude >= std::numeric_limits<double>::denorm_min())) return {0, 0};
  const double logarithm = std::log10(magnitude);
  int exponent = static_cast<int>(magnitude < 1 ? std::ceil(logarithm) : std::floor(logarithm));
  double mantissa = std::pow(10.0, logarithm - exponent);
  if (mantissa < 1) {
    exponent -= 1;
    mantissa *= 10;
  }
  return {std::ceil(mantissa), exponent};
}

Spacing chosenSpacing(const Limits& limits, double* scaledLower) {
  Spacing spacing{};
  for (int divisor = kFirstDivisor; divisor > 0; --divisor) {
    spacing = roundedUp(limits.width() / divisor);
    const double scale = std::pow(10.0, -spacing.exponent);
    *scaledLower = scale * limits.lower;
    const double intervals = std::floor((scale * limits.upper - *scaledLower) / spacing.quantity);
    if (!(intervals > kMostIntervals)) break;
  }
  return spacing;
}

}  // namespace

std::vector<double> autoTicks(const Limits& limits) {
  const auto [lower, upper] = limits;
  std::vector<double> ticks = {lower};
  double scaledLower = lower;
  const bool hasWidth = upper > lower && std::isfinite(upper - lower);
  const Spacing spacing = hasWidth ? chosenSpacing(limits, &scaledLower) : Spacing{};
  const double quantity = spacing.quantity;
  if (quantity != 0 && !(std::fabs(scaledLower) > quantity * kFarthest)) {
    const double remainder = std::fmod(std::fabs(scaledLower), quantity);
    const double power = std::pow(10.0, spacing.exponent);
    const double first = (lower < 0 ? scaledLower + remainder : scaledLower - remainder) * power;
    if (limits.contains(first)) ticks.push_back(first);
    const double increment = quantity * power;
    double previous = first;
    for (double y = first + increment; y < upper && y != previous; previous = y, y += increment) {
      if (limits.contains(y)) ticks.push_back(y);
    }
  }
  ticks.push_back(upper);
  return ticks;
}

}  // namespace kelo::figures
