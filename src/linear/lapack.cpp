// One thin layer over the library.
#include "linear/lapack.h"

#include <cmath>
#include <cstdlib>

#include "linear/linear.h"
#include "linear/triangles.h"
#include "values/memory.h"

namespace kelo::lapack {
namespace {

std::string g_lastComplaint;

constexpr ComplexDouble kOne{1, 0};
constexpr ComplexDouble kZero{0, 0};

/// The library takes a buffer at its first routine, keeps it, and waits for ever when there is no
/// room for it.
void makeSureOfBuffer() {
  constexpr size_t kBufferBytes = size_t{130} << 20;
  static bool hasBuffer = false;
  if (hasBuffer) return;
  void* probe = std::malloc(kBufferBytes);
  if (probe == nullptr) throw OutOfMemory();
  std::free(probe);
  hasBuffer = true;
}

}  // namespace

const std::string& lastComplaint() { return g_lastComplaint; }

void chooseThreads(double multiplications) {
  makeSureOfBuffer();
  static const int available = openblas_get_num_threads();
  static int chosen = available;
  const int wanted = multiplications < kThreadedWork ? 1 : available;
  if (wanted == chosen) return;
  openblas_set_num_threads(wanted);
  chosen = wanted;
}

void gemm(int m, int n, int k, Factor<double> a, Factor<double> b, double* c) {
  chooseThreads(static_cast<double>(m) * n * k);
  cblas_dgemm(CblasColMajor, a.form, b.form, m, n, k, /*alpha*/ 1, a.elements, leading(a.ld), b.elements,
              leading(b.ld), /*beta*/ 0, c, leading(m));
}
void gemm(int m, int n, int k, Factor<ComplexDouble> a, Factor<ComplexDouble> b, ComplexDouble* c) {
  chooseThreads(4.0 * m * n * k);
  cblas_zgemm(CblasColMajor, a.form, b.form, m, n, k, &kOne, a.elements, leading(a.ld), b.elements, leading(b.ld),
              &kZero, c, leading(m));
}

void syrk(int n, int k, Factor<double> a, double* c) {
  chooseThreads(0.5 * n * n * k);
  cblas_dsyrk(CblasColMajor, CblasUpper, a.form, n, k, /*alpha*/ 1, a.elements, leading(a.ld), /*beta*/ 0, c,
              leading(n));
}

void subtractProduct(int m, int n, int k, const double* a, int64_t lda, const double* b, int64_t ldb, double* c,
                     int64_t ldc) {
  chooseThreads(static_cast<double>(m) * n * k);
  cblas_dgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, m, n, k, /*alpha*/ -1, a, checkedInt32(lda), b,
              checkedInt32(ldb), /*beta*/ 1, c, checkedInt32(ldc));
}

void gemv(CblasTranspose transpose, int m, int n, const ComplexDouble* a, const ComplexDouble* x, ComplexDouble* y) {
  chooseThreads(4.0 * m * n);
  cblas_zgemv(CblasColMajor, transpose, m, n, &kOne, a, leading(m), x, /*incx*/ 1, &kZero, y, /*incy*/ 1);
}

double nrm2(int n, const double* x) { return cblas_dnrm2(n, x, /*incx*/ 1); }
double nrm2(int n, const ComplexDouble* x) { return cblas_dznrm2(n, x, /*incx*/ 1); }

// Each column from above, as the library adds; several columns side by side, so that one addition
// does not wait for another. A NaN is not lost.
double norm1(int m, int n, const double* a) {
  constexpr int kColumns = 8;
  double greatest = 0;
  for (int j = 0; j < n; j += kColumns) {
    const int count = std::min(kColumns, n - j);
    const double* columns[kColumns];
    for (int k = 0; k < kColumns; ++k) columns[k] = a + static_cast<int64_t>(j + std::min(k, count - 1)) * m;
    double sums[kColumns] = {};
    for (int i = 0; i < m; ++i) {
      for (int k = 0; k < kColumns; ++k) sums[k] += std::fabs(columns[k][i]);
    }
    for (const double sum : sums) {
      if (greatest < sum || std::isnan(sum)) greatest = sum;
    }
  }
  return greatest;
}
double norm1(int m, int n, const ComplexDouble* a) {
  const int lda = leading(m);
  return zlange_("1", &m, &n, a, &lda, nullptr);
}

