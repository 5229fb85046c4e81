// Reading and writing of comma-separated numbers, in bytes per second. bench/compare/csv.py times
// the same with NumPy.
#include <benchmark/benchmark.h>

#include <random>

#include "builtins/csv/csv_text.h"

namespace kelo::builtins {
namespace {

constexpr int64_t kRows = 200000;
constexpr int64_t kColumns = 5;

/// Numbers of 17 digits, or rounded to a few decimals.
DoubleArray table(bool isRounded) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> uniform(-1000, 1000);
  auto array = DoubleArray::uninitialized(SizeVector(kRows, kColumns));
  for (int64_t k = 0; k < array.numElements(); ++k) {
    const double x = uniform(random);
    array.writable()[k] = isRounded ? static_cast<double>(static_cast<int64_t>(x * 1000)) / 1000 : x;
  }
  return array;
}

void csvRead(benchmark::State& state) {
  const std::string text = csvOfArray(table(state.range(0) != 0));
  for (auto _ : state) benchmark::DoNotOptimize(arrayOfCsv(text, {}));
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(csvRead)->ArgName("rounded")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void csvWrite(benchmark::State& state) {
  const DoubleArray array = table(state.range(0) != 0);
  int64_t bytes = 0;
  for (auto _ : state) bytes += static_cast<int64_t>(csvOfArray(array).size());
  state.SetBytesProcessed(bytes);
}
BENCHMARK(csvWrite)->ArgName("rounded")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelo::builtins
