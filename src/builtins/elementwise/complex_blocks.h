// Square roots and logarithms that are complex, of many numbers.
#pragma once

#include "values/numeric_array.h"

namespace kelo::builtins {

/// The principal square roots, bit for bit those of the C library.
ComplexDoubleArray complexRoots(const ComplexDoubleArray& z);
/// The same of numbers without an imaginary part.
ComplexDoubleArray complexRoots(const DoubleArray& x);
/// The principal logarithms of numbers without an imaginary part.
ComplexDoubleArray complexLogarithms(const DoubleArray& x);

}  // namespace kelo::builtins
