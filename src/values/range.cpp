// Ranges. The elements are those of a walk: first + k*step for k = 0, 1, ... until one has passed
// `last` by more than a rounding error. Whether the k-th is still counted is monotone in k, so the
// count is found by bisection around the quotient.
#include <cmath>

#include "messages/catalogue/operators.h"
#include "messages/fatal_fault.h"
#include "messages/message.h"
#include "platform/vector_clones.h"
#include "values/operators.h"

namespace kelo {
namespace {

constexpr double kEps = 2.220446049250313e-16;
constexpr double kCountLimit = 9.2e18;  // a little below 2^63

struct Walk {
  double first, step, last;

  bool counts(int64_t k) const {
    const double x = Range{first, step, 0}.element(static_cast<double>(k));
    if (step > 0 ? x < last : x > last) return true;
    return std::fabs(x - last) <= std::fmax(std::fabs(x), std::fabs(last)) * kEps;
  }
  int64_t count() const;
};

int64_t Walk::count() const {
  if (step == 0 || (step > 0 && last < first) || (step < 0 && last > first)) return 0;
  if (first == last) return 1;
  const double steps = std::isfinite(last - first) ? (last - first) / step : last / step - first / step;
  if (!(steps < kCountLimit)) throwFatalFault("a range of too many elements");
  // Invariant: low counts, high does not. Element 0 always counts.
  int64_t low = 0;
  int64_t high = static_cast<int64_t>(steps) + 1;
  for (int64_t stride = 1; counts(high); stride = checkedMultiply(stride, 2)) {
    low = high;
    high = checkedAdd(high, stride);
  }
  if (const int64_t near = high - 2; near > low && counts(near)) low = near;
  while (high - low > 1) {
    const int64_t middle = low + (high - low) / 2;
    (counts(middle) ? low : high) = middle;
  }
  return checkedAdd(low, 1);
}

bool isRangeOperand(const NumericArray& a) {
  return a.has({Property::allReals, Property::allWellDefinedRealParts, Property::scalar});
}

double rangeNumber(const NumericArray& a) {
  if (a.isDoubleScalar() && std::isfinite(a.asDouble().scalar())) return a.asDouble().scalar();
  if (!isRangeOperand(a)) throw problem(text::kRangeOperands);
  return a.toDoubleArray().scalar();
}

// In pieces whose counter has 32 bits, which the compiler turns into doubles several at a time.
KELO_VECTOR_CLONES void fill(double* out, const Range& range) {
  constexpr int64_t kPiece = 1 << 16;
  for (int64_t start = 0; start < range.count; start += kPiece) {
    const auto length = static_cast<int32_t>(std::min(kPiece, range.count - start));
    const auto base = static_cast<double>(start);
    for (int32_t k = 0; k < length; ++k) out[start + k] = range.element(base + k);
  }
}

}  // namespace

Range rangeOf(const NumericArray& first, const NumericArray* step, const NumericArray& last) {
  if (first.isEmpty() || last.isEmpty() || (step && step->isEmpty())) return {};
  const double a = rangeNumber(first);
  const Walk walk{a, step ? rangeNumber(*step) : 1.0, rangeNumber(last)};
  return {walk.first, walk.step, walk.count()};
}

DoubleArray Range::elements() const {
  if (count == 0) return DoubleArray();
  DoubleArray result = DoubleArray::uninitialized(SizeVector(1, count));
  fill(result.writable(), *this);
  return result;
}

}  // namespace kelo
