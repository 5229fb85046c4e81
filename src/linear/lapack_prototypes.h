// The routines of BLAS and LAPACK that the project uses, and no others. All integers have 32 bits;
// matrices are column-major; a complex number is two doubles, which is ComplexDouble. Only lapack.h
// includes this.
#pragma once

#include <cstdint>

#include "values/complex_double.h"

extern "C" {

using kelo::ComplexDouble;
enum CblasOrder { CblasColMajor = 102 };
enum CblasTriangle { CblasUpper = 121, CblasLower = 122 };
enum CblasTranspose { CblasNoTrans = 111, CblasTrans = 112, CblasConjTrans = 113 };

void cblas_dgemm(CblasOrder, CblasTranspose, CblasTranspose, int m, int n, int k, double alpha, const double* a,
                 int lda, const double* b, int ldb, double beta, double* c, int ldc);
void cblas_zgemm(CblasOrder, CblasTranspose, CblasTranspose, int m, int n, int k, const void* alpha, const void* a,
                 int lda, const void* b, int ldb, const void* beta, void* c, int ldc);
void cblas_zgemv(CblasOrder, CblasTranspose, int m, int n, const void* alpha, const void* a, int lda, const void* x,
                 int incx, const void* beta, void* y, int incy);
void cblas_dsyrk(CblasOrder, CblasTriangle, CblasTranspose, int n, int k, double alpha, const double* a, int lda,
                 double beta, double* c, int ldc);
double cblas_dnrm2(int n, const double* x, int incx);
double cblas_dznrm2(int n, const void* x, int incx);

void dgesv_(const int* n, const int* nrhs, double* a, const int* lda, int* ipiv, double* b, const int* ldb, int* info);
void zgesv_(const int* n, const int* nrhs, ComplexDouble* a, const int* lda, int* ipiv, ComplexDouble* b,
            const int* ldb, int* info);
void dgetrf_(const int* m, const int* n, double* a, const int* lda, int* ipiv, int* info);
void zgetrf_(const int* m, const int* n, ComplexDouble* a, const int* lda, int* ipiv, int* info);
void dgetri_(const int* n, double* a, const int* lda, const int* ipiv, double* work, const int* lwork, int* info);
void zgetri_(const int* n, ComplexDouble* a, const int* lda, const int* ipiv, ComplexDouble* work, const int* lwork,
             int* info);
void dgecon_(const char* norm, const int* n, const double* a, const int* lda, const double* anorm, double* rcond,
             double* work, int* iwork, int* info);
void zgecon_(const char* norm, const int* n, const ComplexDouble* a, const int* lda, const double* anorm, double* rcond,
             ComplexDouble* work, double* rwork, int* info);
double zlange_(const char* norm, const int* m, const int* n, const ComplexDouble* a, const int* lda, double* work);
void dgeev_(const char* jobvl, const char* jobvr, const int* n, double* a, const int* lda, double* wr, double* wi,
            double* vl, const int* ldvl, double* vr, const int* ldvr, double* work, const int* lwork, int* info);
void zgeev_(const char* jobvl, const char* jobvr, const int* n, ComplexDouble* a, const int* lda, ComplexDouble* w,
            ComplexDouble* vl, const int* ldvl, ComplexDouble* vr, const int* ldvr, ComplexDouble* work,
            const int* lwork, double* rwork, int* info);
void dgeqrf_(const int* m, const int* n, double* a, const int* lda, double* tau, double* work, const int* lwork,
             int* info);
void zgeqrf_(const int* m, const int* n, ComplexDouble* a, const int* lda, ComplexDouble* tau, ComplexDouble* work,
             const int* lwork, int* info);
void dgeqp3_(const int* m, const int* n, double* a, const int* lda, int* jpvt, double* tau, double* work,
             const int* lwork, int* info);
void zgeqp3_(const int* m, const int* n, ComplexDouble* a, const int* lda, int* jpvt, ComplexDouble* tau,
             ComplexDouble* work, const int* lwork, double* rwork, int* info);
void dormqr_(const char* side, const char* trans, const int* m, const int* n, const int* k, const double* a,
             const int* lda, const double* tau, double* c, const int* ldc, double* work, const int* lwork, int* info);
void zunmqr_(const char* side, const char* trans, const int* m, const int* n, const int* k, const ComplexDouble* a,
             const int* lda, const ComplexDouble* tau, ComplexDouble* c, const int* ldc, ComplexDouble* work,
             const int* lwork, int* info);
void dtrtrs_(const char* uplo, const char* trans, const char* diag, const int* n, const int* nrhs, const double* a,
             const int* lda, double* b, const int* ldb, int* info);
void ztrtrs_(const char* uplo, const char* trans, const char* diag, const int* n, const int* nrhs,
             const ComplexDouble* a, const int* lda, ComplexDouble* b, const int* ldb, int* info);
void dgesvd_(const char* jobu, const char* jobvt, const int* m, const int* n, double* a, const int* lda, double* s,
             double* u, const int* ldu, double* vt, const int* ldvt, double* work, const int* lwork, int* info);
void zgesvd_(const char* jobu, const char* jobvt, const int* m, const int* n, ComplexDouble* a, const int* lda,
             double* s, ComplexDouble* u, const int* ldu, ComplexDouble* vt, const int* ldvt, ComplexDouble* work,
             const int* lwork, double* rwork, int* info);

void dgesdd_(const char* jobz, const int* m, const int* n, double* a, const int* lda, double* s, double* u,
             const int* ldu, double* vt, const int* ldvt, double* work, const int* lwork, int* iwork, int* info);
void zgesdd_(const char* jobz, const int* m, const int* n, ComplexDouble* a, const int* lda, double* s,
             ComplexDouble* u, const int* ldu, ComplexDouble* vt, const int* ldvt, ComplexDouble* work,
             const int* lwork, double* rwork, int* iwork, int* info);

void openblas_set_num_threads(int threads);
int openblas_get_num_threads(void);
void blas_thread_shutdown_(void);

}  // extern "C"
