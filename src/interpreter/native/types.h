// What a register holds, as far as native code knows it.
#pragma once

#include <cmath>
#include <vector>

#include "values/storable.h"

namespace kelo::native {

enum class Held : uint8_t {
  other,  ///< anything; it may be overwritten, but not read
  real, integer, logical, character, complex,
  array,  ///< numeric, and not a scalar
  alias,  ///< the array of another register
  elements,  ///< a field of all elements of a structure array
};

struct Type {
  Held held = Held::other;
  Kind element = Kind::Double;  ///< of an array
  bool isMatrix = false;        ///< of an array: it has two dimensions
  bool isWritable = false;      ///< of an array: nobody else holds it
  int16_t source = -1;          ///< of an alias: the register

  bool isWhole = false;    ///< of a real number: it is whole, or not finite
  bool isChanged = false;  ///< the register does not hold it yet

  bool isArray() const { return held == Held::array || held == Held::alias; }
  /// Real numbers, logicals and characters, which operators treat as numbers.
  bool isReal() const { return held == Held::real || held == Held::logical || held == Held::character; }
  /// The same without characters, or with a whole number of the system's own.
  bool isNumber() const { return held == Held::real || held == Held::logical || held == Held::integer; }
  bool isScalar() const { return held > Held::other && held < Held::array; }
  bool isSurelyWhole() const { return held != Held::real || isWhole; }
  /// Whether the same code is for both. What is more than that is true where it is true on all ways.
  bool isSameKind(const Type& other) const {
    return held == other.held && element == other.element && isMatrix == other.isMatrix &&
           isWritable == other.isWritable && source == other.source;
  }
  bool operator==(const Type&) const = default;
};

inline Type scalar(Held held) { return {.held = held}; }
inline Type real(bool isWhole) { return {.held = Held::real, .isWhole = isWhole}; }
inline Held heldOf(Kind element) {
  constexpr Held kHeld[] = {Held::real, Held::integer, Held::logical, Held::complex, Held::character};
  return kHeld[static_cast<size_t>(element)];
}

/// What units take: such scalars, and arrays.
inline bool isPassed(const Type& type) { return type.isArray() || (type.isScalar() && type.held != Held::complex); }
/// What units give.
inline bool isGiven(const Type& type) { return isPassed(type) && (type.isScalar() || type.isMatrix); }
/// Of what is passed the kind alone, by which calls are told apart.
inline Type kindOf(const Type& type, bool isWritable = false) {
  if (!type.isArray()) return scalar(type.held);
  return {.held = Held::array, .element = type.element, .isMatrix = type.isMatrix, .isWritable = isWritable};
}

using State = std::vector<Type>;  ///< of each register
using Kinds = std::vector<Type>;  ///< of what is passed or given

/// What a value that lies in a register is.
inline Type typeOf(const Storable& value) {
  const NumericArray* numeric = value.numeric();
  if (numeric == nullptr) return {};
  if (numeric->isDoubleScalar()) return real(std::trunc(value.doubleScalar()) == value.doubleScalar());
  if (numeric->isScalar()) return scalar(heldOf(numeric->kind()));
  return {.held = Held::array,
          .element = numeric->kind(),
          .isMatrix = numeric->size().isMatrix(),
          .isWritable = numeric->isUnshared()};
}

/// Whether a value may stand where the code was made for that. OPTIMIZATION: asked at each entry.
inline bool isAsGood(const Storable& value, const Type& needed) {
  if (needed.held == Held::real && !value.isDoubleScalar()) return false;
  const Type type = typeOf(value);
  return type.held == needed.held && type.element == needed.element && type.isMatrix == needed.isMatrix &&
         type.isWritable >= needed.isWritable && type.isWhole >= needed.isWhole;
}

}  // namespace kelo::native
