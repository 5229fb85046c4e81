// The properties of arrays: one loop over the elements for each, ended by the first element that
// decides.
//
// The finite-only rows are written as the search for a finite element that breaks the rule, each as
// two comparisons, so that Inf and NaN need no test of their own.
#include <algorithm>
#include <cmath>
#include <limits>

#include "messages/fatal_fault.h"
#include "values/numeric_array.h"

namespace kelo {
namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();
constexpr double kTwoTo63 = 9223372036854775808.0;

template <class T, size_t N, class F>
bool none(std::span<const T, N> values, F breaks) {
  return std::none_of(values.begin(), values.end(), breaks);
}

// The same for a test that does not throw; a block at a time, in loops that the compiler
// vectorises.
template <size_t N, class F>
bool noneInBlocks(std::span<const double, N> values, F breaks) {
  constexpr size_t kBlock = 128;
  size_t i = 0;
  for (; i + kBlock <= values.size(); i += kBlock) {
    int64_t some = 0;
    for (size_t k = 0; k < kBlock; ++k) some |= static_cast<int64_t>(breaks(values[i + k]));
    if (some != 0) return false;
  }
  return std::none_of(values.begin() + static_cast<std::ptrdiff_t>(i), values.end(), breaks);
}

bool isFinite(double x) { return std::fabs(x) <= kGreatest; }
bool isFinite(ComplexDouble z) { return isFinite(z.real) && isFinite(z.imaginary); }

// NOTE: intended. The test is a cast to 64 bits and back, and a number that has no place there is a
// fault.
bool hasFraction(double x) {
  if (!isFinite(x)) return false;
  if (std::fabs(x) >= kTwoTo63) throwFatalFault("whole-number test beyond 64-bit integers");
  return static_cast<double>(static_cast<int64_t>(x)) != x;
}

// N is 1 for the scalar, which is asked by far the most: its loops come down to one comparison.
template <size_t N>
bool holds(std::span<const double, N> x, Property property) {
  switch (property) {
    case Property::allZeroMagnitudes: return noneInBlocks(x, [](double v) { return v != 0 && isFinite(v); });
    case Property::allZeroOrPositiveRealParts:
      return noneInBlocks(x, [](double v) { return v < 0 && v >= -kGreatest; });
    case Property::allZeroOrNegativeRealParts: return noneInBlocks(x, [](double v) { return v > 0 && v <= kGreatest; });
    case Property::allPositiveRealParts: return noneInBlocks(x, [](double v) { return v <= 0 && v >= -kGreatest; });
    case Property::allNegativeRealParts: return noneInBlocks(x, [](double v) { return v >= 0 && v <= kGreatest; });
    case Property::allIntegerRealParts: return none(x, hasFraction);
    case Property::hasSomeInfs: return !noneInBlocks(x, [](double v) { return std::isinf(v); });
    case Property::hasSomeNaNs: return !noneInBlocks(x, [](double v) { return std::isnan(v); });
    case Property::allWellDefinedRealParts: return noneInBlocks(x, [](double v) { return !isFinite(v); });
    default: return true;  // allReals
  }
}

bool holds(std::span<const ComplexDouble> z, Property property) {
  using Z = ComplexDouble;
  switch (property) {
    case Property::allZeroMagnitudes: return none(z, [](Z v) { return isFinite(v) && v != Z{}; });
    case Property::allZeroOrPositiveRealParts: return none(z, [](Z v) { return v.real < 0 && isFinite(v); });
    case Property::allZeroOrNegativeRealParts: return none(z, [](Z v) { return v.real > 0 && isFinite(v); });
    case Property::allPositiveRealParts: return none(z, [](Z v) { return v.real <= 0 && isFinite(v); });
    case Property::allNegativeRealParts: return none(z, [](Z v) { return v.real >= 0 && isFinite(v); });
    case Property::allIntegerRealParts: return none(z, [](Z v) { return isFinite(v) && hasFraction(v.real); });
    case Property::hasSomeInfs: return !none(z, [](Z v) { return v.hasInf(); });
    case Property::hasSomeNaNs: return !none(z, [](Z v) { return v.hasNaN(); });
    case Property::allWellDefinedRealParts: return none(z, [](Z v) { return !isFinite(v); });
    default: return none(z, [](Z v) { return v.imaginary != 0; });  // allReals
  }
}

bool holds(std::span<const int64_t> n, Property property) {
  switch (property) {
    case Property::allZeroMagnitudes: return none(n, [](int64_t v) { return v != 0; });
    case Property::allZeroOrPositiveRealParts: return none(n, [](int64_t v) { return v < 0; });
    case Property::allZeroOrNegativeRealParts: return none(n, [](int64_t v) { return v > 0; });
    case Property::allPositiveRealParts: return none(n, [](int64_t v) { return v <= 0; });
    case Property::allNegativeRealParts: return none(n, [](int64_t v) { return v >= 0; });
    case Property::hasSomeInfs:
    case Property::hasSomeNaNs: return false;
    default: return true;
  }
}

bool holds(std::span<const bool> b, Property property) {
  switch (property) {
    case Property::allZeroMagnitudes:
    case Property::allZeroOrNegativeRealParts: return none(b, [](bool v) { return v; });
    case Property::allPositiveRealParts: return none(b, [](bool v) { return !v; });
    case Property::allNegativeRealParts: return b.empty();
    case Property::hasSomeInfs:
    case Property::hasSomeNaNs: return false;
    default: return true;
  }
}

bool holds(std::span<const Character> text, Property property) {
  switch (property) {
    case Property::allZeroMagnitudes:
    case Property::allZeroOrNegativeRealParts: return none(text, [](Character c) { return c.word() != 0; });
    case Property::allNegativeRealParts:  // NOTE: intended. Not even of a text without characters
    case Property::hasSomeInfs:
    case Property::hasSomeNaNs: return false;
    default: return true;
  }
}

// The shapes stand in the enumeration after the other properties: for each the plain case, the
// case in numbers and the case in characters. The last shape has no plain case.

bool isInChars(Property shape) {
  switch (shape) {
    case Property::scalarInChars:
    case Property::rowVectorInChars:
    case Property::colVectorInChars:
    case Property::vectorInChars:
    case Property::matrixInChars:
    case Property::squareMatrixInChars: return true;
    default: return false;
  }
}

bool hasShape(const SizeVector& size, Property shape) {
  if (shape <= Property::scalarInChars) return size.isScalar();
  if (shape <= Property::rowVectorInChars) return size.isRow();
  if (shape <= Property::colVectorInChars) return size.isColumn();
  if (shape <= Property::vectorInChars) return size.isVector();
  if (shape <= Property::matrixInChars) return size.isMatrix();
  return size.isMatrix() && size.rows() == size.columns();
}

}  // namespace

// A number by itself has every shape. A conversion of numbers to characters never fails and keeps
// the size, so the variants of a shape differ for text only.
bool NumericArray::has(Property property) const {
  if (isDoubleScalar()) {
    const double x = asDouble().scalar();
    return property >= Property::nonempty || holds(std::span<const double, 1>(&x, 1), property);
  }
  if (property == Property::nonempty) return !isEmpty();
  if (property == Property::allReals && !is(Kind::Complex)) return true;  // without asking for elements
  if (property < Property::nonempty) {
    return visit([property](const auto& array) { return holds(array.values(), property); });
  }
  if (!is(Kind::Char) || isInChars(property)) return hasShape(size(), property);
  const auto inNumbers = sizeInNumbers(asChar());
  return inNumbers && hasShape(*inNumbers, property);
}

bool NumericArray::has(std::initializer_list<Property> properties) const {
  return std::all_of(properties.begin(), properties.end(), [this](Property property) { return has(property); });
}

}  // namespace kelo
