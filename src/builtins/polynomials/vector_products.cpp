// `dot` and `cross`: products of the vectors that stand along a dimension of two arrays.
#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "builtins/slices.h"
#include "linear/matrix_parts.h"
#include "messages/catalogue/polynomials.h"
#include "platform/vector_clones.h"

namespace kelo::builtins {
namespace {

constexpr int64_t kLanes = 8;

// Partial sums side by side, joined at the end, so that one addition does not wait for another.
template <class T>
T dotOf(const T* a, const T* b, int64_t n) {
  T sum[kLanes] = {};
  int64_t i = 0;
  for (; i + kLanes <= n; i += kLanes) {
    for (int64_t l = 0; l < kLanes; ++l) sum[l] = sum[l] + conj(a[i + l]) * b[i + l];
  }
  for (; i < n; ++i) sum[0] = sum[0] + conj(a[i]) * b[i];
  for (int64_t l = 1; l < kLanes; ++l) sum[0] = sum[0] + sum[l];
  return sum[0];
}

// The same with the lanes spelled out in vectors that a processor has: they are added up as above.
KELO_VECTOR_CLONES double dotOf(const double* a, const double* b, int64_t n) {
  using Half = double __attribute__((vector_size(kLanes / 2 * sizeof(double)), aligned(sizeof(double)), may_alias));
  const auto* x = reinterpret_cast<const Half*>(a);
  const auto* y = reinterpret_cast<const Half*>(b);
  Half low = {}, high = {};
  int64_t i = 0;
  for (; i + kLanes <= n; i += kLanes, x += 2, y += 2) {
    low = low + x[0] * y[0];
    high = high + x[1] * y[1];
  }
  double sum = low[0];
  for (; i < n; ++i) sum = sum + a[i] * b[i];
  for (int64_t l = 1; l < kLanes / 2; ++l) sum = sum + low[l];
  for (int64_t l = 0; l < kLanes / 2; ++l) sum = sum + high[l];
  return sum;
}

/// Long vectors in pieces of one length, whatever the cores; the sums are added in their order.
template <class T>
T dotInPieces(const T* a, const T* b, int64_t n) {
  constexpr int64_t kPiece = platform::kParallelThreshold / 2;
  if (n < 2 * kPiece) return dotOf(a, b, n);
  const int64_t pieces = (n + kPiece - 1) / kPiece;
  std::vector<T> sums(static_cast<size_t>(pieces));
  platform::parallelForUnits(pieces, kPiece, [&](int64_t begin, int64_t end) {
    for (int64_t k = begin; k < end; ++k) {
      sums[static_cast<size_t>(k)] = dotOf(a + k * kPiece, b + k * kPiece, std::min(kPiece, n - k * kPiece));
    }
  });
  T sum{};
  for (const T& part : sums) sum = sum + part;
  return sum;
}

template <class T>
TypedArray<T> dots(const TypedArray<T>& a, const TypedArray<T>& b, int64_t dim) {
  const Slices s(a.size(), dim);
  TypedArray<T> result(reducedSize(a.size(), dim), T{});
  T* out = result.writable();
  const T *x = a.data(), *y = b.data();
  if (s.outer == 1 && s.inner == 1) {
    out[0] = dotInPieces(x, y, s.length);
    return result;
  }
  platform::parallelForUnits(s.outer, s.length * s.inner, [&](int64_t begin, int64_t end) {
    for (int64_t o = begin; o < end; ++o) {
      const int64_t first = o * s.length * s.inner;
      if (s.inner == 1) {
        out[o] = dotOf(x + first, y + first, s.length);
        continue;
      }
      T* sums = out + o * s.inner;
      for (int64_t l = 0; l < s.length; ++l) {
        const T *p = x + first + l * s.inner, *q = y + first + l * s.inner;
#pragma GCC ivdep
        for (int64_t i = 0; i < s.inner; ++i) sums[i] = sums[i] + conj(p[i]) * q[i];
      }
    }
  });
  return result;
}

template <class T>
TypedArray<T> crosses(const TypedArray<T>& a, const TypedArray<T>& b, int64_t dim) {
  const Slices s(a.size(), dim);
  auto result = TypedArray<T>::uninitialized(a.size());
  T* out = result.writable();
  for (int64_t o = 0; o < s.outer; ++o) {
    for (int part = 0; part < 3; ++part) {
      const int64_t block = o * 3 * s.inner;
      const int64_t next = block + (part + 1) % 3 * s.inner, after = block + (part + 2) % 3 * s.inner;
      const T *a1 = a.data() + next, *a2 = a.data() + after, *b1 = b.data() + next, *b2 = b.data() + after;
      T* to = out + block + part * s.inner;
#pragma GCC ivdep
      for (int64_t i = 0; i < s.inner; ++i) to[i] = a1[i] * b2[i] - a2[i] * b1[i];
    }
  }
  return result;
}

/// The first dimension of length 3; absent when there is none.
std::optional<int64_t> firstOfThree(const SizeVector& size) {
  for (int64_t d = 1; d <= size.ndim(); ++d) {
    if (size.dimensionLength(d) == 3) return d;
  }
  return std::nullopt;
}

}  // namespace

NodeValue vectorProduct(Call& call) {
  const bool isDot = call.selector<VectorProduct>() == VectorProduct::dot;
  const char* signature = call.count() == 2 ? "A, B" : "A, B, k";
  NumericArray a = read::takeNumeric(call, 0, {signature, "A", predicate::kNumericArray});
  NumericArray b = read::takeNumeric(call, 1, {signature, "B", predicate::kNumericArray});
  if (a.size() != b.size()) throw Wording{signature, "A and B", text::kSameSizes}.complaint(call);
  std::optional<int64_t> dim = isDot ? a.size().defaultDimension() : firstOfThree(a.size());
  if (call.count() == 3) dim = read::integer(call, 2, {signature, "k", predicate::kPositiveInteger}, 1);
  if (a.isEmpty()) throw Wording::sentence(text::kEmptyProduct).complaint(call);
  if (!isDot && (!dim || a.size().dimensionLength(*dim) != 3)) {
    throw Wording{signature, "A and B", text::kThreeElements}.complaint(call);
  }
  return inCommonKind([&](auto u, auto v) { return NodeValue(isDot ? dots(u, v, *dim) : crosses(u, v, *dim)); },
                      std::move(a), std::move(b));
}

}  // namespace kelo::builtins
