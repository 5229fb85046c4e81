// Numbers as the rows of text that num2str gives.
#pragma once

#include "values/numeric_array.h"

namespace kelo::builtins {

/// Whole numbers bare, others with the digits of the console; columns two blanks apart, pages side
/// by side.
CharArray numbersAsText(const NumericArray& array, int nDigits);

}  // namespace kelo::builtins
