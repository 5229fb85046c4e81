// sum, prod, mean, median, mode, all and any: one handler, one dimension, one value for each slice.
#include <algorithm>
#include <cstring>

#include "builtins/reductions/handlers.h"
#include "builtins/reductions/order_statistics.h"
#include "messages/catalogue/reductions.h"
#include "platform/vector_clones.h"

namespace kelo::builtins {
namespace {

constexpr Wording kAlone = Wording::sentence(text::kNumericalArrayAsInput);
constexpr Wording kArray{"A, k", "A", predicate::kNumericArray};
constexpr Wording kDimension{"A, k", "k", text::kDimensionNumber};

inline bool isTrue(bool x) { return x; }
inline bool isTrue(double x) { return x != 0; }  // NaN is
inline bool isTrue(ComplexDouble z) { return z.real != 0 || z.imaginary != 0; }

/// Whether some of `n` numbers is true, or false. REQUIRES: n is a multiple of kBlock
constexpr int64_t kBlock = 64;
KELO_VECTOR_CLONES bool hasSomeInBlocks(bool wanted, const double* x, int64_t n) {
  for (int64_t i = 0; i < n; i += kBlock) {
    int64_t found = 0;
    for (int64_t j = 0; j < kBlock; ++j) found |= isTrue(x[i + j]) == wanted;
    if (found != 0) return true;
  }
  return false;
}

/// Whether some element is true (or false, as wanted); looks no further than it must.
bool hasSome(bool wanted, const double* x, int64_t n) {
  const int64_t inBlocks = n / kBlock * kBlock;
  return (inBlocks > 0 && hasSomeInBlocks(wanted, x, inBlocks)) ||
         std::any_of(x + inBlocks, x + n, [=](double v) { return isTrue(v) == wanted; });
}
bool hasSome(bool wanted, const ComplexDouble* x, int64_t n) {
  return std::any_of(x, x + n, [=](ComplexDouble z) { return isTrue(z) == wanted; });
}
bool hasSome(bool wanted, const bool* x, int64_t n) {
  return n > 0 && std::memchr(x, wanted ? 1 : 0, static_cast<size_t>(n)) != nullptr;
}

template <class T>
LogicalArray truthAlong(const TypedArray<T>& a, int64_t d, bool all) {
  const Slices s(a.size(), d);
  LogicalArray result(reducedSize(a.size(), d), all);
  bool* out = result.writable();
  if (s.inner == 1) {
    forColumns(s, a.data(), [&](int64_t k, const T* x) { out[k] = hasSome(!all, x, s.length) != all; });
  } else if (all) {
    foldSlices(s, a.data(), out, [](bool yes, T x, int64_t) { return yes & isTrue(x); });
  } else {
    foldSlices(s, a.data(), out, [](bool yes, T x, int64_t) { return yes | isTrue(x); });
  }
  return result;
}

inline double times(double product, double x) { return product * x; }
/// A factor of 1 changes nothing, not even an infinite part.
inline ComplexDouble times(ComplexDouble product, ComplexDouble x) {
  return product == ComplexDouble{1, 0} ? x : product * x;
}

template <class T>
TypedArray<T> productAlong(const TypedArray<T>& a, int64_t d) {
  TypedArray<T> result(reducedSize(a.size(), d), T{1});
  foldSlices(Slices(a.size(), d), a.data(), result.writable(),
             [](T product, T x, int64_t) { return times(product, x); });
  return result;
}

template <class T>
TypedArray<T> medianAlong(const TypedArray<T>& a, int64_t d) {
  const Slices s(a.size(), d);
  TypedArray<T> result(reducedSize(a.size(), d), T{});
  T* out = result.writable();
  forGatheredSlices(s, a.data(),
                    [&](int64_t k, T* x) { out[k] = median(std::span(x, static_cast<size_t>(s.length))); });
  return result;
}

/// The modes and how often they stand in their slices.
template <class T>
std::vector<Storable> modeAlong(const TypedArray<T>& a, int64_t d) {
  const Slices s(a.size(), d);
  TypedArray<T> values(reducedSize(a.size(), d), T{});
  DoubleArray counts(values.size(), 0.0);
  T* value = values.writable();
  double* count = counts.writable();
  forGatheredSlices(s, a.data(), [&](int64_t k, T* x) {
    const auto found = mode(std::span(x, static_cast<size_t>(s.length)));
    value[k] = found.value;
    count[k] = static_cast<double>(found.count);
  });
  return {std::move(values), std::move(counts)};
}

/// Logical arrays are counted as they are.
NodeValue reduceLogical(Reduction which, const LogicalArray& a, int64_t d) {
  if (which == Reduction::sum) return sumAlong(a, d);
  return truthAlong(a, d, which == Reduction::all);
}

}  // namespace

NodeValue reduction(Call& call) {
  const auto which = call.selector<Reduction>();
  const NumericArray& a = read::numeric(call, 0, call.count() == 1 ? kAlone : kArray);
  const int64_t d = call.count() == 1 ? a.size().defaultDimension() : read::dimension(call, 1, kDimension);
  const bool counts = which == Reduction::sum || which == Reduction::all || which == Reduction::any;
  if (counts && a.is(Kind::Logical)) return reduceLogical(which, a.asLogical(), d);
  return inOwnKind([&](const auto& x) -> NodeValue {
    switch (which) {
      case Reduction::all: return truthAlong(x, d, true);
      case Reduction::any: return truthAlong(x, d, false);
      case Reduction::mean: return meanAlong(x, d);
      case Reduction::median: return medianAlong(x, d);
      case Reduction::mode: return call.outputs(modeAlong(x, d));
      case Reduction::prod: return productAlong(x, d);
      case Reduction::sum: break;
    }
    return sumAlong(x, d);
  }, a);
}

}  // namespace kelo::builtins
