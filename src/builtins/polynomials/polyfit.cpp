// `polyfit`: the polynomial of a degree that goes through points with the least sum of squares.
//
// The matrix of powers is factored by Householder reflections; its triangle gives the coefficients
// and is also what `polyval` needs for its second output. Where the triangle does not decide them
// (more coefficients than points, points that fall together), the least-squares solver with column
// exchanges chooses a solution with as few coefficients as it can, also where the matrix is square.
#include <limits>

#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "builtins/polynomials/vandermonde.h"
#include "linear/lapack.h"
#include "linear/linear.h"
#include "linear/matrix_parts.h"
#include "linear/matrix_vector.h"
#include "messages/catalogue/linear_algebra.h"
#include "messages/catalogue/polynomials.h"
#include "values/elementwise.h"

namespace kelo::builtins {
namespace {

template <class T>
struct Centre {
  T mean;
  double deviation;
};

template <class T>
Centre<T> centreOf(const TypedArray<T>& x) {
  const auto n = static_cast<double>(x.numElements());
  T sum{};
  for (const T& value : x.values()) sum = sum + value;
  const T mean = sum / T{n};
  double squares = 0;
  for (const T& value : x.values()) squares += std::pow(magnitudeOf(value - mean), 2);
  return {mean, n > 1 ? std::sqrt(squares / (n - 1)) : 0.0};
}

/// The triangle of a factored matrix and the right side turned with it: solving triangle * p =
/// turned gives p.
template <class T>
struct Factored {
  TypedArray<T> triangle;  // min(m, n) x n
  TypedArray<T> turned;    // m x 1
};

template <class T>
Factored<T> factored(TypedArray<T> v, TypedArray<T> y) {
  const int m = checkedInt32(v.size().rows()), n = checkedInt32(v.size().columns());
  const int k = std::min(m, n);
  std::vector<T> tau(static_cast<size_t>(k));
  T* packed = v.writable();
  requireDone(lapack::geqrf(m, n, packed, tau.data()), text::kQrFailed);
  requireDone(lapack::multiplyByQ(/*conjugated*/ true, m, 1, k, packed, tau.data(), y.writable(), m), text::kQrFailed);
  return {upperTriangle(v, k), std::move(y)};
}

// Whether each column of the matrix adds something to those before it, to working precision. A
// column is measured by its own length, so that the scale of the points does not matter.
template <class T>
bool hasFullRank(const TypedArray<T>& triangle, int64_t points) {
  const int n = checkedInt32(triangle.size().columns());
  const double tolerance = static_cast<double>(std::max<int64_t>(points, n)) * std::numeric_limits<double>::epsilon();
  for (int j = 0; j < n; ++j) {
    const T* column = triangle.data() + static_cast<int64_t>(j) * n;
    if (magnitudeOf(column[j]) <= tolerance * lapack::nrm2(j + 1, column)) return false;
  }
  return true;
}

template <class T>
double residualNorm(const TypedArray<T>& v, const TypedArray<T>& p, const TypedArray<T>& y) {
  const int m = checkedInt32(v.size().rows()), n = checkedInt32(v.size().columns());
  std::vector<T> rest(static_cast<size_t>(m));
  multiplyVector(m, n, v.data(), p.data(), rest.data());
  for (int i = 0; i < m; ++i) rest[static_cast<size_t>(i)] = y[i] - rest[static_cast<size_t>(i)];
  return lapack::nrm2(m, rest.data());
}

Storable fitRecord(NumericArray r, double normr, double df) {
  StructArray s;
  for (const auto& [name, value] :
       {std::pair{"R", std::move(r)}, {"normr", NumericArray(normr)}, {"df", NumericArray(df)}}) {
    s.put(Name::intern(name), value);
  }
  return s;
}

template <class T>
TypedArray<T> asColumn(TypedArray<T> array) {
  const int64_t count = array.numElements();
  return std::move(array).reshaped(SizeVector(count, 1));
}

template <class T>
TypedArray<T> leastSquares(const Call& call, const TypedArray<T>& v, const TypedArray<T>& y, const Factored<T>& f) {
  const int64_t m = v.size().rows(), n = v.size().columns();
  constexpr const char* kMany = kIsComplex<T> ? text::kManyComplexPolynomials : text::kManyPolynomials;
  const bool isDecided = m >= n && hasFullRank(f.triangle, m);
  if (isDecided) {
    TypedArray<T> p = f.turned;
    const int info =
        lapack::trtrs(checkedInt32(n), 1, f.triangle.data(), checkedInt32(n), p.writable(), checkedInt32(m));
    requireDone(info, text::kQrFailed);
    return TypedArray<T>::column(p.values().first(static_cast<size_t>(n)));
  }
  call.warn(m < n ? kMany : text::kDeficientFit);
  NumericArray p = *solveLeastSquares(v, y).x;
  if constexpr (kIsComplex<T>)
    return std::move(p).toComplexArray();
  else
    return std::move(p).toDoubleArray();
}

template <class T>
NodeValue fitted(const Call& call, TypedArray<T> x, TypedArray<T> y, int64_t degree) {
  Storable mu;
  if (call.outputCount() > 2) {
    const Centre<T> centre = centreOf(x);
    x = unaryLoop(std::move(x), [=](T value) noexcept { return (value - centre.mean) / T{centre.deviation}; });
    mu = TypedArray<T>(SizeVector(1, 2), {centre.mean, T{centre.deviation}});
  }
  const TypedArray<T> v = vandermonde(x, degree);
  y = asColumn(std::move(y));
  const Factored<T> f = factored(v, y);
  TypedArray<T> p = leastSquares(call, v, y, f);
  const double normr = residualNorm(v, p, y);
  const auto df = static_cast<double>(std::max<int64_t>(v.size().rows() - v.size().columns(), 0));
  TypedArray<T> coefficients = std::move(p).reshaped(SizeVector(1, v.size().columns()));
  return call.outputs({std::move(coefficients), fitRecord(f.triangle, normr, df), std::move(mu)});
}

NumericArray takePoints(Call& call, int position, const char* name) {
  const Wording words = {"x, y, n", name, text::kFiniteNumbers};
  NumericArray points = read::takeNumeric(call, position, words);
  if (points.has(Property::hasSomeInfs) || points.has(Property::hasSomeNaNs)) throw words.complaint(call);
  if (points.isEmpty()) throw Wording{words.signature, name, text::kNonEmpty}.complaint(call);
  return points;
}

}  // namespace

NodeValue polyfit(Call& call) {
  constexpr const char* kSignature = "x, y, n";
  NumericArray x = takePoints(call, 0, "x");
  NumericArray y = takePoints(call, 1, "y");
  const int64_t degree = read::integer(call, 2, {kSignature, "n", text::kDegree}, 0);
  return inCommonKind(
      [&](auto points, auto values) {
        if (points.numElements() != values.numElements()) {
          throw Wording{kSignature, "x and y", text::kSameCounts}.complaint(call);
        }
        return fitted(call, std::move(points), std::move(values), degree);
      },
      std::move(x), std::move(y));
}

}  // namespace kelo::builtins
