// One loop per comparison and per way of pairing (array with array, array with scalar). A
// comparison with its operands exchanged is another one, so that four of the six are enough.
#include "values/comparison.h"

#include <algorithm>
#include <utility>

#include "platform/parallel.h"
#include "platform/vector_clones.h"
#include "values/elementwise.h"
#include "values/plain_loops.h"

namespace kelo {
namespace {

enum class Comparison : uint8_t { less, lessOrEqual, equal, unequal };

/// a(i) and b(i) are the operands at i.
template <class A, class B>
inline void compareEach(Comparison comparison, bool* out, int64_t n, A a, B b) {
  const auto fill = [&](auto compare) {
    for (int64_t i = 0; i < n; ++i) out[i] = compare(a(i), b(i));
  };
  switch (comparison) {
    case Comparison::less: return fill([](auto x, auto y) { return x < y; });
    case Comparison::lessOrEqual: return fill([](auto x, auto y) { return x <= y; });
    case Comparison::equal: return fill([](auto x, auto y) { return x == y; });
    case Comparison::unequal: return fill([](auto x, auto y) { return x != y; });
  }
}

KELO_VECTOR_CLONES void compareBoth(Comparison c, bool* out, const double* a, const double* b, int64_t n) {
  compareEach(
      c, out, n, [=](int64_t i) { return a[i]; }, [=](int64_t i) { return b[i]; });
}
KELO_VECTOR_CLONES void compareWithScalar(Comparison c, bool* out, const double* a, double b, int64_t n) {
  compareEach(
      c, out, n, [=](int64_t i) { return a[i]; }, [=](int64_t) { return b; });
}
KELO_VECTOR_CLONES void compareScalarWith(Comparison c, bool* out, double a, const double* b, int64_t n) {
  compareEach(
      c, out, n, [=](int64_t) { return a; }, [=](int64_t i) { return b[i]; });
}

// Rows against columns, or against matrices: run by run.
LogicalArray comparedByRuns(Comparison c, const DoubleArray& a, const DoubleArray& b, const SizeVector& size) {
  auto result = LogicalArray::uninitialized(size);
  const loops::Broadcast plan(a.size(), b.size(), size);
  const int64_t n = plan.runLength();
  platform::parallelForUnits(plan.runCount(), n, [&, out = result.writable()](int64_t begin, int64_t end) {
    plan.forRuns(begin, end, [&](int64_t o, int64_t i, int64_t j) {
      if (plan.innerStrideA() == 0) return compareScalarWith(c, out + o, a.data()[i], b.data() + j, n);
      if (plan.innerStrideB() == 0) return compareWithScalar(c, out + o, a.data() + i, b.data()[j], n);
      compareBoth(c, out + o, a.data() + i, b.data() + j, n);
    });
  });
  return result;
}

LogicalArray compared(Comparison c, const DoubleArray& a, const DoubleArray& b) {
  if (!a.isScalar() && !b.isScalar() && a.size() != b.size()) {
    return comparedByRuns(c, a, b, expandedSize(a.size(), b.size()));
  }
  auto result = LogicalArray::uninitialized(a.isScalar() ? b.size() : a.size());
  bool* out = result.writable();
  const double *x = a.data(), *y = b.data();
  platform::parallelFor(result.numElements(), [&, x, y, out](int64_t begin, int64_t end) {
    const int64_t n = end - begin;
    if (a.isScalar()) return compareScalarWith(c, out + begin, *x, y + begin, n);
    if (b.isScalar()) return compareWithScalar(c, out + begin, x + begin, *y, n);
    compareBoth(c, out + begin, x + begin, y + begin, n);
  });
  return result;
}

constexpr uint32_t kFirstBehindAscii = 0x80;

// Words as they are, and their common bits. `b` null: one word for all.
inline uint32_t compareWords(bool* __restrict out, const uint32_t* a, const uint32_t* b, uint32_t one, int64_t n) {
  uint32_t all = 0;
  if (b == nullptr) {
    for (int64_t i = 0; i < n; ++i) {
      all |= a[i];
      out[i] = a[i] == one;
    }
    return all | one;
  }
  for (int64_t i = 0; i < n; ++i) {
    all |= a[i] | b[i];
    out[i] = a[i] == b[i];
  }
  return all;
}

/// Which of n characters are equal (or unequal, as wanted). `b` null: to one character.
KELO_WIDE_CLONES void compareText(bool wanted, bool* out, const Character* a, const Character* b, Character one,
                                    int64_t n) {
  static_assert(sizeof(Character) == sizeof(uint32_t));
  using Word = uint32_t __attribute__((may_alias));
  constexpr int64_t kBlock = 512;
  for (int64_t begin = 0; begin < n; begin += kBlock) {
    const int64_t end = std::min(n, begin + kBlock);
    const auto* x = reinterpret_cast<const Word*>(a + begin);
    const auto* y = b ? reinterpret_cast<const Word*>(b + begin) : nullptr;
    if (compareWords(out + begin, x, y, one.word(), end - begin) >= kFirstBehindAscii) {
      for (int64_t i = begin; i < end; ++i) out[i] = a[i] == (b ? b[i] : one);
    }
  }
  if (!wanted) logicNot(out, out, n);
}

LogicalArray comparedText(bool wanted, const CharArray& a, const CharArray& b) {
  auto result = LogicalArray::uninitialized(a.isScalar() ? b.size() : a.size());
  bool* out = result.writable();
  const int64_t n = result.numElements();
  const CharArray &many = a.isScalar() ? b : a, &other = a.isScalar() ? a : b;
  const Character *x = many.data(), *y = other.isScalar() ? nullptr : other.data(), one = other[0];
  platform::parallelFor(n, [=](int64_t begin, int64_t end) {
    compareText(wanted, out + begin, x + begin, y ? y + begin : nullptr, one, end - begin);
  });
  return result;
}

}  // namespace

std::optional<LogicalArray> comparedAtOnce(BinaryOp op, const NumericArray& a, const NumericArray& b) {
  if (op < BinaryOp::eqeq || op > BinaryOp::gt) return std::nullopt;
  if (a.kind() != b.kind() || a.isEmpty() || b.isEmpty()) return std::nullopt;
  if (a.isScalar() && b.isScalar()) return std::nullopt;
  const bool areAlike = a.isScalar() || b.isScalar() || a.size() == b.size();
  if (!areAlike && !a.is(Kind::Double)) return std::nullopt;
  if (a.is(Kind::Char) && op == BinaryOp::eqeq) return comparedText(true, a.asChar(), b.asChar());
  if (a.is(Kind::Char) && op == BinaryOp::neq) return comparedText(false, a.asChar(), b.asChar());
  if (!a.is(Kind::Double)) return std::nullopt;
  const DoubleArray &x = a.asDouble(), &y = b.asDouble();
  switch (op) {
    case BinaryOp::lt: return compared(Comparison::less, x, y);
    case BinaryOp::le: return compared(Comparison::lessOrEqual, x, y);
    case BinaryOp::gt: return compared(Comparison::less, y, x);
    case BinaryOp::ge: return compared(Comparison::lessOrEqual, y, x);
    case BinaryOp::eqeq: return compared(Comparison::equal, x, y);
    case BinaryOp::neq: return compared(Comparison::unequal, x, y);
    default: return std::nullopt;
  }
}

}  // namespace kelo
