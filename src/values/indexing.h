// Reading, writing and deleting elements of arrays: A(i), A(i, j) = v, A(:, k) = [].
//
// The evaluator evaluates the subscripts, tells each its extent for `end` and ":", and makes an
// Index of each; the work is done here, alike for the five numeric records and for structure
// arrays. The plain case of one element of a double array has inline helpers that say false when
// anything is unusual; what they do is what the general operations do.
//
// With fewer subscripts than dimensions the last one runs over all dimensions that are left, taken
// as one.
#pragma once

#include <span>

#include "values/index.h"
#include "values/storable.h"

namespace kelo {

/// A(I) or A(I1, I2, ...). With one subscript the result has the shape of the index array, unless
/// that is a vector and A is one: then it lies as A does, a row first. With several, one dimension
/// per subscript.
///
/// throws  Problem: no subscript, `array` is no array, a subscript past its length
Storable readElements(const Storable& array, std::span<const Index> indices);

/// The positions, from 0, of the elements that a read selects, in its order, as a row. throws as
/// readElements
IntArray selectedPositions(const SizeVector& size, std::span<const Index> indices);

/// A(I) = B or A(I1, I2, ...) = B on the variable A itself, which is changed in place when nobody
/// else holds its elements. Numeric kinds are brought together first; an index past the end makes A
/// larger; a scalar B goes everywhere.
///
/// A grows by one subscript as a row when it is 0 x 0, a scalar or a row, as a column when it is a
/// column.
/// throws  Problem, and A is as it was: B or A is no array, kinds, fields or sizes do not agree, A
///         cannot grow so
void writeElements(Storable& target, std::span<const Index> indices, const Storable& value);

/// A(I) = [] or A(I1, I2, ...) = []. With one subscript a matrix becomes a row. With several, all
/// but one must select their whole dimension.
///
/// throws  Problem, and A is as it was
void deleteElements(Storable& target, std::span<const Index> indices);

/// The lengths that `count` subscripts see, and so the extent of `end` and ":" in each: the number
/// of elements for one.
inline std::vector<int64_t> indexExtents(const SizeVector& size, int64_t count) { return size.broughtTo(count); }

/// Position from 0 of a subscript from 1 in a dimension of this length; -1 when it is outside or
/// not whole.
inline int64_t plainPosition(double subscript, int64_t length) {
  if (!(subscript >= 1 && subscript <= static_cast<double>(length))) return -1;
  const auto whole = static_cast<int64_t>(subscript);
  return static_cast<double>(whole) == subscript && whole <= length ? whole - 1 : -1;
}
inline int64_t plainPosition(const SizeVector& size, double i, double j) {
  if (size.ndim() != 2) return -1;
  const int64_t row = plainPosition(i, size.rows());
  const int64_t column = plainPosition(j, size.columns());
  return row < 0 || column < 0 ? -1 : row + column * size.rows();
}

/// Writes a scalar of the array's own kind; an array that somebody else holds is copied first.
/// REQUIRES: the position is there
inline void putElement(NumericArray& array, int64_t position, const NumericArray& scalar) {
  switch (array.kind()) {
    case Kind::Double: array.as<double>().writable()[position] = scalar.asDouble().scalar(); break;
    case Kind::Logical: array.as<bool>().writable()[position] = scalar.asLogical().scalar(); break;
    case Kind::Char: array.as<Character>().writable()[position] = scalar.asChar().scalar(); break;
    case Kind::Int: array.as<int64_t>().writable()[position] = scalar.asInt().scalar(); break;
    case Kind::Complex: array.as<ComplexDouble>().writable()[position] = scalar.asComplex().scalar(); break;
  }
}

/// x(end + 1) = v on an unshared double vector of two elements or more; false in every other case.
bool appendScalar(NumericArray& a, double value);

/// One element of a double array by one or two scalar subscripts. False, and nothing is done, in
/// every other case, a write to shared elements and a subscript out of range included. A write just
/// past the end of a vector appends.
inline bool readScalar(const NumericArray& a, double i, double* out) {
  const int64_t position = a.is(Kind::Double) ? plainPosition(i, a.numElements()) : -1;
  if (position < 0) return false;
  *out = a.asDouble()[position];
  return true;
}
inline bool readScalar(const NumericArray& a, double i, double j, double* out) {
  const int64_t position = a.is(Kind::Double) ? plainPosition(a.size(), i, j) : -1;
  if (position < 0) return false;
  *out = a.asDouble()[position];
  return true;
}
inline bool writeScalar(NumericArray& a, double i, double value) {
  const int64_t position = a.is(Kind::Double) && a.isUnshared() ? plainPosition(i, a.numElements()) : -1;
  if (position < 0) return i == static_cast<double>(a.numElements()) + 1 && appendScalar(a, value);
  a.as<double>().writable()[position] = value;
  return true;
}
inline bool writeScalar(NumericArray& a, double i, double j, double value) {
  const int64_t position = a.is(Kind::Double) && a.isUnshared() ? plainPosition(a.size(), i, j) : -1;
  if (position < 0) return false;
  a.as<double>().writable()[position] = value;
  return true;
}

}  // namespace kelo
