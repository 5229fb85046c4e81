// Element-wise operators: each picks the kind of the work by commonKind, converts both operands to
// it and hands one scalar function to the loop. Characters become numbers before sizes are
// compared, since one character may give two numbers.
#include "values/operators.h"

#include <algorithm>

#include "messages/fatal_fault.h"
#include "platform/parallel.h"
#include "platform/vector_power.h"
#include "values/comparison.h"
#include "values/numbers.h"
#include "values/plain_loops.h"

namespace kelo {
namespace {

template <class T>
TypedArray<T> converted(NumericArray array) {
  return std::move(array).toKind(KindOf<T>::value).template take<T>();
}

// Both operands, to be consumed.
struct Operands {
  NumericArray a, b;

  template <class T, class F>
  NumericArray in(F f) {
    return binaryLoop(converted<T>(std::move(a)), converted<T>(std::move(b)), f);
  }
  /// The kind in which `+`, `-`, `.*` and the order comparisons work: logical and char count as
  /// doubles.
  Kind arithmeticKind() const {
    const Kind kind = commonKind(a, b);
    return kind == Kind::Logical || kind == Kind::Char ? Kind::Double : kind;
  }
};

// `f` is a generic scalar function, `whole` the one for integers, which may throw.
template <class F, class W>
NumericArray arithmetic(Operands& ab, F f, W whole) {
  switch (ab.arithmeticKind()) {
    case Kind::Complex: return ab.in<ComplexDouble>(f);
    case Kind::Int: return ab.in<int64_t>(whole);
    default: return ab.in<double>(f);
  }
}

template <class F>
NumericArray order(Operands& ab, F f) {
  return arithmetic(ab, f, f);
}

template <class F>
NumericArray quotient(Operands& ab, F f) {
  return commonKind(ab.a, ab.b) == Kind::Complex ? ab.in<ComplexDouble>(f) : ab.in<double>(f);
}

template <class F>
NumericArray equality(Operands& ab, F f) {
  switch (commonKind(ab.a, ab.b)) {
    case Kind::Complex: return ab.in<ComplexDouble>(f);
    case Kind::Int: return ab.in<int64_t>(f);
    case Kind::Logical: return ab.in<bool>(f);
    case Kind::Char: return ab.in<Character>(f);
    case Kind::Double: break;
  }
  return ab.in<double>(f);
}

// Sizes come first: an element that drops out beside an empty array need not be convertible.
template <class F>
NumericArray logic(Operands& ab, F f) {
  ab.a = charsToNumbers(std::move(ab.a));
  ab.b = charsToNumbers(std::move(ab.b));
  const SizeVector size = expandedSize(ab.a.size(), ab.b.size());
  return size.hasZeroLength() ? LogicalArray::uninitialized(size) : ab.in<bool>(f);
}

// Whether both are of this kind and one size, or one of them a scalar, and neither without
// elements.
bool goTogether(const NumericArray& a, const NumericArray& b, Kind kind) {
  if (!a.is(kind) || !b.is(kind) || a.isEmpty() || b.isEmpty()) return false;
  if (a.isScalar() || b.isScalar()) return a.isScalar() != b.isScalar();
  return a.size() == b.size();
}

// One element outside the real domain makes the whole result complex. The pairs matter, not the
// operands alone, but only where there is a negative base and a fraction at all.
bool allPowersReal(const DoubleArray& a, const DoubleArray& b) {
  const auto isFraction = [](double y) { return y != std::floor(y); };
  const auto hasFraction = [&] { return std::any_of(b.values().begin(), b.values().end(), isFraction); };
  if (b.isScalar() && !hasFraction()) return true;
  if (!hasNegative(a.data(), a.numElements()) || !hasFraction()) return true;
  const LogicalArray real = binaryLoop(a, b, [](double x, double y) noexcept { return isRealPower(x, y); });
  return std::find(real.values().begin(), real.values().end(), false) == real.values().end();
}

// Where the result of two operands goes: in the place of one that nobody else holds, or in a new
// array.
template <class T>
TypedArray<T> placeFor(const TypedArray<T>& a, const TypedArray<T>& b) {
  if (!a.isScalar() && a.isUnshared()) return a;
  if (!b.isScalar() && b.isUnshared()) return b;
  return TypedArray<T>::uninitialized(a.isScalar() ? b.size() : a.size());
}

// The elements of the place without a copy, whoever holds it beside.
template <class T>
T* elementsOf(const TypedArray<T>& place) {
  return const_cast<T*>(place.data());
}

NumericArray squares(DoubleArray x) {
  DoubleArray result = placeFor(x, x);
  platform::parallelFor(x.numElements(), [from = x.data(), out = elementsOf(result)](int64_t begin, int64_t end) {
    plainBoth(PlainOp::times, out + begin, from + begin, from + begin, end - begin);
  });
  return result;
}

ComplexDoubleArray squares(ComplexDoubleArray z) {
  ComplexDoubleArray result = placeFor(z, z);
  platform::parallelFor(z.numElements(), [from = z.data(), out = elementsOf(result)](int64_t begin, int64_t end) {
    squareEach(out + begin, from + begin, end - begin);
  });
  return result;
}

// Small whole exponents are products, and the other usual ones loops that the compiler vectorises.
std::optional<NumericArray> usualPowers(DoubleArray& bases, double exponent) {
  static const platform::WholePowerRoutine routine = platform::wholePowerRoutine();
  const auto each = [&](auto power) { return unaryLoop(std::move(bases), power); };
  if (exponent == 2 && !bases.isScalar()) return squares(std::move(bases));
  if (exponent == 2) return each([](double x) noexcept { return realPower(x, 2); });
  if (exponent == 0.5) return each([](double x) noexcept { return realPower(x, 0.5); });
  if (exponent == -1) return each([](double x) noexcept { return realPower(x, -1); });
  const bool isSmall = exponent == std::floor(exponent) && std::fabs(exponent) <= platform::kMostWholePower;
  if (routine == nullptr || bases.isScalar() || !isSmall || exponent == 0) return std::nullopt;
  DoubleArray result = placeFor(bases, DoubleArray(exponent));
  double* out = elementsOf(result);
  platform::parallelFor(result.numElements(), [=, x = bases.data()](int64_t begin, int64_t end) {
    routine(out + begin, x + begin, static_cast<int>(exponent), end - begin);
  });
  return result;
}

// Block by block; a scalar operand is written out for one block. REQUIRES: one size, or a scalar
// and an array
DoubleArray powersOf(const DoubleArray& a, const DoubleArray& b) {
  constexpr int64_t kBlock = 512;
  static const platform::PowerRoutine routine = platform::powerRoutine();
  DoubleArray result = placeFor(a, b);
  double* out = elementsOf(result);
  double scalar[kBlock];
  if (a.isScalar() || b.isScalar()) std::fill_n(scalar, kBlock, a.isScalar() ? a.scalar() : b.scalar());
  platform::parallelFor(result.numElements(), [&, x = a.data(), y = b.data()](int64_t begin, int64_t end) {
    for (int64_t i = begin; i < end; i += kBlock) {
      routine(out + i, a.isScalar() ? scalar : x + i, b.isScalar() ? scalar : y + i, std::min(kBlock, end - i));
    }
  });
  return result;
}

NumericArray power(Operands& ab) {
  if (ab.a.has(Property::allReals) && ab.b.has(Property::allReals)) {
    ab.a = converted<double>(std::move(ab.a));
    ab.b = converted<double>(std::move(ab.b));
    if (allPowersReal(ab.a.asDouble(), ab.b.asDouble())) {
      if (ab.b.isScalar()) {
        if (auto powers = usualPowers(ab.a.as<double>(), ab.b.asDouble().scalar())) return std::move(*powers);
      }
      if (goTogether(ab.a, ab.b, Kind::Double)) return powersOf(ab.a.asDouble(), ab.b.asDouble());
      return ab.in<double>([](double x, double y) noexcept { return realPower(x, y); });
    }
  }
  const bool isSquare = ab.b.is(Kind::Double) && ab.b.isScalar() && ab.b.asDouble().scalar() == 2;
  if (isSquare && ab.a.is(Kind::Complex) && !ab.a.isScalar()) return squares(std::move(ab.a).take<ComplexDouble>());
  return ab.in<ComplexDouble>([](ComplexDouble x, ComplexDouble y) noexcept { return complexPower(x, y); });
}

ComplexDouble wholePower(ComplexDouble base, int64_t exponent) {
  ComplexDouble result{1, 0};
  for (; exponent > 0; exponent >>= 1) {
    if (exponent & 1) result = result * base;
    base = base * base;
  }
  return result;
}

}  // namespace

ComplexDouble complexPower(ComplexDouble a, ComplexDouble b) {
  constexpr double kProductsUpTo = 64;  // beyond that the polar form is the more accurate one
  if (b.real == 0 && b.imaginary == 0) return {1, 0};
  const bool realExponent = b.imaginary == 0;
  if (a.imaginary == 0 && realExponent && isRealPower(a.real, b.real)) return {realPower(a.real, b.real), 0};
  if (a.real == 0 && a.imaginary == 0) {
    if (b.real > 0) return {0, 0};
    return {b.real < 0 && realExponent ? HUGE_VAL : NAN, realExponent ? 0.0 : NAN};
  }
  if (realExponent && b.real == std::floor(b.real) && std::fabs(b.real) <= kProductsUpTo) {
    const ComplexDouble power = wholePower(a, static_cast<int64_t>(std::fabs(b.real)));
    return b.real > 0 ? power : ComplexDouble{1, 0} / power;
  }
  const double radius = a.magnitude();
  const double angle = std::atan2(a.imaginary, a.real);
  if (realExponent) {
    const double size = std::pow(radius, b.real);
    return {size * std::cos(angle * b.real), size * std::sin(angle * b.real)};
  }
  const double logRadius = std::log(radius);
  const double size = std::exp(b.real * logRadius - b.imaginary * angle);
  const double turn = b.imaginary * logRadius + b.real * angle;
  return {size * std::cos(turn), size * std::sin(turn)};
}

bool leftRules(const NumericArray& a, const NumericArray& b) {
  if (a.isEmpty()) return false;
  if (b.isEmpty()) return true;
  return kLeftRules[static_cast<int>(a.kind())][static_cast<int>(b.kind())];
}

Kind commonKind(const NumericArray& a, const NumericArray& b) { return leftRules(a, b) ? a.kind() : b.kind(); }

namespace {

std::optional<PlainOp> plainOpOf(BinaryOp op) {
  switch (op) {
    case BinaryOp::plus: return PlainOp::plus;
    case BinaryOp::minus: return PlainOp::minus;
    case BinaryOp::dmult:
    case BinaryOp::mult: return PlainOp::times;
    case BinaryOp::rdivide:
    case BinaryOp::mrdivide: return PlainOp::divide;
    default: return std::nullopt;
  }
}

NumericArray plainly(PlainOp op, DoubleArray a, DoubleArray b) {
  DoubleArray result = placeFor(a, b);
  double* out = elementsOf(result);
  const double *x = a.data(), *y = b.data();
  platform::parallelFor(result.numElements(), [&, x, y, out](int64_t begin, int64_t end) {
    if (a.isScalar()) return plainScalarLeft(op, out + begin, *x, y + begin, end - begin);
    if (b.isScalar()) return plainScalarRight(op, out + begin, x + begin, *y, end - begin);
    plainBoth(op, out + begin, x + begin, y + begin, end - begin);
  });
  return result;
}

// Complex sums are those of twice as many doubles. REQUIRES: op is no division; a and b have one
// size
NumericArray complexPlainly(PlainOp op, ComplexDoubleArray a, ComplexDoubleArray b) {
  ComplexDoubleArray result = placeFor(a, b);
  ComplexDouble* out = elementsOf(result);
  platform::parallelFor(result.numElements(), [=, x = a.data(), y = b.data()](int64_t begin, int64_t end) {
    if (op == PlainOp::times) return timesBoth(out + begin, x + begin, y + begin, end - begin);
    plainBoth(op, &out[begin].real, &x[begin].real, &y[begin].real, 2 * (end - begin));
  });
  return result;
}

NumericArray logicPlainly(LogicOp op, LogicalArray a, LogicalArray b) {
  LogicalArray result = placeFor(a, b);
  logicBoth(op, elementsOf(result), a.data(), b.data(), a.numElements());
  return result;
}

LogicalArray inverted(const LogicalArray& x) {
  if (x.isScalar()) return LogicalArray(!x.scalar());
  auto result = x.isUnshared() ? x : LogicalArray::uninitialized(x.size());
  logicNot(elementsOf(result), x.data(), x.numElements());
  return result;
}

}  // namespace

NumericArray elementwise(BinaryOp op, NumericArray a, NumericArray b) {
  using Op = BinaryOp;
  if (std::optional<LogicalArray> compared = comparedAtOnce(op, a, b)) return std::move(*compared);
  const std::optional<PlainOp> plain = plainOpOf(op);
  if (plain && goTogether(a, b, Kind::Double)) {
    return plainly(*plain, std::move(a).take<double>(), std::move(b).take<double>());
  }
  if (plain && plain != PlainOp::divide && goTogether(a, b, Kind::Complex) && a.size() == b.size()) {
    return complexPlainly(*plain, std::move(a).take<ComplexDouble>(), std::move(b).take<ComplexDouble>());
  }
  if ((op == BinaryOp::and_ || op == BinaryOp::or_) && goTogether(a, b, Kind::Logical) && a.size() == b.size()) {
    return logicPlainly(op == BinaryOp::and_ ? LogicOp::and_ : LogicOp::or_, std::move(a).take<bool>(),
                        std::move(b).take<bool>());
  }
  Operands ab{std::move(a), std::move(b)};
  switch (op) {
    case Op::plus:
      return arithmetic(
          ab, [](auto x, auto y) noexcept { return x + y; }, checkedAdd);
    case Op::minus:
      return arithmetic(
          ab, [](auto x, auto y) noexcept { return x - y; }, checkedSubtract);
    case Op::dmult:
    case Op::mult:
      return arithmetic(
          ab, [](auto x, auto y) noexcept { return x * y; }, checkedMultiply);
    case Op::rdivide:
    case Op::mrdivide: return quotient(ab, [](auto x, auto y) noexcept { return x / y; });
    case Op::ldivide:
    case Op::mldivide: return quotient(ab, [](auto x, auto y) noexcept { return y / x; });
    case Op::eqeq: return equality(ab, [](auto x, auto y) noexcept { return x == y; });
    case Op::neq: return equality(ab, [](auto x, auto y) noexcept { return x != y; });
    case Op::le: return order(ab, [](auto x, auto y) noexcept { return x <= y; });
    case Op::lt: return order(ab, [](auto x, auto y) noexcept { return x < y; });
    case Op::ge: return order(ab, [](auto x, auto y) noexcept { return x >= y; });
    case Op::gt: return order(ab, [](auto x, auto y) noexcept { return x > y; });
    case Op::and_: return logic(ab, [](bool x, bool y) noexcept { return x && y; });
    case Op::or_: return logic(ab, [](bool x, bool y) noexcept { return x || y; });
    case Op::dpower:
    case Op::power: break;
  }
  return power(ab);
}

NumericArray unary(UnaryOp op, NumericArray a) {
  if (op == UnaryOp::plus) return a;
  if (op == UnaryOp::not_) return inverted(std::move(a).toKind(Kind::Logical).take<bool>());
  const auto negate = [](auto x) noexcept { return -x; };
  switch (a.kind()) {
    case Kind::Complex: return unaryLoop(std::move(a).take<ComplexDouble>(), negate);
    case Kind::Int: return unaryLoop(std::move(a).take<int64_t>(), [](int64_t x) { return checkedSubtract(0, x); });
    default: return unaryLoop(converted<double>(std::move(a)), negate);
  }
}

}  // namespace kelo
