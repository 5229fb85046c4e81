// Lines from the data that a plot command was given.
#pragma once

#include <vector>

#include "figures/line.h"
#include "values/numeric_array.h"

namespace kelo::builtins {

/// A line for each column of y, or one of a vector, over 1, 2, ...; none of an empty array. Complex
/// numbers lose their imaginary parts. throws Problem for more than two dimensions
std::vector<figures::Line> linesOverPositions(const NumericArray& y, int64_t ordinal);

/// Lines of a pair. x a vector: a line for each column of y, or for each row where the rows have
/// its length; else one for each column of both. Complex numbers lose their imaginary parts. throws
/// Problem
std::vector<figures::Line> linesOfPair(const NumericArray& x, const NumericArray& y);

/// The default colours of lines, by their running numbers from `first` on.
void colorInTurn(std::span<figures::Line> lines, int64_t first);

}  // namespace kelo::builtins
