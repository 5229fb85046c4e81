// What a display depends on besides its content.
#pragma once

#include "display/cell_measure.h"

namespace kelo {

/// `Display::Parameters`.
struct DisplayParameters {
  double consoleViewWidth = 80 * CellMeasure::kPointsPerCell;  ///< in points
  int nDigits = 5;                                             ///< significant digits: 5, 8, 12 or 16
  const platform::TextMeasure* font = &CellMeasure::shared();  ///< measures in the console's font; outlives the display

  friend bool operator==(const DisplayParameters&, const DisplayParameters&) = default;
};

/// What a display shows, `Display::DisplayContentType`.
enum class DisplayContentType : uint8_t {
  doubleArray,
  intArray,
  complexArray,
  charArray,
  structArray,
  error,
  inputText,
  disp,
  anonymousFunc,
  builtInFunc,
  userDefinedFunc,
  localFunc,
  logicalArray,
};

}  // namespace kelo
