// The operators on whole arrays.
//
// Which operand's kind rules is one matrix (commonKind); the size of a result is one rule
// (expandedSize in elementwise.h). Operands are taken by value: a temporary of the right kind and
// size that nobody else holds receives the result, so a chain such as a.*b + c./d - e on large
// arrays needs two blocks. The operators of matrices (* / \ ^) live in linear/.
#pragma once

#include <cmath>
#include <span>
#include <vector>

#include "values/elementwise.h"
#include "values/storable.h"

namespace kelo {

enum class BinaryOp : uint8_t {
  plus, minus, dmult, mult, eqeq, neq, le, lt, ge, gt, dpower, power, ldivide, mldivide, mrdivide, rdivide, and_, or_,
};
enum class UnaryOp : uint8_t { plus, minus, not_ };

/// Complex beats double beats int beats char beats logical. The entry tells whether A (rows) rules
/// over B (columns).
inline constexpr bool kLeftRules[kKindCount][kKindCount] = {
    // B:       double int    logical complex char       A:
    /*double*/  {true,  true,  true,  false, true},
    /*int*/     {false, true,  true,  false, true},
    /*logical*/ {false, false, true,  false, false},
    /*complex*/ {true,  true,  true,  true,  true},
    /*char*/    {false, false, true,  false, true},
};
constexpr Kind rulingKind(Kind a, Kind b) { return kLeftRules[static_cast<int>(a)][static_cast<int>(b)] ? a : b; }

static_assert(rulingKind(Kind::Char, Kind::Double) == Kind::Double && rulingKind(Kind::Int, Kind::Char) == Kind::Int);
static_assert(rulingKind(Kind::Logical, Kind::Char) == Kind::Char &&
              rulingKind(Kind::Int, Kind::Double) == Kind::Double);
static_assert([] {  // the ruling kind does not depend on the order, and a kind rules over itself
  for (int a = 0; a < kKindCount; ++a) {
    for (int b = 0; b < kKindCount; ++b) {
      if (rulingKind(Kind(a), Kind(b)) != rulingKind(Kind(b), Kind(a))) return false;
    }
    if (rulingKind(Kind(a), Kind::Complex) != Kind::Complex || rulingKind(Kind(a), Kind::Logical) != Kind(a))
      return false;
  }
  return true;
}());

/// Whether the kind of the left operand rules. Beside an empty operand the other one rules; of two
/// empties the right one.
bool leftRules(const NumericArray& a, const NumericArray& b);
Kind commonKind(const NumericArray& a, const NumericArray& b);

/// An element-wise operation. `*`, `^`, `\` and `/` act as their dotted forms.
/// throws Problem for sizes that do not go together and for what cannot be converted; FatalFault
/// for integer overflow
NumericArray elementwise(BinaryOp op, NumericArray a, NumericArray b);

/// `+` gives the operand itself, `-` a number, `~` a logical.
NumericArray unary(UnaryOp op, NumericArray a);

/// A scalar, vector or matrix with rows and columns exchanged; `conjugate` changes complex elements
/// only.
/// throws Problem for what is no array and for more than two dimensions
Storable transpose(Storable value, bool conjugate);

/// first:step:last before its elements are made.
struct Range {
  double first = 0, step = 1;
  int64_t count = 0;

  double element(double k) const { return k * step + first; }  ///< k from 0
  /// 1 x count; 0 x 0 when there is none.
  DoubleArray elements() const;
  /// The elements as subscripts without an array; absent for fewer than two, for what is no
  /// subscript, and where the array would be too large to be made.
  std::optional<EvenPositions> positions() const;
};

/// The range of three operands, without elements when one of them is empty. `step` null: 1. The
/// last element may stand a rounding error beyond `last`. throws Problem unless all are real finite
/// scalars; FatalFault for a count past 64 bits
Range rangeOf(const NumericArray& first, const NumericArray* step, const NumericArray& last);

/// Joins arrays along dimension `dim`, counted from 1. Empty arrays drop out; nothing left gives a
/// double 0 x 0. The kind is that of joining from the left, two at a time. The pieces are consumed.
/// throws Problem for lengths that differ elsewhere, for numbers beside structures
Storable catenate(std::span<Storable> list, int64_t dim);
inline Storable catenate(std::vector<Storable> list, int64_t dim) { return catenate(std::span<Storable>(list), dim); }

// Scalars of doubles, for the evaluator: nothing is allocated or looked up.

/// Whether a to the power b is real: not so for a negative base with an exponent that is no whole
/// number.
inline bool isRealPower(double a, double b) { return !(a < 0) || b == std::floor(b) || std::isnan(b); }
/// REQUIRES: isRealPower(a, b)
inline double realPower(double a, double b) {
  if (b == 2) return a * a;
  if (b == 0.5) return std::sqrt(a) + 0.0;  // the power of -0 is 0
  if (b == -1) return 1 / a;
  return std::pow(a, b);
}
/// Two numbers under an arithmetic operator. False, and nothing is done, for the other operators
/// and where the result is complex.
inline bool scalarArithmetic(BinaryOp op, double a, double b, double* result) {
  switch (op) {
    case BinaryOp::plus: *result = a + b; return true;
    case BinaryOp::minus: *result = a - b; return true;
    case BinaryOp::dmult: case BinaryOp::mult: *result = a * b; return true;
    case BinaryOp::rdivide: case BinaryOp::mrdivide: *result = a / b; return true;
    case BinaryOp::ldivide: case BinaryOp::mldivide: *result = b / a; return true;
    case BinaryOp::dpower: case BinaryOp::power:
      if (!isRealPower(a, b)) return false;
      *result = realPower(a, b);
      return true;
    default: return false;
  }
}

/// The same for comparisons.
inline bool scalarComparison(BinaryOp op, double a, double b, bool* result) {
  switch (op) {
    case BinaryOp::eqeq: *result = a == b; return true;
    case BinaryOp::neq: *result = a != b; return true;
    case BinaryOp::le: *result = a <= b; return true;
    case BinaryOp::lt: *result = a < b; return true;
    case BinaryOp::ge: *result = a >= b; return true;
    case BinaryOp::gt: *result = a > b; return true;
    default: return false;
  }
}

/// Principal value. Real where both operands are and isRealPower; whole exponents by products; 0 to
/// a negative power is Inf.
ComplexDouble complexPower(ComplexDouble a, ComplexDouble b);

}  // namespace kelo
