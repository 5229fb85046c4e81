// What polynomials, signals and calculus share: coefficient vectors.
//
// A polynomial is a vector of coefficients with that of the highest power first. Operands that hold
// only real numbers are worked on in doubles, whatever their records are; as soon as one of them
// holds a complex number, all are complex.
#pragma once

#include "interpreter/reader.h"
#include "values/numbers.h"

namespace kelo::builtins {

/// A vector of numbers in any orientation, or an array without elements, moved out of the
/// arguments.
inline NumericArray takeVector(Call& call, int position, const Wording& words) {
  NumericArray vector = read::takeNumeric(call, position, words);
  if (!vector.isEmpty() && !vector.has(Property::vectorInNumbers)) throw words.complaint(call);
  return vector;
}

/// `count` elements in the orientation of a vector.
inline SizeVector alike(const SizeVector& vector, int64_t count) {
  return vector.isColumn() && !vector.isScalar() ? SizeVector(count, 1) : SizeVector(1, count);
}

/// The coefficients without the zeros in front; the constant 0 keeps one.
template <class T>
TypedArray<T> withoutLeadingZeros(const TypedArray<T>& p) {
  const auto all = p.values();
  size_t first = 0;
  while (first + 1 < all.size() && isZero(all[first])) ++first;
  return TypedArray<T>::row(all.subspan(first));
}

}  // namespace kelo::builtins
