// Inverse, condition estimate and powers of square matrices.
#include <limits>

#include "linear/lapack.h"
#include "linear/linear.h"
#include "linear/rcond.h"
#include "linear/matrix_parts.h"
#include "messages/catalogue/operators.h"
#include "messages/message.h"

namespace kelo {
namespace {

bool isSquare(const NumericArray& a) { return a.size().isMatrix() && a.size().rows() == a.size().columns(); }

struct Factored {
  std::vector<int> pivots;
  bool isSingular;
  double norm;  // of the matrix itself
};

// LU factors in place of `a`.
template <class T>
Factored factor(TypedArray<T>& a, const char* failure) {
  const int n = checkedInt32(a.size().rows());
  const double norm = lapack::norm1(n, n, a.data());
  std::vector<int> pivots(static_cast<size_t>(n));
  const int info = lapack::getrf(n, n, a.writable(), pivots.data());
  if (info < 0) throw problem(failure);
  return {std::move(pivots), info > 0, norm};
}

template <class T>
void warnIfNearlySingular(int n, const T* factors, double norm, const Warn& warn) {
  const double least = n * std::numeric_limits<double>::epsilon();
  if (isRcondFarAbove(least, n, factors, norm)) return;
  const double rcond = rcondOfFactors(n, factors, norm);
  if (!(least <= rcond)) warn(text::inverseNearlySingular(rcond));
}

template <class T>
TypedArray<T> inverseOfFactors(int n, TypedArray<T> factors, const std::vector<int>& pivots) {
  if constexpr (std::is_same_v<T, double>) {
    if (n >= triangles::kLeastOrder) {
      auto result = DoubleArray::uninitialized(factors.size());
      triangles::invert(n, factors.data(), pivots.data(), result.writable());
      return result;
    }
  }
  if (lapack::getri(n, factors.writable(), pivots.data()) != 0) throw problem(text::kInverseUnexpected);
  return factors;
}

template <class T>
NumericArray inverted(TypedArray<T> a, const Warn& warn) {
  const int n = checkedInt32(a.size().rows());
  const Factored factored = factor(a, text::kInverseUnexpected);
  if (factored.isSingular) throw problem(text::kInverseOfSingular);
  warnIfNearlySingular(n, a.data(), factored.norm, warn);
  return inverseOfFactors(n, std::move(a), factored.pivots);
}

// By repeated squaring: as many products as the exponent has binary digits, and one more for each
// that is 1.
NumericArray wholePower(NumericArray base, uint64_t exponent) {
  if (exponent == 0) return identityMatrix<double>(base.size().rows(), base.size().columns());
  while (exponent % 2 == 0) {
    base = mtimes(base, base);
    exponent /= 2;
  }
  NumericArray result = base;
  while (exponent /= 2) {
    base = mtimes(base, base);
    if (exponent % 2 == 1) result = mtimes(std::move(result), base);
  }
  return result;
}

}  // namespace

NumericArray inverse(NumericArray a, const Warn& warn) {
  if (!isSquare(a) || a.is(Kind::Char)) throw problem(text::kInverseOfNonSquare);
  if (a.isEmpty()) return a;
  return inCommonKind([&warn](auto matrix) { return inverted(std::move(matrix), warn); }, std::move(a));
}

double rcond(NumericArray a) {
  if (!isSquare(a)) throw problem(text::kRcondUnexpected);
  if (a.isEmpty()) return kInf;
  return inCommonKind(
      [](auto matrix) {
        const Factored factored = factor(matrix, text::kRcondUnexpected);
        if (factored.isSingular) return 0.0;
        return rcondOfFactors(checkedInt32(matrix.size().rows()), matrix.data(), factored.norm);
      },
      std::move(a));
}

NumericArray mpower(NumericArray a, NumericArray b, const Warn& warn) {
  if (!b.isScalar()) throw problem(text::kPowerScalarExponent);
  if (!isSquare(a)) throw problem(text::kPowerSquareBase);
  if (a.isScalar()) return elementwise(BinaryOp::dpower, std::move(a), std::move(b));
  const bool wholeExponent =
      b.has({Property::allReals, Property::allWellDefinedRealParts, Property::allIntegerRealParts, Property::scalar});
  if (!wholeExponent) throw problem(text::kPowerIntegerExponent);
  const int64_t exponent = checkedCast(b.toDoubleArray().scalar());
  a = std::move(a).toKind(a.has(Property::allReals) ? Kind::Double : Kind::Complex);
  if (exponent >= 0) return wholePower(std::move(a), static_cast<uint64_t>(exponent));
  return wholePower(inverse(std::move(a), warn), -static_cast<uint64_t>(exponent));
}

}  // namespace kelo
