// Comparisons of many doubles or characters at a time.
//
// OPTIMIZATION: what the general loop of operators gives for them, in loops that are compiled for
// wide vectors; text is compared by words as long as it is ASCII.
#pragma once

#include <optional>

#include "values/numeric_array.h"
#include "values/operators.h"

namespace kelo {

/// a op b for a comparison of two arrays of doubles, or an equality of two of characters that have
/// one size or of which one is a scalar. Absent for all else, for two scalars and empty arrays too.
/// throws Problem "Incompatible array sizes"
std::optional<LogicalArray> comparedAtOnce(BinaryOp op, const NumericArray& a, const NumericArray& b);

}  // namespace kelo
