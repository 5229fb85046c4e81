// Matrices through the library: the rows that bench/compare/linear.py prints for NumPy and SciPy.
#include <benchmark/benchmark.h>

#include <random>

#include "linear/eigen.h"
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

#define ROW(name, operation)                     \
  BENCHMARK_CAPTURE(timed, operation, operation) \
      ->Name(name)                               \
      ->Arg(500)                                 \
      ->Arg(1000)                                \
      ->Unit(benchmark::kMillisecond)            \
      ->UseRealTime()

ROW("A * B", product);
ROW("A \\ b", solving);
ROW("inv", inverting);
ROW("det", determinantOf);
ROW("lu", luFactors);
ROW("qr", qrFactors);
ROW("svd values", valuesOnly);
ROW("svd vectors", singularVectors);
ROW("eig values", eigenvalues);
ROW("eig vectors", eigenvectors);
BENCHMARK_CAPTURE(timed, small_product, product)->Name("A * B, small")->Arg(4)->Arg(50)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(timed, small_solving, solving)->Name("A \\ b, small")->Arg(4)->Arg(50)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(timed, small_eigen, eigenvalues)->Name("eig, small")->Arg(4)->Arg(50)->Unit(benchmark::kMicrosecond);

}  // namespace
