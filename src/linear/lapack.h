// The library's routines as overloads for real and complex data, so that one template carries out
// the steps for both.
//
// Each overload returns `info`: 0 done; above 0 the singular or not converged state of the routine;
// below 0 a faulty call, which is our own mistake. Workspace is asked for (lwork -1) and held here.
// Sizes are checked against 32 bits by int32 at the call; a leading dimension is never below 1.
// Arguments are named where they are not plain.
//
// Thread: the interpreter's thread. Products below kThreadedWork run on it alone: waking the
// library's threads costs more.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "linear/lapack_prototypes.h"
#include "messages/fatal_fault.h"
#include "values/numeric_array.h"

namespace kelo::lapack {

/// Multiplications below which the library is kept from using several threads.
inline constexpr double kThreadedWork = 1e7;

/// Allows the library's threads for as much work as this, or not. Cheap when nothing changes.
void chooseThreads(double multiplications);

/// The name of the routine that last complained of a faulty call; the process goes on. For tests
/// and the log.
const std::string& lastComplaint();

inline int leading(int rows) { return std::max(rows, 1); }

/// A factor of a product as it lies in memory: itself, or what it is the (conjugated) transpose of.
template <class T>
struct Factor {
  const T* elements;
  int ld;  ///< leading dimension
  CblasTranspose form = CblasNoTrans;
};
/// c = a * b, m x k times k x n in the forms that the factors mean.
void gemm(int m, int n, int k, Factor<double> a, Factor<double> b, double* c);
void gemm(int m, int n, int k, Factor<ComplexDouble> a, Factor<ComplexDouble> b, ComplexDouble* c);
/// The upper triangle of c = a * transpose(a), n x k times k x n in the form that the factor means.
void syrk(int n, int k, Factor<double> a, double* c);
/// c -= a * b, m x k times k x n.
void subtractProduct(int m, int n, int k, const double* a, int64_t lda, const double* b, int64_t ldb, double* c,
                     int64_t ldc);
/// y = a * x, or transpose(a) * x, a of m x n.
void gemv(CblasTranspose transpose, int m, int n, const ComplexDouble* a, const ComplexDouble* x, ComplexDouble* y);

/// Euclidean norm of n elements, without overflow on the way.
double nrm2(int n, const double* x);
double nrm2(int n, const ComplexDouble* x);

/// Greatest column sum of magnitudes.
double norm1(int m, int n, const double* a);
double norm1(int m, int n, const ComplexDouble* a);

/// Solves a * x = b; a becomes its factors, b the solution. Real matrices of middling and large
/// order, here and below, go through triangles.h.
int gesv(int n, int nrhs, double* a, int* pivots, double* b);
int gesv(int n, int nrhs, ComplexDouble* a, int* pivots, ComplexDouble* b);
int getrf(int m, int n, double* a, int* pivots);
int getrf(int m, int n, ComplexDouble* a, int* pivots);
int getri(int n, double* factors, const int* pivots);
int getri(int n, ComplexDouble* factors, const int* pivots);
/// Reciprocal condition of the matrix with these factors and this 1-norm.
int gecon(int n, const double* factors, double norm, double* rcond);
int gecon(int n, const ComplexDouble* factors, double norm, double* rcond);

/// QR with column pivoting; permutation[k], from 1, is the column of a that became column k.
int geqp3(int m, int n, double* a, int* permutation, double* tau);
int geqp3(int m, int n, ComplexDouble* a, int* permutation, ComplexDouble* tau);
int geqrf(int m, int n, double* a, double* tau);
int geqrf(int m, int n, ComplexDouble* a, ComplexDouble* tau);
/// c = Q' * c (conjugated == true) or Q * c from the left, Q of k reflectors in the m x k matrix
/// `a`, c of m x n; ld is the leading dimension of both.
int multiplyByQ(bool conjugated, int m, int n, int k, const double* a, const double* tau, double* c, int ld);
int multiplyByQ(bool conjugated, int m, int n, int k, const ComplexDouble* a, const ComplexDouble* tau,
                ComplexDouble* c, int ld);
/// Solves the upper triangle r (n x n, leading dimension ldr) times x = b (leading dimension ldb),
/// in place of b.
int trtrs(int n, int nrhs, const double* r, int ldr, double* b, int ldb);
int trtrs(int n, int nrhs, const ComplexDouble* r, int ldr, ComplexDouble* b, int ldb);

/// Eigenvalues w; left and right vectors n x n each, or null for none. a is destroyed. The real
/// form gives the vectors in the packing of LAPACK: a complex pair as two columns, real and
/// imaginary parts.
int geev(int n, double* a, ComplexDouble* w, double* left, double* right);
int geev(int n, ComplexDouble* a, ComplexDouble* w, ComplexDouble* left, ComplexDouble* right);
/// Singular values s, min(m, n) of them; job 'A' all of u and vt, 'S' the leading columns and rows,
/// 'N' neither.
int gesvd(char job, int m, int n, double* a, double* s, double* u, double* vt);
int gesvd(char job, int m, int n, ComplexDouble* a, double* s, ComplexDouble* u, ComplexDouble* vt);
/// The leading min(m, n) columns of u and rows of vt, by divide and conquer: several times as fast.
int gesdd(int m, int n, double* a, double* s, double* u, double* vt);
int gesdd(int m, int n, ComplexDouble* a, double* s, ComplexDouble* u, ComplexDouble* vt);

inline double sizeIn(double reported) { return reported; }
inline double sizeIn(ComplexDouble reported) { return reported.real; }

/// call(work, lwork) once with lwork -1, to ask for the size of the workspace, and again with it.
template <class T, class Call>
int withWorkspace(Call&& call) {
  T reported{};
  if (const int info = call(&reported, -1); info != 0) return info;
  const int lwork = std::max(1, checkedInt32(checkedCast(sizeIn(reported))));
  std::vector<T> work(static_cast<size_t>(lwork));
  return call(work.data(), lwork);
}

}  // namespace kelo::lapack
