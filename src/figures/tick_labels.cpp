// Tested by tests/figures/tick_labels_test.cpp.
#include "figures/tick_labels.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "display/number_format.h"
#include "figures/plot_area.h"

namespace kelo::figures {
namespace {

constexpr int kDigitsOfManualTicks = 6;
constexpr int kMostDigits = 8;
constexpr int kFewestDigits = 3;
constexpr double kCrowded = 1.5;  // of the extent of a label, from centre to centre
constexpr double kLooseGap = 1.25;
constexpr double kTightGap = 1.1;

/// The most digits that fit into a part of the room between two ticks.
int digitsThatFit(const AxisReading& axis, double length, const platform::TextMeasure& measure) {
  const double room = length / static_cast<double>(axis.ticks.size() + 1);
  for (int n = kMostDigits; n > kFewestDigits; --n) {
    if (measure.width("0." + std::string(static_cast<size_t>(n - 1), '0')) <= room) return n;
  }
  return kFewestDigits;
}

/// A tick without the power that the labels leave out. In two steps for the smallest numbers, whose
/// power passes the doubles.
double scaled(double tick, int power) {
  if (power >= -300) return tick * std::pow(10.0, -power);
  return tick * 1e300 * std::pow(10.0, -power - 300);
}

/// Texts of n digits are off by half a percent of the axis at most, so no reader sees it.
bool isExactEnough(const AxisReading& axis, int n, int power) {
  const double most = 0.005000001 * (scaled(axis.ticks.back(), power) - scaled(axis.ticks.front(), power));
  return std::all_of(axis.ticks.begin(), axis.ticks.end(), [&](double tick) {
    const double x = scaled(tick, power);
    return std::fabs(std::strtod(numberText(n, x).c_str(), nullptr) - x) <= most;
  });
}

int digitsOf(const AxisReading& axis, double length, const LabelMeasure& measure, int power) {
  if (!axis.autoTicks) return kDigitsOfManualTicks;
  const int most = digitsThatFit(axis, length, measure.text);
  if (measure.digits == LabelMeasure::Digits::fitting || axis.ticks.empty()) return most;
  int n = kFewestDigits;
  while (n < most && !isExactEnough(axis, n, power)) ++n;
  return n;
}

double extentOf(const std::vector<TickLabel>& labels, const LabelMeasure& measure) {
  double extent = measure.lineHeight.value_or(0);
  for (const TickLabel& label : labels) {
    if (!measure.lineHeight) extent = std::max(extent, measure.text.width(label.text));
  }
  return extent;
}

/// Keeps the last label and, from the first on, those that stand apart from their neighbours.
void thin(std::vector<TickLabel>& labels, double extent) {
  if (labels.size() < 2) return;
  const bool isCrowded = labels[1].along - labels[0].along < kCrowded * extent;
  const double gap = extent * (isCrowded ? kLooseGap : kTightGap);
  const double last = labels.back().along;
  double kept = -HUGE_VAL;
  const auto isDropped = [&](const TickLabel& label) {
    if (label.along == last) return false;
    if (label.along - kept < gap || last - label.along < gap) return true;
    kept = label.along;
    return false;
  };
  std::erase_if(labels, isDropped);
}

}  // namespace

std::string numberText(int n, double x) {
  int decimals = n - 1;
  if (std::fabs(x) >= 1 && std::isfinite(x)) {
    const std::string rounded = fmt::format("{:.{}e}", x, n - 1);
    decimals = std::max(0, n - 1 - std::stoi(rounded.substr(rounded.find('e') + 1)));
  }
  std::string text = fmt::format("{:.{}f}", x, decimals);
  const bool isZero = text.find_first_not_of("-0.") == std::string::npos;
  return isZero && text.front() == '-' ? text.substr(1) : text;
}

int axisPower(const std::vector<double>& ticks) {
  if (ticks.empty()) return 0;
  const double first = std::fabs(ticks.front()), last = std::fabs(ticks.back());
  const int exponent = decimalExponent(first > last ? first : last);
  return exponent < -1 ? exponent + 2 : exponent > 1 ? exponent - 2 : 0;
}

TickLabels tickLabels(const AxisReading& axis, double length, const LabelMeasure& measure) {
  TickLabels result;
  result.power = axisPower(axis.ticks);
  const int n = digitsOf(axis, length, measure, result.power);
  for (const double tick : axis.ticks) {
    const double along = PlotArea::shareOf(tick, axis.limits) * length;
    const bool isDoubled = !result.labels.empty() && result.labels.back().along == along;
    if (!(along >= 0 && along <= length) || isDoubled) continue;
    result.labels.push_back({tick, along, numberText(n, scaled(tick, result.power))});
  }
  if (axis.autoTicks) thin(result.labels, extentOf(result.labels, measure));
  return result;
}

}  // namespace kelo::figures
