// Matrices through the library: the rows that bench/compare/linear.py prints for NumPy and SciPy,
// and behind each its routines called directly on memory that is there already, which is what there
// is to reach.
#include <benchmark/benchmark.h>

#include <random>

#include "linear/eigen.h"
#include "linear/lapack.h"
#include "linear/linear.h"
#include "linear/lu.h"
#include "linear/qr.h"
#include "linear/svd.h"

namespace {

using namespace kelo;

NumericArray randomMatrix(int64_t rows, int64_t columns) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> normal;
  auto a = DoubleArray::uninitialized(SizeVector(rows, columns));
  std::generate_n(a.writable(), a.numElements(), [&] { return normal(random); });
  return a;
}

const NumericArray& column(int64_t rows) {
  static NumericArray made;
  if (made.size().rows() != rows) made = randomMatrix(rows, 1);
  return made;
}

template <class F>
void timed(benchmark::State& state, F&& f) {
  const NumericArray a = randomMatrix(state.range(0), state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(f(a));
}

const Warn kSilent = [](std::string) {};

const auto product = [](const NumericArray& a) { return mtimes(a, a); };
const auto solving = [](const NumericArray& a) { return mldivide(a, column(a.size().rows()), kSilent); };
const auto inverting = [](const NumericArray& a) { return inverse(a, kSilent); };
const auto determinantOf = [](const NumericArray& a) { return determinant(a); };
const auto luFactors = [](const NumericArray& a) {
  const Lu f = lu(a);
  return std::tuple(f.lower(), f.upper(), f.permutationMatrix());
};
const auto qrFactors = [](const NumericArray& a) { return qr(a, QrSize::full); };
const auto valuesOnly = [](const NumericArray& a) { return singularValues(a, ""); };
const auto singularVectors = [](const NumericArray& a) { return svd(a, SvdSize::full); };
const auto eigenvalues = [](const NumericArray& a) { return eigen(a, EigenVectors::none); };
const auto eigenvectors = [](const NumericArray& a) { return eigen(a, EigenVectors::right); };

// The routines themselves. Those that overwrite their input get a copy, as they must anywhere.
struct Direct {
  explicit Direct(const NumericArray& source)
      : n(static_cast<int>(source.size().rows())),
        original(source.asDouble()),
        a(original.values().begin(), original.values().end()),
        b(a.size()),
        c(a.size()),
        tau(size_t(n)),
        eigenvalues(size_t(n)),
        pivots(size_t(n)) {
    lapack::chooseThreads(1e12);
  }

  double* copied() { return std::copy(original.values().begin(), original.values().end(), a.begin()), a.data(); }

  int multiply() {
    cblas_dgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, n, n, n, 1, a.data(), n, a.data(), n, 0, c.data(), n);
    return 0;
  }
  int factor() {
    int info = 0;
    dgetrf_(&n, &n, copied(), &n, pivots.data(), &info);
    return info;
  }
  int solve() {
    std::fill_n(b.begin(), n, 1.0);
    const double norm = lapack::norm1(n, n, original.data());
    const int one = 1;
    int info = 0;
    double rcond = 0;
    dgesv_(&n, &one, copied(), &n, pivots.data(), b.data(), &n, &info);
    return info + lapack::gecon(n, a.data(), norm, &rcond);
  }
  int invert() {
    const double norm = lapack::norm1(n, n, original.data());
    double rcond = 0;
    return factor() + lapack::gecon(n, a.data(), norm, &rcond) + lapack::getri(n, a.data(), pivots.data());
  }
  int orthogonal() {
    std::fill(b.begin(), b.end(), 0.0);
    for (int k = 0; k < n; ++k) b[size_t(k) * size_t(n + 1)] = 1;
    return lapack::geqrf(n, n, copied(), tau.data()) +
           lapack::multiplyByQ(/*conjugated*/ false, n, n, n, a.data(), tau.data(), b.data(), n);
  }
  int singular(bool vectors) {
    return lapack::gesvd(vectors ? 'A' : 'N', n, n, copied(), tau.data(), b.data(), c.data());
  }
  int eigen(bool vectors) {
    return lapack::geev(n, copied(), eigenvalues.data(), nullptr, vectors ? b.data() : nullptr);
  }

  int n;
  DoubleArray original;
  std::vector<double> a, b, c, tau;
  std::vector<ComplexDouble> eigenvalues;
  std::vector<int> pivots;
};

template <class F>
void timedDirectly(benchmark::State& state, F&& f) {
  Direct direct(randomMatrix(state.range(0), state.range(0)));
  for (auto _ : state) {
    if (f(direct) != 0) state.SkipWithError("the routine failed");
  }
}

void sizes(benchmark::internal::Benchmark* row) {
  row->Arg(500)->Arg(1000)->Arg(1500)->Unit(benchmark::kMillisecond)->UseRealTime();
}

#define ROW(name, operation, routine)                                              \
  BENCHMARK_CAPTURE(timed, operation, operation)->Name(name)->Apply(sizes);        \
  BENCHMARK_CAPTURE(timedDirectly, operation, [](Direct& d) { return d.routine; }) \
      ->Name(name ", directly")                                                    \
      ->Apply(sizes)

ROW("A * B", product, multiply());
ROW("A \\ b", solving, solve());
ROW("inv", inverting, invert());
ROW("det", determinantOf, factor());
ROW("lu", luFactors, factor());
ROW("qr", qrFactors, orthogonal());
ROW("svd values", valuesOnly, singular(false));
ROW("svd vectors", singularVectors, singular(true));
ROW("eig values", eigenvalues, eigen(false));
ROW("eig vectors", eigenvectors, eigen(true));
BENCHMARK_CAPTURE(timed, small_product, product)->Name("A * B, small")->Arg(4)->Arg(50)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(timed, small_solving, solving)->Name("A \\ b, small")->Arg(4)->Arg(50)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(timed, small_eigen, eigenvalues)->Name("eig, small")->Arg(4)->Arg(50)->Unit(benchmark::kMicrosecond);

}  // namespace
