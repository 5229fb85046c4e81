// One vocabulary for both sorts of numbers, doubles and complex ones, so that a template can serve
// both, and the two ways of choosing between them for arrays: by what the arrays hold, and by their
// records.
#pragma once

#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "values/numeric_array.h"

namespace kelo {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();

template <class T>
inline constexpr bool kIsComplex = std::is_same_v<T, ComplexDouble>;

inline double conj(double x) { return x; }
inline double magnitudeOf(double x) { return std::fabs(x); }
inline double magnitudeOf(ComplexDouble z) { return z.magnitude(); }
inline bool isNaN(double x) { return std::isnan(x); }
inline bool isNaN(ComplexDouble z) { return z.hasNaN(); }
inline bool isZero(double x) { return x == 0; }
inline bool isZero(ComplexDouble z) { return z == ComplexDouble{}; }

/// f(arrays...) with all arrays of one kind, by what they hold: doubles where all are real numbers,
/// whatever the records are, else complex numbers. The arrays are moved in, so that what nobody
/// else holds may be overwritten.
template <class F, class... Arrays>
auto inCommonKind(F&& f, Arrays... arrays) {
  if ((arrays.has(Property::allReals) && ...)) return f(std::move(arrays).toDoubleArray()...);
  return f(std::move(arrays).toComplexArray()...);
}

/// f(array) by the record: complex numbers where it is a complex one, though all of them be real,
/// else doubles.
template <class F>
decltype(auto) inOwnKind(F&& f, const NumericArray& array) {
  if (array.is(Kind::Double)) return f(array.asDouble());
  if (array.is(Kind::Complex)) return f(array.asComplex());
  return f(array.toDoubleArray());
}

/// Text as its code points; other kinds stay as they are.
inline NumericArray charsToNumbers(NumericArray array) {
  return array.is(Kind::Char) ? NumericArray(std::move(array).toDoubleArray()) : array;
}

}  // namespace kelo
