// The routines of LAPACK that work by orthogonal transformations: QR, eigenvalues, singular values.
#include <cmath>

#include "linear/lapack.h"

namespace kelo::lapack {
namespace {

// Multiplications of a reduction of an m x n matrix by reflectors, about; a complex one counts as
// four.
double reductionWork(int m, int n) { return static_cast<double>(m) * n * std::min(m, n); }

}  // namespace

int geqp3(int m, int n, double* a, int* permutation, double* tau) {
  chooseThreads(reductionWork(m, n));
  const int lda = leading(m);
  std::fill_n(permutation, n, 0);  // 0: the column is free to move
  return withWorkspace<double>([&](double* work, int lwork) {
    int info = 0;
    dgeqp3_(&m, &n, a, &lda, permutation, tau, work, &lwork, &info);
    return info;
  });
}
int geqp3(int m, int n, ComplexDouble* a, int* permutation, ComplexDouble* tau) {
  chooseThreads(4.0 * reductionWork(m, n));
  const int lda = leading(m);
  std::vector<double> real(static_cast<size_t>(2) * static_cast<size_t>(leading(n)));
  std::fill_n(permutation, n, 0);
  return withWorkspace<ComplexDouble>([&](ComplexDouble* work, int lwork) {
    int info = 0;
    zgeqp3_(&m, &n, a, &lda, permutation, tau, work, &lwork, real.data(), &info);
    return info;
  });
}

int geqrf(int m, int n, double* a, double* tau) {
  chooseThreads(reductionWork(m, n));
  const int lda = leading(m);
  return withWorkspace<double>([&](double* work, int lwork) {
    int info = 0;
    dgeqrf_(&m, &n, a, &lda, tau, work, &lwork, &info);
    return info;
  });
}
int geqrf(int m, int n, ComplexDouble* a, ComplexDouble* tau) {
  chooseThreads(4.0 * reductionWork(m, n));
  const int lda = leading(m);
  return withWorkspace<ComplexDouble>([&](ComplexDouble* work, int lwork) {
    int info = 0;
    zgeqrf_(&m, &n, a, &lda, tau, work, &lwork, &info);
    return info;
  });
}

int multiplyByQ(bool conjugated, int m, int n, int k, const double* a, const double* tau, double* c, int ld) {
  chooseThreads(1.0 * m * n * k);
  ld = leading(ld);
  return withWorkspace<double>([&](double* work, int lwork) {
    int info = 0;
    dormqr_("L", conjugated ? "T" : "N", &m, &n, &k, a, &ld, tau, c, &ld, work, &lwork, &info);
    return info;
  });
}
int multiplyByQ(bool conjugated, int m, int n, int k, const ComplexDouble* a, const ComplexDouble* tau,
                ComplexDouble* c, int ld) {
  chooseThreads(4.0 * m * n * k);
  ld = leading(ld);
  return withWorkspace<ComplexDouble>([&](ComplexDouble* work, int lwork) {
    int info = 0;
    zunmqr_("L", conjugated ? "C" : "N", &m, &n, &k, a, &ld, tau, c, &ld, work, &lwork, &info);
    return info;
  });
}

int trtrs(int n, int nrhs, const double* r, int ldr, double* b, int ldb) {
  chooseThreads(1.0 * n * n * nrhs);
  int info = 0;
  dtrtrs_("U", "N", "N", &n, &nrhs, r, &ldr, b, &ldb, &info);
  return info;
}
int trtrs(int n, int nrhs, const ComplexDouble* r, int ldr, ComplexDouble* b, int ldb) {
  chooseThreads(4.0 * n * n * nrhs);
  int info = 0;
  ztrtrs_("U", "N", "N", &n, &nrhs, r, &ldr, b, &ldb, &info);
  return info;
}

int geev(int n, double* a, ComplexDouble* w, double* left, double* right) {
  chooseThreads(std::pow(n, 3));
  const int ld = leading(n);
  std::vector<double> wr(static_cast<size_t>(ld)), wi(static_cast<size_t>(ld));
  const int info = withWorkspace<double>([&](double* work, int lwork) {
    int status = 0;
    dgeev_(left ? "V" : "N", right ? "V" : "N", &n, a, &ld, wr.data(), wi.data(), left, &ld, right, &ld, work, &lwork,
           &status);
    return status;
  });
  for (int k = 0; k < n; ++k) w[k] = {wr[static_cast<size_t>(k)], wi[static_cast<size_t>(k)]};
  return info;
}
int geev(int n, ComplexDouble* a, ComplexDouble* w, ComplexDouble* left, ComplexDouble* right) {
  chooseThreads(4.0 * std::pow(n, 3));
  const int ld = leading(n);
  std::vector<double> real(static_cast<size_t>(2) * static_cast<size_t>(ld));
  return withWorkspace<ComplexDouble>([&](ComplexDouble* work, int lwork) {
    int info = 0;
    zgeev_(left ? "V" : "N", right ? "V" : "N", &n, a, &ld, w, left, &ld, right, &ld, work, &lwork, real.data(), &info);
    return info;
  });
}

int gesvd(char job, int m, int n, double* a, double* s, double* u, double* vt) {
  chooseThreads(reductionWork(m, n));
  const int lda = leading(m);
  const int ldvt = leading(job == 'S' ? std::min(m, n) : n);
  return withWorkspace<double>([&](double* work, int lwork) {
    int info = 0;
    dgesvd_(&job, &job, &m, &n, a, &lda, s, u, &lda, vt, &ldvt, work, &lwork, &info);
    return info;
  });
}
int gesvd(char job, int m, int n, ComplexDouble* a, double* s, ComplexDouble* u, ComplexDouble* vt) {
  chooseThreads(4.0 * reductionWork(m, n));
  const int lda = leading(m);
  const int ldvt = leading(job == 'S' ? std::min(m, n) : n);
  std::vector<double> real(static_cast<size_t>(5) * static_cast<size_t>(leading(std::min(m, n))));
  return withWorkspace<ComplexDouble>([&](ComplexDouble* work, int lwork) {
    int info = 0;
    zgesvd_(&job, &job, &m, &n, a, &lda, s, u, &lda, vt, &ldvt, work, &lwork, real.data(), &info);
    return info;
  });
}

namespace {

std::vector<int> sizesOfDivision(int m, int n) {
  return std::vector<int>(static_cast<size_t>(8) * static_cast<size_t>(leading(std::min(m, n))));
}

}  // namespace

int gesdd(int m, int n, double* a, double* s, double* u, double* vt) {
  chooseThreads(reductionWork(m, n));
  const int lda = leading(m), ldvt = leading(std::min(m, n));
  std::vector<int> whole = sizesOfDivision(m, n);
  return withWorkspace<double>([&](double* work, int lwork) {
    int info = 0;
    dgesdd_("S", &m, &n, a, &lda, s, u, &lda, vt, &ldvt, work, &lwork, whole.data(), &info);
    return info;
  });
}
int gesdd(int m, int n, ComplexDouble* a, double* s, ComplexDouble* u, ComplexDouble* vt) {
  chooseThreads(4.0 * reductionWork(m, n));
  const int lda = leading(m), ldvt = leading(std::min(m, n));
  const auto least = static_cast<size_t>(std::min(m, n)), most = static_cast<size_t>(std::max(m, n));
  std::vector<double> real(least * std::max(5 * least + 7, 2 * most + 2 * least + 1) + 1);
  std::vector<int> whole = sizesOfDivision(m, n);
  return withWorkspace<ComplexDouble>([&](ComplexDouble* work, int lwork) {
    int info = 0;
    zgesdd_("S", &m, &n, a, &lda, s, u, &lda, vt, &ldvt, work, &lwork, real.data(), whole.data(), &info);
    return info;
  });
}

}  // namespace kelo::lapack
