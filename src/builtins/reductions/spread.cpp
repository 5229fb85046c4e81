// var, std and rms: sums of squared magnitudes, about the mean of a slice or about 0.
#include <cmath>

#include "builtins/reductions/handlers.h"
#include "messages/catalogue/reductions.h"

namespace kelo::builtins {
namespace {

constexpr Wording kArray{"A, w, k", "A", predicate::kNumericArray};
constexpr Wording kWeight{"A, w, k", "w", text::kZeroOrOne};
constexpr Wording kDimension{"A, w, k", "k", predicate::kPositiveInteger};
constexpr Wording kRmsArray{"...", "A", predicate::kNumericArray};
constexpr Wording kRmsFlag{"_,_,nanflag", "nanflag", text::kEitherNaNFlag};

constexpr int64_t kLongColumn = 64;

inline double squared(double x) { return x * x; }
inline double squared(ComplexDouble z) { return z.real * z.real + z.imaginary * z.imaginary; }
inline bool isNumber(double x) { return x == x; }
inline bool isNumber(ComplexDouble z) { return !z.hasNaN(); }

/// The sum of term(x, k) over the elements x of each slice k. A long column goes in eight sums side
/// by side.
template <class T, class Term>
DoubleArray sumOfTerms(const TypedArray<T>& a, int64_t d, Term term) {
  const Slices s(a.size(), d);
  DoubleArray result(reducedSize(a.size(), d), 0.0);
  double* out = result.writable();
  const auto step = [term](double sum, T x, int64_t k) { return sum + term(x, k); };
  if (s.inner != 1 || s.length < kLongColumn) {
    foldSlices(s, a.data(), out, step);
    return result;
  }
  forColumns(s, a.data(), [&](int64_t k, const T* x) {
    double sums[8] = {};
    int64_t i = 0;
    for (; i + 8 <= s.length; i += 8) {
      for (int64_t j = 0; j < 8; ++j) sums[j] += term(x[i + j], k);
    }
    for (; i < s.length; ++i) sums[0] += term(x[i], k);
    out[k] = ((sums[0] + sums[1]) + (sums[2] + sums[3])) + ((sums[4] + sums[5]) + (sums[6] + sums[7]));
  });
  return result;
}

template <class T>
DoubleArray varianceAlong(const TypedArray<T>& a, int64_t d, bool divideByCount) {
  const auto means = meanAlong(a, d);
  const T* mean = means.data();
  DoubleArray result = sumOfTerms(a, d, [mean](T x, int64_t k) { return squared(x - mean[k]); });
  const int64_t n = a.size().dimensionLength(d);
  const auto divisor = static_cast<double>(divideByCount || n <= 1 ? n : n - 1);
  double* out = result.writable();
  for (int64_t k = 0; k < result.numElements(); ++k) out[k] /= divisor;
  return result;
}

DoubleArray rooted(DoubleArray a) {
  double* out = a.writable();
  for (int64_t k = 0; k < a.numElements(); ++k) out[k] = std::sqrt(out[k]);
  return a;
}

template <class T>
DoubleArray meanSquare(const TypedArray<T>& a, int64_t d, bool omitNaN) {
  const auto n = static_cast<double>(a.size().dimensionLength(d));
  if (!omitNaN) {
    DoubleArray result = sumOfTerms(a, d, [](T x, int64_t) { return squared(x); });
    double* out = result.writable();
    for (int64_t k = 0; k < result.numElements(); ++k) out[k] /= n;
    return result;
  }
  DoubleArray result = sumOfTerms(a, d, [](T x, int64_t) { return isNumber(x) ? squared(x) : 0.0; });
  const DoubleArray counts = sumOfTerms(a, d, [](T x, int64_t) { return isNumber(x) ? 1.0 : 0.0; });
  double* out = result.writable();
  for (int64_t k = 0; k < result.numElements(); ++k) out[k] /= counts[k];
  return result;
}

struct RmsForm {
  std::vector<int64_t> dimensions;
  bool omitNaN = false;
};

RmsForm readRmsForm(const Call& call, const SizeVector& size) {
  RmsForm form{{size.defaultDimension()}};
  if (call.count() == 1) return form;
  if (call.count() == 3) form.omitNaN = read::option(call, 2, kRmsFlag, {"includenan", "omitnan"}) == 1;
  if (auto named = namedDimensions(call.arg(1), size)) {
    form.dimensions = std::move(*named);
    return form;
  }
  if (call.count() == 3) throw expectation(text::kRmsDimensions);
  constexpr Wording kSecond = Wording::sentence(text::kRmsSecondInput);
  form.omitNaN = read::option(call, 1, kSecond, {"includenan", "omitnan"}) == 1;
  return form;
}

}  // namespace

NodeValue spread(Call& call) {
  const NumericArray& a = read::numeric(call, 0, kArray);
  const int64_t w = call.count() < 2 ? 0 : read::integer(call, 1, kWeight, 0);
  if (w > 1) throw kWeight.complaint(call);
  const int64_t d = call.count() < 3 ? a.size().defaultDimension() : read::dimension(call, 2, kDimension);
  DoubleArray variance = inOwnKind([&](const auto& x) { return varianceAlong(x, d, w == 1); }, a);
  if (call.selector<Spread>() == Spread::var) return variance;
  return rooted(std::move(variance));
}

NodeValue rms(Call& call) {
  const NumericArray& a = read::numeric(call, 0, kRmsArray);
  const RmsForm form = readRmsForm(call, a.size());
  return inOwnKind([&](const auto& x) -> NodeValue {
    const int64_t d = form.dimensions.front();
    if (form.dimensions.size() == 1) return rooted(meanSquare(x, d, form.omitNaN));
    return rooted(meanSquare(joinDimensions(x, form.dimensions), d, form.omitNaN));
  }, a);
}

}  // namespace kelo::builtins
