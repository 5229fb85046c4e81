// Statistics that hang on the order of a slice's elements. Each is given its own copy of the
// elements, which it disorders.
#pragma once

#include <span>

#include "values/numbers.h"

namespace kelo::builtins {

/// The order of sorting: real numbers by value, complex ones by magnitude, then by angle. No NaN
/// stands in any order.
inline bool isBefore(double a, double b) { return a < b; }
bool isBefore(ComplexDouble a, ComplexDouble b);

/// The middle element, or the mean of the two middle ones. NaN when there is none, or when some
/// element is NaN.
double median(std::span<double> x);
ComplexDouble median(std::span<ComplexDouble> x);

/// The most frequent element, the first in order of equally frequent ones; NaN is passed over. NaN,
/// 0 times, when there is none.
template <class T>
struct Mode {
  T value;
  int64_t count;
};
Mode<double> mode(std::span<double> x);
Mode<ComplexDouble> mode(std::span<ComplexDouble> x);

/// The quantiles of the given fractions (0 to 1, times `scale`), NaN passed over: element i of n,
/// from 1, is the one of (i - 0.5) / n; linear between, the first and the last beyond the ends. NaN
/// when there is no element.
void quantiles(std::span<double> x, std::span<const double> fractions, double scale, double* out);

}  // namespace kelo::builtins
