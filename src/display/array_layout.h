// How the rows and columns of an array are spread over the console: blocks of columns that fit side
// by side, pages of the third and further dimensions, and the place where the shown tail begins.
#pragma once

#include <cstdint>
#include <optional>

#include "display/display_parameters.h"
#include "values/numeric_array.h"

namespace kelo {

/// Rows of output that are shown at most (the last block or page is completed).
inline constexpr int64_t kMaxNumOfLines = 500;

/// Columns that fit side by side; nothing when not even one does, or for a content without columns.
///
/// texts  the characters to be shown, whose widest one sets the width; null for numbers
std::optional<int64_t> columnsPerBlock(const CharArray* texts, const DisplayParameters& parameters,
                                       DisplayContentType contentType);

/// Invariant: every block but the last has `columnsPerBlock` columns, the last has `lastWidth`.
struct ArrayLayout {
  /// REQUIRES: the size has no zero length, columnsPerBlock >= 1
  ArrayLayout(const SizeVector& size, int64_t columnsPerBlock);

  int64_t firstColumn(int64_t block) const { return block * columnsPerBlock; }
  int64_t endColumn(int64_t block) const;

  int64_t rows, columns, columnsPerBlock;
  int64_t pages, blocks, lastWidth;
  int64_t startPage = 0, startBlock = 0, startRow = 0;
};

}  // namespace kelo
