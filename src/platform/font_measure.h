// The size of text in the font of figures, as an interface: what draws places text by it and knows
// no font.
#pragma once

#include <string_view>

namespace kelo::platform {

class FontMeasure {
 public:
  virtual ~FontMeasure() = default;
  /// Width of one line of text, in the unit of `size`.
  virtual double width(std::string_view utf8, double size) const = 0;
  /// Height of a digit and a capital letter above the baseline.
  virtual double capHeight(double size) const = 0;
  /// Distance between the baselines of two lines.
  virtual double lineHeight(double size) const = 0;
  /// What hangs below the baseline.
  virtual double descent(double size) const = 0;
};

}  // namespace kelo::platform
