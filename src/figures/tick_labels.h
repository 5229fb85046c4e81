// The texts along an axis: which ticks get a label, what it says, and the power of ten that all
// labels leave out.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "figures/axis.h"
#include "platform/text_measure.h"

namespace kelo::figures {

/// A number with n digits: below 1 in magnitude n - 1 after the point, else n significant ones; no
/// grouping. n >= 1
std::string numberText(int n, double x);

/// The power of ten that the labels of such ticks leave out: 0 where a label has at most three
/// digits before the point.
int axisPower(const std::vector<double>& ticks);

struct TickLabel {
  double tick;
  double along;  ///< points from the lower end of the axis
  std::string text;
};

struct TickLabels {
  std::vector<TickLabel> labels;
  int power = 0;  ///< the labels are to be multiplied by ten to this power; shown once unless 0
};

/// How much room labels take.
struct LabelMeasure {
  const platform::TextMeasure& text;
  std::optional<double> lineHeight;  ///< of an axis that runs upwards, where labels stand one above the other
  enum class Digits {
    fitting,  ///< as many as the axis has room for
    needed,   ///< of those no more than place every tick to half a percent of the axis, at least 3
  };
  Digits digits = Digits::fitting;  ///< of automatic ticks; manual ones have 6
};

/// The labels of an axis `length` points long. Ticks outside the limits have none; two that fall on
/// one place have one; automatic ones are thinned where they come too close.
TickLabels tickLabels(const AxisReading& axis, double length, const LabelMeasure& measure);

}  // namespace kelo::figures
