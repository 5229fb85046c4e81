// Sums of slices, always from the left to the right, and what is made of them.
#include "builtins/reductions/column_kernels.h"
#include "builtins/reductions/handlers.h"
#include "platform/vector_clones.h"

namespace kelo::builtins {
namespace {

constexpr int64_t kLongColumn = 512;

/// Neighbouring long columns side by side, as many as there are; a few that are left one by one.
void sumLongColumns(const Slices& s, const double* in, double* out) {
  const auto step = [](double sum, double x, int64_t) { return sum + x; };
  platform::parallelForUnits(s.outer, s.length, [&](int64_t k, int64_t end) {
    for (; k + 8 <= end; k += 8) slices::foldLanes<8>(in + k * s.length, s.length, 1, s.length, out + k, k, step);
    for (; k < end; ++k) out[k] = sumInOrder(in + k * s.length, s.length, s.coresForOne());
  });
}

// How many of n logicals are true.
KELO_VECTOR_CLONES int64_t countTrue(const bool* x, int64_t n) {
  constexpr int64_t kPiece = 32 * 255;  // as long as the sum of every 32nd fits a byte
  constexpr int64_t kLanes = 32;
  const auto* bytes = reinterpret_cast<const uint8_t*>(x);
  int64_t count = 0;
  int64_t i = 0;
  while (i + kLanes <= n) {
    uint8_t sums[kLanes] = {};
    const int64_t end = std::min(n, i + kPiece) / kLanes * kLanes;
    for (; i + kLanes <= end; i += kLanes) {
      for (int64_t k = 0; k < kLanes; ++k) sums[k] = static_cast<uint8_t>(sums[k] + bytes[i + k]);
    }
    for (const uint8_t sum : sums) count += sum;
  }
  for (; i < n; ++i) count += bytes[i];
  return count;
}

template <class T>
TypedArray<T> foldedSum(const TypedArray<T>& a, const Slices& s, int64_t d) {
  TypedArray<T> result(reducedSize(a.size(), d), T{});
  foldSlices(s, a.data(), result.writable(), [](T sum, T x, int64_t) { return sum + x; });
  return result;
}

template <class T>
TypedArray<T> dividedBy(TypedArray<T> sums, double count) {
  T* out = sums.writable();
  for (int64_t k = 0; k < sums.numElements(); ++k) {
    if constexpr (kIsComplex<T>)
      out[k] = {out[k].real / count, out[k].imaginary / count};
    else
      out[k] /= count;
  }
  return sums;
}

}  // namespace

DoubleArray sumAlong(const DoubleArray& a, int64_t d) {
  const Slices s(a.size(), d);
  if (s.inner != 1 || s.length < kLongColumn) return foldedSum(a, s, d);
  DoubleArray result(reducedSize(a.size(), d), 0.0);
  sumLongColumns(s, a.data(), result.writable());
  return result;
}

ComplexDoubleArray sumAlong(const ComplexDoubleArray& a, int64_t d) { return foldedSum(a, Slices(a.size(), d), d); }

DoubleArray sumAlong(const LogicalArray& a, int64_t d) {
  const Slices s(a.size(), d);
  DoubleArray result(reducedSize(a.size(), d), 0.0);
  double* out = result.writable();
  if (s.inner == 1) {
    forColumns(s, a.data(), [&](int64_t k, const bool* x) {
      out[k] = static_cast<double>(countTrue(x, s.length));
    });
  } else {
    foldSlices(s, a.data(), out, [](double sum, bool x, int64_t) { return sum + static_cast<double>(x); });
  }
  return result;
}

DoubleArray meanAlong(const DoubleArray& a, int64_t d) {
  return dividedBy(sumAlong(a, d), static_cast<double>(a.size().dimensionLength(d)));
}

ComplexDoubleArray meanAlong(const ComplexDoubleArray& a, int64_t d) {
  return dividedBy(sumAlong(a, d), static_cast<double>(a.size().dimensionLength(d)));
}

}  // namespace kelo::builtins
