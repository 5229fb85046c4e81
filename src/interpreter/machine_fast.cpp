// Two scalars of kinds other than two doubles.
#include "interpreter/machine_fast.h"

#include <cmath>

namespace kelo {
namespace {

constexpr char32_t kPlainCharacters = 0x80;  // beyond them a character may be several numbers, or equal another

// A scalar as a double, where that says all of it.
bool realOf(const NumericArray& scalar, double* x) {
  switch (scalar.kind()) {
    case Kind::Double: *x = scalar.asDouble().scalar(); return true;
    case Kind::Logical: *x = scalar.asLogical().scalar() ? 1 : 0; return true;
    case Kind::Char: {
      const uint32_t word = scalar.asChar().scalar().word();
      *x = word;
      return word < kPlainCharacters;
    }
    default: return false;
  }
}

bool integers(BinaryOp op, int64_t a, int64_t b, Storable* result) {
  switch (op) {
    case BinaryOp::plus: *result = IntArray(checkedAdd(a, b)); return true;
    case BinaryOp::minus: *result = IntArray(checkedSubtract(a, b)); return true;
    case BinaryOp::eqeq: result->setLogical(a == b); return true;
    case BinaryOp::neq: result->setLogical(a != b); return true;
    case BinaryOp::le: result->setLogical(a <= b); return true;
    case BinaryOp::lt: result->setLogical(a < b); return true;
    case BinaryOp::ge: result->setLogical(a >= b); return true;
    case BinaryOp::gt: result->setLogical(a > b); return true;
    default: return false;
  }
}

bool complexNumbers(BinaryOp op, ComplexDouble a, ComplexDouble b, Storable* result) {
  switch (op) {
    case BinaryOp::plus: *result = ComplexDoubleArray(a + b); return true;
    case BinaryOp::minus: *result = ComplexDoubleArray(a - b); return true;
    case BinaryOp::mult: case BinaryOp::dmult: *result = ComplexDoubleArray(a * b); return true;
    case BinaryOp::rdivide: case BinaryOp::mrdivide: *result = ComplexDoubleArray(a / b); return true;
    case BinaryOp::eqeq: result->setLogical(a == b); return true;
    case BinaryOp::neq: result->setLogical(a != b); return true;
    default: return false;
  }
}

bool complexOf(const NumericArray& scalar, ComplexDouble* z) {
  if (scalar.is(Kind::Complex)) {
    *z = scalar.asComplex().scalar();
    return true;
  }
  z->imaginary = 0;
  if (!scalar.is(Kind::Int)) return realOf(scalar, &z->real);
  return false;
}

bool logic(BinaryOp op, double x, double y, Storable* result) {
  if (std::isnan(x) || std::isnan(y)) return false;
  result->setLogical(op == BinaryOp::and_ ? x != 0 && y != 0 : x != 0 || y != 0);
  return true;
}

bool reals(BinaryOp op, double x, double y, Storable* result) {
  double number;
  bool answer;
  if (op == BinaryOp::and_ || op == BinaryOp::or_) return logic(op, x, y, result);
  if (scalarArithmetic(op, x, y, &number)) result->setNumber(number);
  else if (scalarComparison(op, x, y, &answer)) result->setLogical(answer);
  else return false;
  return true;
}

}  // namespace

bool scalarBinary(BinaryOp op, const Storable& left, const Storable& right, Storable* result) {
  if (!left.isPlainScalar() || !right.isPlainScalar()) return false;
  const NumericArray &a = *left.numeric(), &b = *right.numeric();
  double x, y;
  if (realOf(a, &x) && realOf(b, &y)) return reals(op, x, y, result);
  if (a.is(Kind::Int) && b.is(Kind::Int)) return integers(op, a.asInt().scalar(), b.asInt().scalar(), result);
  if (a.is(Kind::Int) && b.is(Kind::Double)) {
    return reals(op, static_cast<double>(a.asInt().scalar()), b.asDouble().scalar(), result);
  }
  if (b.is(Kind::Int) && a.is(Kind::Double)) {
    return reals(op, a.asDouble().scalar(), static_cast<double>(b.asInt().scalar()), result);
  }
  ComplexDouble z, w;
  return complexOf(a, &z) && complexOf(b, &w) && complexNumbers(op, z, w, result);
}

}  // namespace kelo
