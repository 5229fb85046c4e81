// corrcoef: correlation coefficients R of columns, the probabilities P of no correlation, and
// Fisher's bounds RL and RU.
#include <cmath>

#include "builtins/reductions/covariance.h"
#include "builtins/reductions/handlers.h"
#include "builtins/special/error_inverse.h"
#include "builtins/special/gamma.h"
#include "messages/catalogue/reductions.h"

namespace kelo::builtins {
namespace {

struct Arg {
  enum class RowValue { all, complete, pairwise };
  enum class Name { alpha, rows };

  NumericArray A;
  std::optional<NumericArray> B;
  double alpha = 0.05;
  RowValue rowValue = RowValue::all;
};

constexpr Wording kName = Wording::sentence(text::kCorrcoefName);
constexpr Wording kRows = Wording::sentence(text::kCorrcoefRows);
constexpr Wording kAlpha = Wording::sentence(text::kCorrcoefAlpha);
constexpr Wording kLastValue{"A, B, ...", text::kFinalArgument, text::kRowsOrAlphaValue};
constexpr Wording kPair{"A, B", "A and B", text::kNonCharacterArrays};
constexpr Wording kSameCount{"A, B", "A and B", text::kSameNumbersOfElements};
constexpr Wording kAlone{"A", "A", text::kNonCharacterArrays};

void readOption(const Call& call, int position, Arg& arg) {
  const auto name = static_cast<Arg::Name>(read::option(call, position, kName, {"alpha", "rows"}));
  if (position + 1 == call.count()) throw kLastValue.complaint(call);
  if (name == Arg::Name::rows) {
    arg.rowValue = static_cast<Arg::RowValue>(read::option(call, position + 1, kRows, {"all", "complete", "pairwise"}));
    return;
  }
  arg.alpha = read::realScalar(call, position + 1, kAlpha);
  if (!(arg.alpha > 0 && arg.alpha < 1)) throw expectation(text::kCorrcoefAlpha);
}

Arg readArg(const Call& call) {
  Arg arg;
  const bool hasB = call.count() > 1 && !read::isText(call.arg(1));
  arg.A = read::nonChar(call, 0, hasB ? kPair : kAlone);
  if (hasB) {
    arg.B = read::nonChar(call, 1, kPair);
    if (arg.A.numElements() != arg.B->numElements()) throw kSameCount.complaint(call);
  } else if (!arg.A.size().isMatrix()) {
    throw expectation(text::kCorrcoefDimensions);
  }
  for (int k = hasB ? 2 : 1; k < call.count(); k += 2) readOption(call, k, arg);
  return arg;
}

/// The coefficients, and over how many rows each was taken.
template <class T>
struct Correlations {
  TypedArray<T> r;
  DoubleArray n;
};

double realPart(double x) { return x; }
double realPart(ComplexDouble z) { return z.real; }
double within(double r) { return r > 1 ? 1 : r < -1 ? -1 : r; }

template <class T>
TypedArray<T> covarianceOf(const TypedArray<T>& columns) {
  return covariances(columns, /*w*/ 0, Nanflag::includenan);
}

/// The coefficient of columns i and j from the matrix of covariances. A column with itself gives 1,
/// or NaN when it does not vary.
template <class T>
T coefficient(const TypedArray<T>& c, int64_t i, int64_t j) {
  const int64_t m = c.size().rows();
  const double a = std::sqrt(realPart(c[i + i * m]));
  const double b = std::sqrt(realPart(c[j + j * m]));
  const T r = c[i + j * m];
  if (i == j) return T{a > 0 && std::isfinite(a) ? 1 : std::nan("")};
  if constexpr (kIsComplex<T>)
    return {r.real / (a * b), r.imaginary / (a * b)};
  else
    return within(r / a / b);
}

template <class T>
Correlations<T> correlations(const TypedArray<T>& columns, Arg::RowValue rows) {
  const int64_t m = columns.size().columns();
  Correlations<T> result{TypedArray<T>(SizeVector(m, m), T{}), DoubleArray(SizeVector(m, m), 0.0)};
  T* r = result.r.writable();
  double* n = result.n.writable();
  const auto set = [&](int64_t i, int64_t j, T value, int64_t count) {
    r[j + i * m] = conj(value);
    r[i + j * m] = value;
    n[i + j * m] = n[j + i * m] = static_cast<double>(count);
  };
  if (rows == Arg::RowValue::pairwise) {
    forPairsOfColumns<T>(columns, [&](int64_t i, int64_t j, const TypedArray<T>& pair) {
      const int64_t other = i == j ? 0 : 1;
      set(i, j, coefficient(covarianceOf(pair), 0, other), pair.size().rows());
    });
    return result;
  }
  const TypedArray<T> used = rows == Arg::RowValue::complete ? completeRows(columns) : columns;
  const TypedArray<T> c = covarianceOf(used);
  for (int64_t j = 0; j < m; ++j) {
    for (int64_t i = 0; i <= j; ++i) set(i, j, coefficient(c, i, j), used.size().rows());
  }
  return result;
}

double probability(double r, double n) {
  const double df = n - 2;
  const double t = -std::abs(r * std::sqrt(df / (1 - r * r)));
  return special::betai(df / 2, 0.5, df / (df + t * t));
}

/// Off the diagonal f(r, n); on it 1, or NaN with the coefficient when `spreadsNaN`.
template <class F>
DoubleArray ofCoefficients(const Correlations<double>& all, bool spreadsNaN, F f) {
  DoubleArray result(all.r.size(), 1.0);
  double* out = result.writable();
  const int64_t m = all.r.size().rows();
  for (int64_t k = 0; k < result.numElements(); ++k) {
    if (k % m != k / m)
      out[k] = f(all.r[k], all.n[k]);
    else if (spreadsNaN)
      out[k] = all.r[k];
  }
  return result;
}

DoubleArray bound(const Correlations<double>& all, double alpha, double side) {
  const double width = special::erfinv(1 - alpha) * 1.4142135623730951;
  return ofCoefficients(all, true, [&](double r, double n) {
    const double z = std::log((1 + r) / (1 - r));
    const double d = width / std::sqrt(n - 3);
    return std::tanh(0.5 * z + side * d);
  });
}

}  // namespace

NodeValue corrcoef(Call& call) {
  const Arg arg = readArg(call);
  if (!arg.A.has(Property::allReals) || (arg.B && !arg.B->has(Property::allReals))) {
    if (call.outputCount() > 1) throw expectation(text::kCorrcoefComplexOutputs);
    const ComplexDoubleArray a = arg.A.toComplexArray();
    return correlations(arg.B ? twoColumns(a, arg.B->toComplexArray()) : asColumns(a), arg.rowValue).r;
  }
  const DoubleArray a = arg.A.toDoubleArray();
  const auto all = correlations(arg.B ? twoColumns(a, arg.B->toDoubleArray()) : asColumns(a), arg.rowValue);
  std::vector<Storable> outputs;
  outputs.reserve(4);
  outputs.emplace_back(all.r);
  if (call.outputCount() > 1) outputs.push_back(ofCoefficients(all, false, probability));
  if (call.outputCount() > 2) outputs.push_back(bound(all, arg.alpha, -1));
  if (call.outputCount() > 3) outputs.push_back(bound(all, arg.alpha, 1));
  return call.outputs(std::move(outputs));
}

}  // namespace kelo::builtins
