// The argument readers of the functions of matrices.
#pragma once

#include <optional>

#include "interpreter/reader.h"

namespace kelo::builtins::linear_algebra {

/// What a matrix has to be besides an array of numbers with two dimensions.
enum class Matrix { any, square, finite, squareFinite };
enum class Text { refused, asNumbers };

/// The first argument, moved out of the call. Text that is let through becomes numbers.
NumericArray takeMatrix(Call& call, Matrix demand, Text text, const Wording& words);

/// The second argument as a tolerance: a finite real number from 0 on; absent without a second
/// argument.
std::optional<double> tolerance(const Call& call);

/// Whether an argument is the number 0.
bool isZero(const Storable& value);

}  // namespace kelo::builtins::linear_algebra
