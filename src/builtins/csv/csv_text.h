// Numbers as comma-separated text.
//
// A line is a row; blank lines are none. Cells are separated by commas, semicolons and blanks: a
// run of blanks counts as one separator, and so does a comma or semicolon with the blanks around
// it. Nothing between two commas is a 0, and so is nothing after the last one.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "values/numeric_array.h"

namespace kelo::builtins {

/// Rows and columns to read, counted from 0, the last ones included. What is outside need not be
/// numbers.
struct CsvRange {
  int64_t firstRow = 0, firstColumn = 0;
  int64_t lastRow = INT64_MAX, lastColumn = INT64_MAX;
};

/// The numbers of a text, each the double nearest to what is written; a short row is filled with
/// zeros. Beyond the range of doubles: Inf, or 0. Absent when there is something else than numbers;
/// 0 x 0 when there is nothing.
///
/// progress  called every few million characters with the part that has been read, from 0 to 1
std::optional<DoubleArray> arrayOfCsv(const std::string& text, const CsvRange& range,
                                      const std::function<void(double part)>& progress = nullptr);

/// A line per row. Each number has the fewest digits from which it can be read back. REQUIRES: a
/// matrix
std::string csvOfArray(const NumericArray& matrix);

}  // namespace kelo::builtins
