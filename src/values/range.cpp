// Ranges. The elements are those of a walk: first + k*step for k = 0, 1, ... until one has passed
// `last` by more than a rounding error. Whether the k-th is still counted is monotone in k, so the
// count is found by bisection around the quotient.
#include <algorithm>
#include <cmath>

#include "messages/catalogue/operators.h"
#include "messages/fatal_fault.h"
#include "messages/message.h"
#include "values/memory.h"
#include "values/operators.h"
#include "values/plain_loops.h"

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

}  // namespace

Range rangeOf(const NumericArray& first, const NumericArray* step, const NumericArray& last) {
  if (first.isEmpty() || last.isEmpty() || (step && step->isEmpty())) return {};
  const double a = rangeNumber(first);
  const Walk walk{a, step ? rangeNumber(*step) : 1.0, rangeNumber(last)};
  return {walk.first, walk.step, walk.count()};
}

std::optional<EvenPositions> Range::positions() const {
  constexpr double kExact = 0x1p52;  // up to it whole numbers and their differences are exact
  const int64_t most = std::min<int64_t>(UINT32_MAX, arrayByteLimit() / static_cast<int64_t>(sizeof(double)) - 1024);
  if (count < 2 || count > most || std::fabs(step) > INT32_MAX) return std::nullopt;
  const double last = element(static_cast<double>(count - 1));
  const auto isSubscript = [](double x) { return x >= 1 && x < kExact && x == std::floor(x); };
  if (!isSubscript(first) || !isSubscript(last) || step != std::floor(step)) return std::nullopt;
  return EvenPositions{static_cast<int64_t>(first) - 1, static_cast<int32_t>(step), static_cast<uint32_t>(count)};
}

DoubleArray Range::elements() const {
  if (count == 0) return DoubleArray();
  DoubleArray result = DoubleArray::uninitialized(SizeVector(1, count));
  fillSteps(result.writable(), first, step, count);
  return result;
}

}  // namespace kelo
