// From roots to coefficients and back: `poly`, `roots` and the companion matrix, whose eigenvalues
// are the roots.
#include "builtins/polynomials/convolve.h"
#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "linear/eigen.h"
#include "linear/matrix_parts.h"
#include "messages/catalogue/polynomials.h"
#include "values/elementwise.h"
#include "values/operators.h"

namespace kelo::builtins {
namespace {

bool isFinite(double x) { return std::isfinite(x); }
bool isFinite(ComplexDouble z) { return std::isfinite(z.real) && std::isfinite(z.imaginary); }
bool hasInfOrNaN(const NumericArray& a) { return a.has(Property::hasSomeInfs) || a.has(Property::hasSomeNaNs); }

/// n coefficients have the companion matrix of n - 1 rows. REQUIRES: p is not empty
template <class T>
TypedArray<T> companion(std::span<const T> p) {
  const int64_t n = static_cast<int64_t>(p.size()) - 1;
  TypedArray<T> matrix(SizeVector(n, n), T{});
  if (n == 0) return matrix;
  T* c = matrix.writable();
  for (int64_t j = 0; j < n; ++j) {
    c[j * n] = -p[static_cast<size_t>(j + 1)] / p[0];
    if (j + 1 < n) c[j * n + j + 1] = T{1};
  }
  return matrix;
}

// Without what makes no root: zeros in front, and leading coefficients so small that dividing by
// them overflows.
template <class T>
std::span<const T> significant(std::span<const T> p) {
  const auto overflows = [&] { return std::any_of(p.begin(), p.end(), [&](T x) { return !isFinite(x / p[0]); }); };
  while (!p.empty() && (isZero(p[0]) || overflows())) p = p.subspan(1);
  return p;
}

template <class T>
NumericArray rootsOf(std::span<const T> p) {
  size_t zeros = 0;
  p = significant(p);
  while (!p.empty() && isZero(p.back())) p = p.first(p.size() - 1), ++zeros;
  DoubleArray atZero(SizeVector(static_cast<int64_t>(zeros), 1), 0.0);
  if (p.size() < 2) return atZero;
  std::vector<Storable> parts = {std::move(atZero), eigen(companion(p), EigenVectors::none).values};
  return *catenate(std::move(parts), 1).numeric();
}

/// Repeated products with (x - r).
template <class T>
TypedArray<T> fromRoots(std::span<const T> roots) {
  TypedArray<T> p(T{1});
  for (const T& root : roots) {
    const TypedArray<T> factor(SizeVector(1, 2), {T{1}, -root});
    p = polynomialProduct(p, factor);
  }
  return p;
}

NumericArray takeCoefficients(Call& call, const char* finite) {
  const Wording words = {"p", "p", text::kCoefficients};
  NumericArray p = takeVector(call, 0, words);
  if (p.is(Kind::Char)) throw words.complaint(call);
  if (hasInfOrNaN(p)) throw Wording{"p", "p", finite}.complaint(call);
  return p;
}

DoubleArray realParts(const ComplexDoubleArray& z) {
  return unaryLoop(z, [](ComplexDouble w) noexcept { return w.real; });
}

}  // namespace

NodeValue roots(Call& call) {
  return inCommonKind([](auto p) { return NodeValue(rootsOf(p.values())); },
                      takeCoefficients(call, text::kNoNaNNorInf));
}

NodeValue compan(Call& call) {
  NumericArray coefficients = takeCoefficients(call, text::kCoefficients);
  if (coefficients.isEmpty()) throw expectation(text::kNoCoefficients);
  return inCommonKind([](auto p) { return NodeValue(companion(p.values())); }, std::move(coefficients));
}

NodeValue poly(Call& call) {
  const Wording words = {"r", "r", text::kVectorOrSquareMatrix};
  NumericArray r = read::takeNumeric(call, 0, words);
  if (r.is(Kind::Char)) throw Wording{"r", "r", text::kNumbersNotCharacters}.complaint(call);
  const bool isVector = r.has(Property::vectorInNumbers);
  if (!isVector && !r.has(Property::squareMatrixInNumbers)) throw words.complaint(call);
  if (r.isEmpty()) throw expectation(text::kNoRoots);
  if (hasInfOrNaN(r)) throw Wording{"r", "r", text::kNoInfNorNaN}.complaint(call);
  const bool isReal = r.has(Property::allReals);
  if (!isVector) r = eigen(std::move(r), EigenVectors::none).values;
  NumericArray p = inCommonKind([](auto z) { return NumericArray(fromRoots(z.values())); }, std::move(r));
  // The characteristic polynomial of a real matrix is real, though its eigenvalues may not be.
  if (isReal && p.is(Kind::Complex)) return realParts(p.asComplex());
  return p;
}

}  // namespace kelo::builtins
