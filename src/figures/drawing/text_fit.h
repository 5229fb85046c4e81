// Texts of a figure made to fit: whatever a user typed becomes lines without control characters
// that are no wider than their place; what is too long ends in "…".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/font_measure.h"

namespace kelo::drawing {

/// Bytes that are no UTF-8 give U+FFFD each.
std::u32string codePoints(std::string_view utf8);

/// One line: control characters and line ends become blanks, those at the ends go.
std::string cleanLine(std::string_view utf8);

/// The clean line, cut to a width.
std::string fitted(std::string_view utf8, const platform::FontMeasure& measure, double size, double maxWidth);

/// At most so many clean lines, broken at line ends and, where needed, at blanks; the last one is
/// cut.
std::vector<std::string> wrapped(std::string_view utf8, const platform::FontMeasure& measure, double size,
                                 double maxWidth, size_t maxLines);

}  // namespace kelo::drawing
