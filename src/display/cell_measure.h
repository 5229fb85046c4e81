// The measure of a terminal: every character takes a whole number of cells.
#pragma once

#include <cstdint>

#include "platform/text_measure.h"

namespace kelo {

/// A cell is 8 points wide. A character takes one cell; two if it is a wide East Asian character,
/// an emoji or a flag; none if it is a combining mark or a control character.
class CellMeasure : public platform::TextMeasure {
 public:
  static constexpr double kPointsPerCell = 8;
  double width(std::string_view utf8) const override;

  static int64_t cells(std::string_view utf8);
  /// The one that displays use unless they are given another.
  static const CellMeasure& shared();
};

}  // namespace kelo
