// NumericArray: an array of one of five kinds, and the five records themselves.
//
// `double` is the ordinary form of all numbers. `int` holds counts and positions that the system
// itself produces; the user sees it as "double". `logical` comes from comparisons, `complexDouble`
// holds complex numbers, `char` text. A query such as allReals answers what the array holds, not
// what its record is.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "values/character.h"
#include "values/complex_double.h"
#include "values/typed_array.h"

namespace kelo {

using DoubleArray = TypedArray<double>;
using IntArray = TypedArray<int64_t>;
using LogicalArray = TypedArray<bool>;
using ComplexDoubleArray = TypedArray<ComplexDouble>;
using CharArray = TypedArray<Character>;

/// The kind numbers, used in tables.
enum class Kind : uint8_t { Double, Int, Logical, Complex, Char };
inline constexpr int kKindCount = 5;

template <class T> struct KindOf;
template <> struct KindOf<double> { static constexpr Kind value = Kind::Double; };
template <> struct KindOf<int64_t> { static constexpr Kind value = Kind::Int; };
template <> struct KindOf<bool> { static constexpr Kind value = Kind::Logical; };
template <> struct KindOf<ComplexDouble> { static constexpr Kind value = Kind::Complex; };
template <> struct KindOf<Character> { static constexpr Kind value = Kind::Char; };

/// "double", "double", "logical", "complex", "char": an IntArray is a double to the user.
const char* kindName(Kind kind);

/// Predicates over an array; `has` holds when all of a list hold. Rows 0 to 5 look at the finite
/// elements only, so an array with none satisfies them all. NOTE: intended.
enum class Property : uint8_t {
  allZeroMagnitudes, allZeroOrPositiveRealParts, allZeroOrNegativeRealParts, allPositiveRealParts, allNegativeRealParts,
  allIntegerRealParts, hasSomeInfs, hasSomeNaNs, allWellDefinedRealParts, allReals, nonempty,
  scalar, scalarInNumbers, scalarInChars, rowVector, rowVectorInNumbers, rowVectorInChars,
  colVector, colVectorInNumbers, colVectorInChars, vector, vectorInNumbers, vectorInChars,
  matrix, matrixInNumbers, matrixInChars, squareMatrixInNumbers, squareMatrixInChars,
};

class NumericArray {
 public:
  NumericArray() : NumericArray(DoubleArray()) {}  ///< double 0 x 0
  explicit NumericArray(double scalar) : NumericArray(DoubleArray(scalar)) {}
  NumericArray(DoubleArray array) : cell_(std::move(array)), kind_(Kind::Double) {}
  NumericArray(IntArray array) : cell_(std::move(array)), kind_(Kind::Int) {}
  NumericArray(LogicalArray array) : cell_(std::move(array)), kind_(Kind::Logical) {}
  NumericArray(ComplexDoubleArray array) : cell_(std::move(array)), kind_(Kind::Complex) {}
  NumericArray(CharArray array) : cell_(std::move(array)), kind_(Kind::Char) {}

  Kind kind() const { return kind_; }
  bool is(Kind kind) const { return kind_ == kind; }
  const SizeVector& size() const { return cell_.size(); }
  int64_t numElements() const { return cell_.numElements(); }
  bool isScalar() const { return cell_.isScalar(); }
  bool isEmpty() const { return cell_.isEmpty(); }
  bool isDoubleScalar() const { return kind_ == Kind::Double && cell_.isScalar(); }
  bool isUnshared() const { return cell_.isUnshared(); }
  const void* identity() const { return cell_.identity(); }

  /// The record, without conversion. REQUIRES: kind() is that of T
  template <class T> const TypedArray<T>& as() const { return static_cast<const TypedArray<T>&>(cell_); }
  template <class T> TypedArray<T>& as() { return static_cast<TypedArray<T>&>(cell_); }
  const DoubleArray& asDouble() const { return as<double>(); }
  const IntArray& asInt() const { return as<int64_t>(); }
  const LogicalArray& asLogical() const { return as<bool>(); }
  const ComplexDoubleArray& asComplex() const { return as<ComplexDouble>(); }
  const CharArray& asChar() const { return as<Character>(); }
  /// Moves the record out. REQUIRES: kind() is that of T
  template <class T> TypedArray<T> take() && { return std::move(as<T>()); }

  /// Calls f with the record, of whatever kind.
  template <class F> decltype(auto) visit(F&& f) const&;
  /// The same with the record moved out.
  template <class F> decltype(auto) visit(F&& f) &&;

  /// Conversions, each keeping the size except from char (see sizeInNumbers). Complex numbers lose
  /// their imaginary parts on the way to real kinds without a word, but have no logical counterpart
  /// unless they are real. The && forms move when the kind is right already. throws Problem where a
  /// value has no counterpart; FatalFault for a finite number beyond 64-bit integers
  DoubleArray toDoubleArray() const&;
  DoubleArray toDoubleArray() &&;
  /// Truncates towards zero. Inf and -Inf give the largest and the smallest integer; NaN is
  /// refused.
  IntArray toIntArray() const;
  LogicalArray toLogicalArray() const;
  ComplexDoubleArray toComplexArray() const&;
  ComplexDoubleArray toComplexArray() &&;
  /// Each number as one UTF-16 unit: truncated and brought into 0..65535; NaN is 0.
  CharArray toCharArray() const;
  /// The conversion that a kind names.
  NumericArray toKind(Kind kind) const&;
  NumericArray toKind(Kind kind) &&;

  /// Whether all of the properties hold; asked in order, up to the first that does not. throws
  /// FatalFault from allIntegerRealParts for a finite magnitude from 2^63 on. NOTE: intended
  bool has(std::initializer_list<Property> properties) const;
  bool has(Property property) const;

  /// "double (2 x 3)".
  std::string kindLabel() const;
  /// 0 x 0 of the same kind.
  NumericArray emptyLike() const;

 private:
  friend class Storable;
  ArrayCell cell_;  // a TypedArray of the kind; the typed arrays add no members of their own
  Kind kind_;
  uint8_t form_ = 0;  // a Storable's, which keeps it here; 0 in every array
};
static_assert(sizeof(DoubleArray) == sizeof(ArrayCell) && sizeof(ComplexDoubleArray) == sizeof(ArrayCell));

template <class F>
decltype(auto) NumericArray::visit(F&& f) const& {
  switch (kind_) {
    case Kind::Int: return f(asInt());
    case Kind::Logical: return f(asLogical());
    case Kind::Complex: return f(asComplex());
    case Kind::Char: return f(asChar());
    case Kind::Double: break;
  }
  return f(asDouble());
}

template <class F>
decltype(auto) NumericArray::visit(F&& f) && {
  switch (kind_) {
    case Kind::Int: return f(std::move(as<int64_t>()));
    case Kind::Logical: return f(std::move(as<bool>()));
    case Kind::Complex: return f(std::move(as<ComplexDouble>()));
    case Kind::Char: return f(std::move(as<Character>()));
    case Kind::Double: break;
  }
  return f(std::move(as<double>()));
}

/// The size that text has once it is numbers. Each character gives one number per UTF-16 unit,
/// column by column, so plain text keeps its size and a row of characters of two units becomes two
/// rows. Without elements: 0 x 0. Absent when the columns give different counts: such text does not
/// convert.
std::optional<SizeVector> sizeInNumbers(const CharArray& text);

/// The text of a char array as UTF-8, in storage order, and a row of characters from UTF-8. An
/// empty text is 0 x 0.
std::string toUtf8(const CharArray& text);
CharArray charRow(std::string_view utf8);

}  // namespace kelo
