#include "linear/norm.h"

#include <cmath>

#include "linear/euclidean_norm.h"
#include "linear/lapack.h"
#include "linear/matrix_parts.h"
#include "linear/svd.h"
#include "messages/catalogue/linear_algebra.h"
#include "platform/vector_clones.h"

namespace kelo {
namespace {

// The sum of the powers of the magnitudes; a NaN spreads by itself.
template <class T>
double powerNorm(const TypedArray<T>& x, double p) {
  double sum = 0;
  for (const T& element : x.values()) sum += std::pow(magnitudeOf(element), p);
  return std::pow(sum, 1 / p);
}

template <class T>
double normOf(const TypedArray<T>& x, double p) {
  double result = 0;
  if (p == 2) return lapack::nrm2(checkedInt32(x.numElements()), x.data());
  if (p == 1) {
    for (const T& element : x.values()) result += magnitudeOf(element);
    return result;
  }
  if (std::isfinite(p)) return powerNorm(x, p);
  result = magnitudeOf(x[0]);
  for (const T& element : x.values()) {
    const double next = magnitudeOf(element);
    result = p > 0 ? std::max(result, next) : std::min(result, next);
  }
  return result;
}

template <class T>
double greatestColumnSum(const TypedArray<T>& a) {
  return lapack::norm1(checkedInt32(a.size().rows()), checkedInt32(a.size().columns()), a.data());
}

template <class T>
double greatestRowSum(const TypedArray<T>& a) {
  const int64_t m = a.size().rows(), n = a.size().columns();
  std::vector<double> sums(static_cast<size_t>(m));
  for (int64_t j = 0; j < n; ++j) {
    for (int64_t i = 0; i < m; ++i) sums[static_cast<size_t>(i)] += magnitudeOf(a[j * m + i]);
  }
  return *std::max_element(sums.begin(), sums.end());
}

// Several columns at a time, each row's magnitudes in their order.
KELO_WIDE_CLONES void addMagnitudes(const double* a, int64_t m, int64_t n, double* sums) {
  constexpr int64_t kColumns = 4;
  int64_t j = 0;
  for (; j + kColumns <= n; j += kColumns) {
    const double* c = a + j * m;
    for (int64_t i = 0; i < m; ++i) {
      sums[i] =
          (((sums[i] + std::fabs(c[i])) + std::fabs(c[m + i])) + std::fabs(c[2 * m + i])) + std::fabs(c[3 * m + i]);
    }
  }
  for (; j < n; ++j) {
    for (int64_t i = 0; i < m; ++i) sums[i] += std::fabs(a[j * m + i]);
  }
}

double greatestRowSum(const DoubleArray& a) {
  std::vector<double> sums(static_cast<size_t>(a.size().rows()));
  addMagnitudes(a.data(), a.size().rows(), a.size().columns(), sums.data());
  double greatest = 0;
  for (const double sum : sums) {
    if (std::isnan(sum)) return NAN;
    greatest = std::max(greatest, sum);
  }
  return greatest;
}

constexpr int64_t kMany = 32;  // from here on worth a way of their own

// Negative where the plain way must tell.
double normOfMany(const NumericArray& x) {
  if (x.is(Kind::Double)) return euclideanNorm(x.asDouble().data(), x.numElements());
  return euclideanNorm(&x.asComplex().data()->real, 2 * x.numElements());
}

}  // namespace

double vectorNorm(const NumericArray& x, double p) {
  if (x.isEmpty()) return 0;
  if (p == 2 && (x.is(Kind::Double) || x.is(Kind::Complex)) && x.numElements() >= kMany) {
    if (const double norm = normOfMany(x); norm >= 0) return norm;
  }
  if (x.has(Property::hasSomeNaNs)) return NAN;
  if (p > 0 && x.has(Property::hasSomeInfs)) return INFINITY;
  return inCommonKind([p](const auto& elements) { return normOf(elements, p); }, x);
}

double matrixNorm(NumericArray a, double p) {
  if (a.isEmpty()) return 0;
  if (p == 1 && a.is(Kind::Double)) return greatestColumnSum(a.asDouble());  // which loses no NaN and no Inf
  if (p != 1 && p != 2 && a.is(Kind::Double)) return greatestRowSum(a.asDouble());  // nor does this
  if (a.has(Property::hasSomeNaNs)) return NAN;
  if (a.has(Property::hasSomeInfs)) return INFINITY;
  if (p == 2) return singularValues(std::move(a), text::kMatrixNormFailed)[0];
  return inCommonKind([p](const auto& matrix) {
    return p == 1 ? greatestColumnSum(matrix) : greatestRowSum(matrix);
  }, std::move(a));
}

}  // namespace kelo
