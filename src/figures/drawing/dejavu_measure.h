// The measure of the font of figures, DejaVu Sans, from a table of its widths: needs no font
// library, and places text alike on every machine.
#pragma once

#include "platform/font_measure.h"

namespace kelo::drawing {

class DejavuMeasure : public platform::FontMeasure {
 public:
  double width(std::string_view utf8, double size) const override;
  double capHeight(double size) const override { return 0.73 * size; }
  double lineHeight(double size) const override { return 1.25 * size; }
  double descent(double size) const override { return 0.24 * size; }

  static const DejavuMeasure& shared();
};

}  // namespace kelo::drawing
