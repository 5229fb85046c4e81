// Char matrices as rows of text, and back.
#pragma once

#include <vector>

#include "values/numeric_array.h"

namespace kelo::builtins {

using TextRow = std::vector<Character>;

/// The rows of a matrix. REQUIRES: a matrix
std::vector<TextRow> rowsOf(const CharArray& text);
/// The rows one below the other, the shorter ones filled with blanks. No rows, or none that has
/// characters: 0 x 0 for one row, else rows x 0.
CharArray stackedRows(const std::vector<TextRow>& rows);
/// The rows as lines of UTF-8, without a line feed at the end.
std::string linesOf(const CharArray& text);

}  // namespace kelo::builtins
