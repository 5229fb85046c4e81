#include "linear/svd.h"

#include <cmath>

#include "linear/lapack.h"
#include "linear/matrix_parts.h"
#include "messages/catalogue/linear_algebra.h"
#include "values/operators.h"

namespace kelo {
namespace {

// What the library gives: vt is the conjugated transpose of v.
template <class T>
struct Vectors {
  TypedArray<T> u;
  DoubleArray s;  // a column
  TypedArray<T> vt;
};

/// Room for so many columns of u and rows of vt.
template <class T>
Vectors<T> place(int64_t m, int64_t columns, int64_t n, int64_t rows) {
  return {TypedArray<T>::uninitialized(SizeVector(m, columns)),
          DoubleArray::uninitialized(SizeVector(std::min(m, n), 1)),
          TypedArray<T>::uninitialized(SizeVector(rows, n))};
}

template <class T>
Vectors<T> decompose(TypedArray<T> a, SvdSize size, const char* failed) {
  const int m = checkedInt32(a.size().rows()), n = checkedInt32(a.size().columns());
  const int least = std::min(m, n);
  const bool full = size == SvdSize::full;
  if (least == 0) {  // of which the library leaves the vectors as they are
    return {identityMatrix<T>(m, full ? m : 0), DoubleArray(SizeVector(0, 1), 0.0), identityMatrix<T>(full ? n : 0, n)};
  }
  Vectors<T> result = place<T>(m, full ? m : least, n, full ? n : least);
  const int info = lapack::gesvd(full ? 'A' : 'S', m, n, a.writable(), result.s.writable(), result.u.writable(),
                                 result.vt.writable());
  requireDone(info, failed);
  return result;
}

NumericArray adjoint(NumericArray a) { return std::move(*transpose(std::move(a), /*conjugate*/ true).numeric()); }

template <class T>
NumericArray pseudoInverted(TypedArray<T> a, std::optional<double> tolerance) {
  const SizeVector size = a.size();
  const int m = checkedInt32(size.rows()), n = checkedInt32(size.columns());
  const int least = std::min(m, n);
  Vectors<T> parts = place<T>(m, least, n, least);
  if (least > 0) {
    requireDone(lapack::gesdd(m, n, a.writable(), parts.s.writable(), parts.u.writable(), parts.vt.writable()),
                text::kPseudoInverseFailed);
  }
  const double* s = parts.s.data();
  const double limit = tolerance.value_or(least == 0 ? 0 : rankTolerance(size, s[0]));
  int rank = 0;
  while (rank < least && s[rank] > limit) ++rank;
  if (rank == 0) return TypedArray<T>(SizeVector(n, m), T{});
  T* u = parts.u.writable();
  for (int64_t k = 0; k < rank; ++k) {
    for (int64_t i = 0; i < m; ++i) u[k * m + i] = u[k * m + i] / T{s[k]};
  }
  auto result = TypedArray<T>::uninitialized(SizeVector(n, m));
  constexpr CblasTranspose kAdjoint = std::is_same_v<T, double> ? CblasTrans : CblasConjTrans;
  lapack::gemm(n, m, rank, {parts.vt.data(), least, kAdjoint}, {u, m, kAdjoint}, result.writable());
  return result;
}

}  // namespace

DoubleArray singularValues(NumericArray a, const char* failed) {
  return inCommonKind([failed](auto matrix) {
    const int m = checkedInt32(matrix.size().rows()), n = checkedInt32(matrix.size().columns());
    auto s = DoubleArray::uninitialized(SizeVector(std::min(m, n), 1));
    typename decltype(matrix)::Element none{};  // vectors that are not asked for
    if (!s.isEmpty()) requireDone(lapack::gesvd('N', m, n, matrix.writable(), s.writable(), &none, &none), failed);
    return s;
  }, std::move(a));
}

Svd svd(NumericArray a, SvdSize size) {
  const int64_t m = a.size().rows(), n = a.size().columns();
  const int64_t least = std::min(m, n);
  const bool full = size == SvdSize::full;
  return inCommonKind([&](auto matrix) {
    auto parts = decompose(std::move(matrix), size, text::kSvdFailed);
    return Svd{std::move(parts.u), diagonalMatrix(full ? m : least, full ? n : least, parts.s),
               adjoint(std::move(parts.vt))};
  }, std::move(a));
}

double rankTolerance(const SizeVector& size, double norm) {
  return static_cast<double>(std::max(size.rows(), size.columns())) * (std::nextafter(norm, INFINITY) - norm);
}

NumericArray pseudoInverse(NumericArray a, std::optional<double> tolerance) {
  return inCommonKind([tolerance](auto matrix) { return pseudoInverted(std::move(matrix), tolerance); }, std::move(a));
}

}  // namespace kelo
