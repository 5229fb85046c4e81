// Equations with triangles, and LU factors, of real matrices of middling and large order.
//
// The library's own routines spend most of their time in small triangles and narrow columns, one
// after the other. Here a triangle is cut in halves until 16 columns are left: what lies beside the
// halves is a product of matrices, which the library does well, and the leaves are loops of their
// own. All matrices are column-major; ld is the distance of columns.
//
// source: Toledo (1997), "Locality of reference in LU decomposition with partial pivoting"; as
// stable as the methods by columns
#pragma once

#include <cstdint>

#include "values/complex_double.h"

namespace kelo::triangles {

/// Orders from here on are worth it; for smaller ones a call of the library costs as little.
inline constexpr int kLeastOrder = 32;

/// LU factors of m x n with row exchanges in place of it, as the library gives them; pivots from 1,
/// min(m, n) of them. Returns the first column, from 1, whose pivot is 0, or 0.
/// REQUIRES: no NaN and no Inf
int factor(int m, int n, double* a, int64_t ld, int* pivots);

/// Solves l * x = b in place of b, k x n: l is the part of a k x k matrix below its diagonal, and
/// has 1s on it.
void solveLower(int k, int n, const double* l, int64_t ldl, double* b, int64_t ldb);
/// Solves u * x = b in place of b, k x n: u is the part of a k x k matrix on and above its diagonal.
/// REQUIRES: no 0 on the diagonal
void solveUpper(int k, int n, const double* u, int64_t ldu, double* b, int64_t ldb);

/// The inverse of the n x n matrix with these factors and pivots, in `inverse`.
/// REQUIRES: no pivot is 0
void invert(int n, const double* factors, const int* pivots, double* inverse);

/// Exchanges rows of n columns, from the first pivot to the last; pivots count from 1.
void exchangeRows(int n, double* a, int64_t ld, const int* pivots, int count);

/// Whether no element is NaN or Inf.
bool areFinite(const double* x, int64_t n);

/// An estimate of the 1-norm of the inverse of the matrix with these factors, never above it but
/// for rounding; NaN or Inf where numbers leave their range. That of the library comes from the
/// same steps and differs by rounding.
///
/// source: Higham (1988), "FORTRAN codes for estimating the one-norm"
/// REQUIRES: n > 1
template <class T>
double inverseNorm(int n, const T* factors);

}  // namespace kelo::triangles
