// max and min. NaN is passed over; a slice of NaN alone gives NaN at position 1. Complex numbers
// are compared by magnitude, then by angle. Of equal elements the first one is meant, also where
// they are zeros of different signs.
//
// The extremes of real slices are found without looking at positions, so that the loops vectorise;
// where they stand is looked up afterwards, if it was asked for. A slice whose elements are not
// there (length 0) has no extreme: the dimension stays at 0.
#include <cmath>

#include "builtins/reductions/column_kernels.h"
#include "builtins/reductions/handlers.h"
#include "builtins/reductions/order_statistics.h"
#include "messages/catalogue/reductions.h"
#include "values/elementwise.h"

namespace kelo::builtins {
namespace {

constexpr Wording kAlone{"A", "A", predicate::kNumericArray};
constexpr Wording kLeft{"A, B", "A", predicate::kNumericArray};
constexpr Wording kRight{"A, B", "B", predicate::kNumericArray};
constexpr Wording kPair{"A, B", "A and B", text::kSizesGoTogether};
constexpr Wording kArray{"A, [], k", "A", predicate::kNumericArray};
constexpr Wording kNothing{"A, [], k", text::kSecondArgument, text::kEmptySecondInput};
constexpr Wording kDimension{"A, [], k", "k", text::kDimensionNumber};

constexpr int64_t kLongColumn = 32;

/// Whether x takes the place of the best so far, which came first.
template <Extreme kWhich, class T>
inline bool takesPlace(T x, T best) {
  if constexpr (kIsComplex<T>)
    return !x.hasNaN() && (kWhich == Extreme::max ? isBefore(best, x) : isBefore(x, best));
  else
    return kWhich == Extreme::max ? x > best : x < best;
}

/// Position from 0 of the first element that equals `value`; 0 when there is none, as in a slice of
/// NaN.
int64_t positionOf(double value, const double* x, int64_t length, int64_t stride) {
  for (int64_t l = 0; l < length; ++l) {
    if (x[l * stride] == value) return l;
  }
  return 0;
}

/// The extremes as numbers. Where the loop may have missed which zero came first, or met nothing
/// but NaN, the element itself is taken.
template <Extreme kWhich>
DoubleArray valuesAlong(const DoubleArray& a, const Slices& s, const SizeVector& size) {
  constexpr double kWorst = kWhich == Extreme::max ? -kInf : kInf;
  DoubleArray result(size, kWorst);
  double* out = result.writable();
  const double* in = a.data();
  if (s.inner == 1 && s.length >= kLongColumn) {
    forColumns(s, in, [&](int64_t k, const double* x) {
      out[k] = (kWhich == Extreme::max ? largest : smallest)(x, s.length, s.coresForOne());
    });
  } else {
    foldSlices(s, in, out, [](double best, double x, int64_t) { return takesPlace<kWhich>(x, best) ? x : best; });
  }
  for (int64_t k = 0; k < s.count(); ++k) {
    if (out[k] != 0 && out[k] != kWorst) continue;
    const double* first = in + s.first(k);
    out[k] = first[positionOf(out[k], first, s.length, s.inner) * s.inner];
  }
  return result;
}

IntArray positionsOf(const DoubleArray& values, const DoubleArray& a, const Slices& s) {
  IntArray result(values.size(), 0);
  int64_t* out = result.writable();
  const double* best = values.data();
  const double* in = a.data();
  if (s.inner == 1) {
    forColumns(s, in, [&](int64_t k, const double* x) { out[k] = positionOf(best[k], x, s.length, 1) + 1; });
    return result;
  }
  slices::forRowPieces(s, [&](int64_t k, int64_t offset, int64_t n) {
    for (int64_t l = s.length - 1; l >= 0; --l) {
      const double* row = in + offset + l * s.inner;
      for (int64_t i = 0; i < n; ++i) out[k + i] = row[i] == best[k + i] ? l + 1 : out[k + i];
    }
    for (int64_t i = 0; i < n; ++i) out[k + i] = std::max<int64_t>(out[k + i], 1);
  });
  return result;
}

/// Complex numbers: positions first.
template <Extreme kWhich>
IntArray complexPositions(const ComplexDoubleArray& a, const Slices& s, const SizeVector& size) {
  IntArray result(size, 1);
  for (int64_t k = 0; k < s.count(); ++k) {
    const ComplexDouble* x = a.data() + s.first(k);
    int64_t best = 0;
    for (int64_t l = 1; l < s.length; ++l) {
      const ComplexDouble z = x[l * s.inner];
      if (x[best * s.inner].hasNaN() ? !z.hasNaN() : takesPlace<kWhich>(z, x[best * s.inner])) best = l;
    }
    result.writable()[k] = best + 1;
  }
  return result;
}

template <Extreme kWhich>
NodeValue along(const Call& call, const DoubleArray& a, int64_t d) {
  const Slices s(a.size(), d);
  const SizeVector size = s.length == 0 ? a.size() : reducedSize(a.size(), d);
  if (s.length == 0) return call.outputs({DoubleArray::uninitialized(size), IntArray::uninitialized(size)});
  DoubleArray values = valuesAlong<kWhich>(a, s, size);
  if (call.outputCount() == 1) return values;
  IntArray positions = positionsOf(values, a, s);
  return call.outputs({std::move(values), std::move(positions)});
}

template <Extreme kWhich>
NodeValue along(const Call& call, const ComplexDoubleArray& a, int64_t d) {
  const Slices s(a.size(), d);
  const SizeVector size = s.length == 0 ? a.size() : reducedSize(a.size(), d);
  IntArray positions = s.length == 0 ? IntArray::uninitialized(size) : complexPositions<kWhich>(a, s, size);
  auto values = ComplexDoubleArray::uninitialized(size);
  for (int64_t k = 0; k < size.numElements(); ++k) {
    values.writable()[k] = a[s.first(k) + (positions[k] - 1) * s.inner];
  }
  return call.outputs({std::move(values), std::move(positions)});
}

/// NaN gives way to the other operand; of two equal numbers the left one stays.
template <Extreme kWhich>
NodeValue between(NumericArray a, NumericArray b) {
  if (a.is(Kind::Complex) || b.is(Kind::Complex)) {
    return binaryLoop(
        std::move(a).toComplexArray(), std::move(b).toComplexArray(),
        [](ComplexDouble x, ComplexDouble y) noexcept { return x.hasNaN() || takesPlace<kWhich>(y, x) ? y : x; });
  }
  return binaryLoop(std::move(a).toDoubleArray(), std::move(b).toDoubleArray(),
                    [](double x, double y) noexcept { return takesPlace<kWhich>(y, x) || x != x ? y : x; });
}

NodeValue ofPair(Call& call) {
  NumericArray a = read::takeNumeric(call, 0, kLeft);
  NumericArray b = read::takeNumeric(call, 1, kRight);
  if (call.outputCount() > 1) throw outputCountComplaint(call.name(), 1);
  if (!expandedSizeIfAny(a.size(), b.size())) throw kPair.complaint(call);
  if (call.selector<Extreme>() == Extreme::max) return between<Extreme::max>(std::move(a), std::move(b));
  return between<Extreme::min>(std::move(a), std::move(b));
}

}  // namespace

NodeValue extreme(Call& call) {
  if (call.count() == 2) return ofPair(call);
  const NumericArray& a = read::numeric(call, 0, call.count() == 1 ? kAlone : kArray);
  int64_t d = a.size().defaultDimension();
  if (call.count() == 3) {
    if (!read::array(call, 1, kNothing).isEmpty()) throw kNothing.complaint(call);
    d = read::dimension(call, 2, kDimension);
  }
  return inOwnKind([&](const auto& x) -> NodeValue {
    if (call.selector<Extreme>() == Extreme::max) return along<Extreme::max>(call, x, d);
    return along<Extreme::min>(call, x, d);
  }, a);
}

}  // namespace kelo::builtins
