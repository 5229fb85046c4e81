#include "values/plain_loops.h"

#include <algorithm>

#include "platform/vector_clones.h"

namespace kelo {
namespace {

template <class A, class B>
inline void arithmeticEach(PlainOp op, double* out, int64_t n, A a, B b) {
  const auto fill = [&](auto f) {
#pragma GCC ivdep
    for (int64_t i = 0; i < n; ++i) out[i] = f(a(i), b(i));
  };
  switch (op) {
    case PlainOp::plus: return fill([](double x, double y) { return x + y; });
    case PlainOp::minus: return fill([](double x, double y) { return x - y; });
    case PlainOp::times: return fill([](double x, double y) { return x * y; });
    case PlainOp::divide: return fill([](double x, double y) { return x / y; });
  }
}

// A logical is a byte of 0 or 1, which the compiler would not take for granted.
const uint8_t* bytes(const bool* x) { return reinterpret_cast<const uint8_t*>(x); }
uint8_t* bytes(bool* x) { return reinterpret_cast<uint8_t*>(x); }

KELO_VECTOR_CLONES void logicBytes(LogicOp op, uint8_t* out, const uint8_t* a, const uint8_t* b, int64_t n) {
  const auto fill = [&](auto f) {
#pragma GCC ivdep
    for (int64_t i = 0; i < n; ++i) out[i] = static_cast<uint8_t>(f(a[i], b[i]));
  };
  switch (op) {
    case LogicOp::and_: return fill([](unsigned x, unsigned y) { return x & y; });
    case LogicOp::or_: return fill([](unsigned x, unsigned y) { return x | y; });
    case LogicOp::xor_: return fill([](unsigned x, unsigned y) { return x ^ y; });
  }
}

KELO_VECTOR_CLONES void invertBytes(uint8_t* out, const uint8_t* x, int64_t n) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) out[i] = x[i] ^ 1;
}

}  // namespace

KELO_VECTOR_CLONES void plainBoth(PlainOp op, double* out, const double* a, const double* b, int64_t n) {
  arithmeticEach(
      op, out, n, [=](int64_t i) { return a[i]; }, [=](int64_t i) { return b[i]; });
}
KELO_VECTOR_CLONES void plainScalarLeft(PlainOp op, double* out, double a, const double* b, int64_t n) {
  arithmeticEach(
      op, out, n, [=](int64_t) { return a; }, [=](int64_t i) { return b[i]; });
}
KELO_VECTOR_CLONES void plainScalarRight(PlainOp op, double* out, const double* a, double b, int64_t n) {
  arithmeticEach(
      op, out, n, [=](int64_t i) { return a[i]; }, [=](int64_t) { return b; });
}

KELO_WIDE_CLONES void timesBoth(ComplexDouble* out, const ComplexDouble* a, const ComplexDouble* b, int64_t n) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) out[i] = a[i] * b[i];
}

KELO_WIDE_CLONES void squareEach(ComplexDouble* out, const ComplexDouble* z, int64_t n) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) {
    const ComplexDouble v = z[i], square = ComplexDouble{1, 0} * (v * v);
    const double real = v.real * v.real;
    out[i] = {v.imaginary == 0 ? real : square.real, v.imaginary == 0 ? 0 : square.imaginary};
  }
}

KELO_VECTOR_CLONES void truthsAsNumbers(double* out, const bool* x, int64_t n) {
  const uint8_t* from = bytes(x);
  for (int64_t i = 0; i < n; ++i) out[i] = static_cast<double>(static_cast<int32_t>(from[i]));
}

KELO_VECTOR_CLONES bool hasNegative(const double* x, int64_t n) {
  constexpr int64_t kBlock = 1024;
  for (int64_t begin = 0; begin < n; begin += kBlock) {
    int64_t some = 0;  // as wide as an element, so that the loop vectorises
    for (int64_t i = begin; i < std::min(n, begin + kBlock); ++i) some |= static_cast<int64_t>(x[i] < 0);
    if (some != 0) return true;
  }
  return false;
}

// In pieces whose counter has 32 bits, which the compiler turns into doubles several at a time.
KELO_VECTOR_CLONES void fillSteps(double* out, double first, double step, int64_t n) {
  constexpr int64_t kPiece = 1 << 16;
  for (int64_t start = 0; start < n; start += kPiece) {
    const auto length = static_cast<int32_t>(std::min(kPiece, n - start));
    const auto base = static_cast<double>(start);
    for (int32_t k = 0; k < length; ++k) out[start + k] = (base + k) * step + first;
  }
}

void logicBoth(LogicOp op, bool* out, const bool* a, const bool* b, int64_t n) {
  logicBytes(op, bytes(out), bytes(a), bytes(b), n);
}
void logicNot(bool* out, const bool* x, int64_t n) { invertBytes(bytes(out), bytes(x), n); }

}  // namespace kelo
