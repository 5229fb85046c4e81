// What a register holds, as far as native code knows it.
#pragma once

#include <cstdint>
#include <vector>

#include "values/storable.h"

namespace kelo::native {

enum class Held : uint8_t {
  other,  ///< anything; it may be overwritten, but not read
  real, integer, logical, character, complex,
  array,  ///< numeric, and not a scalar
  alias,  ///< the array of another lane
};

/// What functions give.
inline bool isGiven(Held held) {
  return held == Held::real || held == Held::logical || held == Held::integer || held == Held::character;
}

struct Type {
  Held held = Held::other;
  Kind element = Kind::Double;  ///< of an array
  bool isMatrix = false;        ///< of an array: it has two dimensions
  int16_t source = -1;          ///< of an alias: the lane

  bool isWhole = false;     ///< of a real number: it is whole, or not finite
  bool isPlain = false;     ///< of a character: it is ASCII
  bool isWritable = false;  ///< of an array: nobody else holds it
  bool isChanged = false;   ///< the register does not hold it yet

  bool isArray() const { return held == Held::array || held == Held::alias; }
  /// Real numbers, logicals and characters, which operators treat as numbers.
  bool isReal() const { return held == Held::real || held == Held::logical || held == Held::character; }
  /// The same without characters, or with a whole number of the system's own.
  bool isNumber() const { return held == Held::real || held == Held::logical || held == Held::integer; }
  bool isScalar() const { return held > Held::other && held < Held::array; }
  bool isSurelyWhole() const { return held != Held::real || isWhole; }
  bool isSameKind(const Type& other) const {
    return held == other.held && element == other.element && isMatrix == other.isMatrix && source == other.source;
  }
  bool operator==(const Type&) const = default;
};

/// What functions take: such scalars, and arrays to look at.
inline bool isPassed(const Type& type) { return isGiven(type.held) || type.isArray(); }
/// Of what is passed the kind alone, by which calls are told apart.
inline Type kindOf(const Type& type) {
  return {.held = type.isArray() ? Held::array : type.held, .element = type.element, .isMatrix = type.isMatrix};
}

inline Type real(bool isWhole) { return {.held = Held::real, .isWhole = isWhole}; }
inline Type scalar(Held held) { return {.held = held}; }

using State = std::vector<Type>;  ///< of each lane

/// What a value that lies in a register is.
Type typeOf(const Storable& value);
/// Whether that is of a kind that is passed.
inline bool isOfKind(const Storable& value, const Type& kind) {
  switch (kind.held) {
    case Held::real: return value.isDoubleScalar();
    case Held::logical: return value.isScalarOf(Kind::Logical);
    case Held::integer: return value.isScalarOf(Kind::Int);
    case Held::character: return value.isScalarOf(Kind::Char);
    case Held::array:
      return value.isNumeric() && !value.numeric()->isScalar() && value.numeric()->is(kind.element) &&
             value.size().isMatrix() == kind.isMatrix;
    default: return false;
  }
}

}  // namespace kelo::native
