// The loops at the ends of the halving, on at most 16 columns or one vector. No fused product is
// used in them.
#pragma once

#include <cstdint>

#include "values/complex_double.h"

namespace kelo::triangles {

inline constexpr int kLeaf = 16;

/// a[i] -= l(i, 0) * u[0] + ... + l(i, count - 1) * u[count - 1], one product after the other, for m
/// rows.
void subtractColumns(double* a, const double* l, int64_t ld, const double* u, int count, int64_t m);
/// The first position of the greatest magnitude. REQUIRES: n > 0, no NaN
int64_t positionOfGreatest(const double* x, int64_t n);
void scale(double* x, double factor, int64_t n);

/// As solveLower and solveUpper. REQUIRES: k <= kLeaf
void solveLowerLeaf(int k, int n, const double* l, int64_t ldl, double* b, int64_t ldb);
void solveUpperLeaf(int k, int n, const double* u, int64_t ldu, double* b, int64_t ldb);

/// Solves by one of the triangles of packed factors, or by its conjugated transpose, in place of one
/// vector.
void solveLowerOne(int n, const double* factors, double* x);
void solveLowerOne(int n, const ComplexDouble* factors, ComplexDouble* x);
void solveUpperOne(int n, const double* factors, double* x);
void solveUpperOne(int n, const ComplexDouble* factors, ComplexDouble* x);
void solveLowerTransposed(int n, const double* factors, double* x);
void solveLowerTransposed(int n, const ComplexDouble* factors, ComplexDouble* x);
void solveUpperTransposed(int n, const double* factors, double* x);
void solveUpperTransposed(int n, const ComplexDouble* factors, ComplexDouble* x);

/// The largest sum of magnitudes of a column, each within 1 ULP; not normal where a square has passed
/// the range of doubles.
double quickNorm1(int m, int n, const ComplexDouble* a);

}  // namespace kelo::triangles