namespace {

bool goesByTriangles(int m, int n, const double* a) {
  return std::min(m, n) >= triangles::kLeastOrder && triangles::areFinite(a, static_cast<int64_t>(m) * n);
}

}  // namespace

int gesv(int n, int nrhs, double* a, int* pivots, double* b) {
  if (goesByTriangles(n, n, a)) {
    const int firstZero = triangles::factor(n, n, a, n, pivots);
    if (firstZero != 0) return firstZero;
    triangles::exchangeRows(nrhs, b, n, pivots, n);
    triangles::solveLower(n, nrhs, a, n, b, n);
    triangles::solveUpper(n, nrhs, a, n, b, n);
    return 0;
  }
  chooseThreads(std::pow(n, 3) / 3 + static_cast<double>(n) * n * nrhs);
  const int ld = leading(n);
  int info = 0;
  dgesv_(&n, &nrhs, a, &ld, pivots, b, &ld, &info);
  return info;
}
int gesv(int n, int nrhs, ComplexDouble* a, int* pivots, ComplexDouble* b) {
  chooseThreads(std::pow(n, 3) + 4.0 * n * n * nrhs);
  const int ld = leading(n);
  int info = 0;
  zgesv_(&n, &nrhs, a, &ld, pivots, b, &ld, &info);
  return info;
}

int getrf(int m, int n, double* a, int* pivots) {
  if (goesByTriangles(m, n, a)) return triangles::factor(m, n, a, m, pivots);
  chooseThreads(static_cast<double>(m) * n * n / 3);
  const int lda = leading(m);
  int info = 0;
  dgetrf_(&m, &n, a, &lda, pivots, &info);
  return info;
}
int getrf(int m, int n, ComplexDouble* a, int* pivots) {
  chooseThreads(static_cast<double>(m) * n * n);
  const int lda = leading(m);
  int info = 0;
  zgetrf_(&m, &n, a, &lda, pivots, &info);
  return info;
}

int getri(int n, double* factors, const int* pivots) {
  chooseThreads(std::pow(n, 3) * 2 / 3);
  const int ld = leading(n);
  return withWorkspace<double>([&](double* work, int lwork) {
    int info = 0;
    dgetri_(&n, factors, &ld, pivots, work, &lwork, &info);
    return info;
  });
}
int getri(int n, ComplexDouble* factors, const int* pivots) {
  chooseThreads(std::pow(n, 3) * 2);
  const int ld = leading(n);
  return withWorkspace<ComplexDouble>([&](ComplexDouble* work, int lwork) {
    int info = 0;
    zgetri_(&n, factors, &ld, pivots, work, &lwork, &info);
    return info;
  });
}

int gecon(int n, const double* factors, double norm, double* rcond) {
  const int ld = leading(n);
  std::vector<double> work(static_cast<size_t>(4) * leading(n));
  std::vector<int> whole(leading(n));
  int info = 0;
  dgecon_("1", &n, factors, &ld, &norm, rcond, work.data(), whole.data(), &info);
  return info;
}
int gecon(int n, const ComplexDouble* factors, double norm, double* rcond) {
  const int ld = leading(n);
  std::vector<ComplexDouble> work(static_cast<size_t>(2) * leading(n));
  std::vector<double> real(static_cast<size_t>(2) * leading(n));
  int info = 0;
  zgecon_("1", &n, factors, &ld, &norm, rcond, work.data(), real.data(), &info);
  return info;
}

}  // namespace kelo::lapack

void kelo::endIdleMatrixThreads() { blas_thread_shutdown_(); }

// The library calls this with the name of a routine and the number of its bad argument. Its own
// form ends the process or prints; ours takes a note. Being defined in the program, it stands
// before the shared library's.
extern "C" void xerbla_(const char* name, const int* argument, int nameLength) {
  kelo::lapack::g_lastComplaint.assign(name, static_cast<size_t>(nameLength))
      .append(" ")
      .append(std::to_string(*argument));
}
