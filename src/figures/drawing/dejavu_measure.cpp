#include "figures/drawing/dejavu_measure.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "figures/drawing/text_fit.h"

namespace kelo::drawing {
namespace {

struct WidthRange {
  uint32_t first;
  uint16_t width;  ///< of each, in 1/2048 of the size
  uint16_t count;
};

constexpr WidthRange kWidths[] = {
#include "figures/drawing/font_widths.inc"
};

/// A character outside the table takes so much for each cell of a terminal.
constexpr int kCellWidth = 1233;

int widthOf(char32_t c) {
  const auto* next = std::upper_bound(std::begin(kWidths), std::end(kWidths), c,
                                      [](char32_t code, const WidthRange& range) { return code < range.first; });
  if (next != std::begin(kWidths)) {
    const WidthRange& range = next[-1];
    if (c < range.first + range.count) return utf8proc_charwidth(static_cast<utf8proc_int32_t>(c)) ? range.width : 0;
  }
  return kCellWidth * std::max(utf8proc_charwidth(static_cast<utf8proc_int32_t>(c)), 0);
}

}  // namespace

double DejavuMeasure::width(std::string_view utf8, double size) const {
  int64_t total = 0;
  for (const char32_t c : codePoints(utf8)) total += widthOf(c);
  return static_cast<double>(total) / 2048 * size;
}

const DejavuMeasure& DejavuMeasure::shared() {
  static const DejavuMeasure measure;
  return measure;
}

}  // namespace kelo::drawing
