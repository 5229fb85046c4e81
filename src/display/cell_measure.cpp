// Cells of a text, character by character. A character is a grapheme cluster and takes what the
// widest of its code points takes, so that a base with its marks, or a family of emoji joined to
// one picture, counts once.
#include "display/cell_measure.h"

#include <utf8proc.h>

#include <algorithm>

#include "values/character.h"

namespace kelo {

namespace {

constexpr char32_t kEmojiVariation = 0xFE0F;

bool isRegionalIndicator(char32_t c) { return c >= 0x1F1E6 && c <= 0x1F1FF; }

int64_t cellsOf(char32_t c) {
  if (c == kEmojiVariation || isRegionalIndicator(c)) return 2;  // a flag is a pair of indicators
  return std::max(utf8proc_charwidth(static_cast<utf8proc_int32_t>(c)), 0);
}

bool isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7f; });
}

}  // namespace

int64_t CellMeasure::cells(std::string_view utf8) {
  if (isPlain(utf8)) return static_cast<int64_t>(utf8.size());
  int64_t total = 0;
  std::vector<char32_t> codePoints;
  for (const Character character : charactersOf(utf8)) {
    codePoints.clear();
    character.appendCodePointsTo(codePoints);
    int64_t widest = 0;
    for (const char32_t c : codePoints) widest = std::max(widest, cellsOf(c));
    total += widest;
  }
  return total;
}

double CellMeasure::width(std::string_view utf8) const { return kPointsPerCell * static_cast<double>(cells(utf8)); }

const CellMeasure& CellMeasure::shared() {
  static const CellMeasure measure;
  return measure;
}

}  // namespace kelo
