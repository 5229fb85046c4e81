// `polyval`: a polynomial at many points, and how far off its values may be when it came from a
// fit.

#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "builtins/polynomials/vandermonde.h"
#include "linear/linear.h"
#include "messages/catalogue/polynomials.h"
#include "platform/parallel.h"
#include "values/elementwise.h"
#include "values/numbers.h"

namespace kelo::builtins {
namespace {

constexpr int64_t kLanes = 16;

// Horner's rule for points that are carried through all coefficients side by side. y may be x.
template <int64_t kCount, class T>
void horner(std::span<const T> p, const T* x, T* y) {
  T point[kCount], value[kCount];
  std::copy_n(x, kCount, point);
  std::fill_n(value, kCount, p[0]);
  for (size_t k = 1; k < p.size(); ++k) {
    for (int64_t l = 0; l < kCount; ++l) value[l] = value[l] * point[l] + p[k];
  }
  std::copy_n(value, kCount, y);
}

template <class T>
TypedArray<T> evaluated(std::span<const T> p, TypedArray<T> x) {
  if (p.empty()) return TypedArray<T>(x.size(), T{});
  const auto fill = [&](T* y, const T* points) {
    platform::parallelFor(x.numElements(), [=](int64_t i, int64_t end) {
      for (; i + kLanes <= end; i += kLanes) horner<kLanes>(p, points + i, y + i);
      for (; i < end; ++i) horner<1>(p, points + i, y + i);
    });
  };
  if (x.isUnshared() && !x.isEmpty()) {
    T* own = x.writable();
    fill(own, own);
    return x;
  }
  auto result = TypedArray<T>::uninitialized(x.size());
  fill(result.writable(), x.data());
  return result;
}

/// What `polyfit` found besides the coefficients.
struct Fit {
  NumericArray r;
  double normr, df;
};

const char* signatureOf(const Call& call) {
  static constexpr const char* kSignatures[] = {"p, x", "p, x, S", "p, x, S, mu"};
  return kSignatures[call.count() - 2];
}

// A field of S as an argument of its own, so that the readers can be asked about it.
const Storable& fieldOf(const Call& call, const StructArray& s, const char* field) {
  const int64_t index = s.fieldIndex(Name::intern(field));
  if (index < 0) throw Wording{signatureOf(call), "S", text::kFieldsOfFit}.complaint(call);
  return s.value(0, index);
}

double nonNegative(const Call& call, const Storable& value, const char* name, const char* should) {
  const NumericArray* number = value.numeric();
  const bool isReal = number && number->isScalar() && number->has(Property::allReals);
  const double x = isReal ? number->toDoubleArray().scalar() : -1;
  if (!(x >= 0)) throw Wording{signatureOf(call), name, should}.complaint(call);
  return x;
}

std::optional<Fit> readFit(const Call& call) {
  if (call.count() < 3) return std::nullopt;
  const Storable& given = call.arg(2);
  if (given.isArray() && given.isEmpty()) return std::nullopt;
  const char* signature = signatureOf(call);
  const StructArray& s = read::structure(call, 2, {signature, "S", predicate::kEmptyOrStructure});
  if (s.numElements() != 1) throw Wording{signature, "S", predicate::kEmptyOrStructure}.complaint(call);
  const Storable &r = fieldOf(call, s, "R"), &normr = fieldOf(call, s, "normr"), &df = fieldOf(call, s, "df");
  if (!r.isNumeric() || !r.size().isMatrix()) {
    throw Wording{signature, "S.R", predicate::kMatrixOfNumbers}.complaint(call);
  }
  const double freedom = nonNegative(call, df, "S.df", predicate::kNonNegativeInteger);
  if (freedom != std::floor(freedom) || std::isinf(freedom)) {
    throw Wording{signature, "S.df", predicate::kNonNegativeInteger}.complaint(call);
  }
  return Fit{*r.numeric(), nonNegative(call, normr, "S.normr", predicate::kNonNegativeScalar), freedom};
}

NumericArray readCentre(Call& call) {
  if (call.count() < 4) return NumericArray();
  const Wording words = {signatureOf(call), "mu", predicate::kVectorOfTwoNumbers};
  NumericArray mu = read::takeNumeric(call, 3, words);
  if (!mu.has(Property::vectorInNumbers)) throw words.complaint(call);
  if (mu.numElements() < 2) throw Wording{words.signature, "mu", predicate::kVectorOfTwoOrMore}.complaint(call);
  return mu;
}

double squaredMagnitude(double x) { return x * x; }
double squaredMagnitude(ComplexDouble z) { return z.real * z.real + z.imaginary * z.imaginary; }

/// normr / sqrt(df) * sqrt(1 + squares of a row of V / R), for each point.
template <class T>
DoubleArray deviation(const Call& call, const Fit& fit, int64_t coefficients, const TypedArray<T>& x) {
  const int64_t n = x.numElements();
  DoubleArray delta(x.size(), 1.0);
  double* d = delta.writable();
  if (n > 0 && coefficients > 0) {
    const auto warn = [&](std::string sentence) { call.warn(sentence); };
    const NumericArray e = mrdivide(vandermonde(x, coefficients - 1), fit.r, warn);
    e.visit([&](const auto& rows) {
      if constexpr (std::is_same_v<decltype(rows), const DoubleArray&> ||
                    std::is_same_v<decltype(rows), const ComplexDoubleArray&>) {
        for (int64_t i = 0; i < rows.numElements(); ++i) d[i % n] += squaredMagnitude(rows[i]);
      }
    });
  }
  const double scale = fit.df == 0 ? kInf : fit.normr / std::sqrt(fit.df);
  for (int64_t i = 0; i < n; ++i) d[i] = scale * std::sqrt(d[i]);
  return delta;
}

template <class T>
TypedArray<T> centred(TypedArray<T> x, const TypedArray<T>& mu) {
  if (mu.isEmpty()) return x;
  const T centre = mu[0], scale = mu[1];
  return unaryLoop(std::move(x), [=](T value) noexcept { return (value - centre) / scale; });
}

}  // namespace

NodeValue polyval(Call& call) {
  const char* signature = signatureOf(call);
  const bool isPlain = call.count() == 2;
  const Wording wordsOfP = {signature, "p", isPlain ? text::kVectorAndArray : predicate::kVectorOfNumbers};
  const Wording wordsOfX = isPlain ? wordsOfP : Wording{signature, "x", predicate::kArrayOfNumbers};
  NumericArray p = takeVector(call, 0, wordsOfP);
  NumericArray x = read::takeNumeric(call, 1, wordsOfX);
  const std::optional<Fit> fit = readFit(call);
  if (call.outputCount() == 2 && !fit) throw expectation(text::kNoOutputWithoutS);
  NumericArray mu = readCentre(call);
  return inCommonKind(
      [&](auto coefficients, auto points, auto centre) -> NodeValue {
        points = centred(std::move(points), centre);
        if (call.outputCount() == 1) return evaluated(coefficients.values(), std::move(points));
        DoubleArray delta = deviation(call, *fit, coefficients.numElements(), points);
        return call.outputs({evaluated(coefficients.values(), std::move(points)), std::move(delta)});
      },
      std::move(p), std::move(x), std::move(mu));
}

}  // namespace kelo::builtins
