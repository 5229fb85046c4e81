// Columns, blocks and the tail.
#include "display/array_layout.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <string>

#include "display/number_format.h"

namespace kelo {

namespace {

constexpr double kHorizontalTextInsets = 0;
constexpr double kMargin = 20;
constexpr std::string_view kReferenceText = "0";

// Width of the widest character. The plain ones, which are nearly all, are measured once each.
double widestCharacter(const CharArray& texts, const platform::TextMeasure& font) {
  double widest = 0;
  std::string text;
  const auto measure = [&](Character character) {
    text.clear();
    character.appendUtf8To(text);
    widest = std::max(widest, font.width(text));
  };
  std::bitset<128> seen;
  uint32_t last = 0;
  for (const Character character : texts.values()) {
    const uint32_t word = character.word();
    if (word < seen.size()) {
      seen.set(word);
    } else if (word != last) {
      measure(character);
      last = word;
    }
  }
  for (uint32_t word = 0; word < seen.size(); ++word) {
    if (seen[word]) measure(Character(word));
  }
  return widest;
}

// Positions that one column takes: those of -1.0, or of -1.0-1.0i, with the two blanks after it.
std::optional<int> fieldLength(DisplayContentType contentType, int nDigits) {
  switch (contentType) {
    case DisplayContentType::doubleArray:
    case DisplayContentType::intArray:
      return nDigits + 4;
    case DisplayContentType::complexArray:
      return 2 * nDigits + 9;
    case DisplayContentType::logicalArray:
      return 3;
    case DisplayContentType::charArray:
      return 1;
    default:
      return std::nullopt;
  }
}

int64_t quotientRoundedUp(int64_t a, int64_t b) { return (a + b - 1) / b; }

}  // namespace

std::optional<int64_t> columnsPerBlock(const CharArray* texts, const DisplayParameters& parameters,
                                       DisplayContentType contentType) {
  const std::optional<int> field = fieldLength(contentType, boundedDigits(parameters.nDigits));
  if (!field) return std::nullopt;
  double characterWidth = texts ? widestCharacter(*texts, *parameters.font) : 0;
  if (!(characterWidth > 0)) characterWidth = parameters.font->width(kReferenceText);
  const double usable = parameters.consoleViewWidth - kHorizontalTextInsets - kMargin;
  const double count = std::floor(usable / (characterWidth * *field));
  if (!(count >= 1)) return std::nullopt;
  constexpr double kEnough = 1 << 30;
  return static_cast<int64_t>(std::min(count, kEnough));
}

ArrayLayout::ArrayLayout(const SizeVector& size, int64_t perBlock)
    : rows(size.rows()), columns(size.columns()), columnsPerBlock(perBlock) {
  pages = size.numElements() / (rows * columns);
  // NOTE: intended: single precision, which loses whole blocks of more than 2^24 columns. It must
  // not name columns that are not there, so endColumn and the last line here hold it within them.
  blocks = static_cast<int64_t>(std::ceil(static_cast<float>(columns) / static_cast<float>(columnsPerBlock)));
  blocks = std::clamp<int64_t>(blocks, 1, quotientRoundedUp(columns, columnsPerBlock));
  lastWidth = columns % columnsPerBlock == 0 ? columnsPerBlock : columns % columnsPerBlock;

  if (rows > kMaxNumOfLines) {
    startPage = pages - 1;
    startBlock = blocks - 1;
    startRow = rows - kMaxNumOfLines;
  } else if (blocks * rows > kMaxNumOfLines) {
    startPage = pages - 1;
    startBlock = blocks - quotientRoundedUp(kMaxNumOfLines, rows);
  } else if (pages * blocks * rows > kMaxNumOfLines) {
    startPage = pages - quotientRoundedUp(kMaxNumOfLines, blocks * rows);
  }
}

int64_t ArrayLayout::endColumn(int64_t block) const {
  return firstColumn(block) + (block == blocks - 1 ? lastWidth : columnsPerBlock);
}

}  // namespace kelo
