// Reductions and scans of 1e6 and 1e7 doubles, called as a program calls them. bench/compare/reductions.py has the same
// rows for another library.
#include <benchmark/benchmark.h>

#include <random>

#include "builtins/library.h"
#include "interpreter/app_controller.h"
#include "platform/native/parallel_pool.h"

namespace kelo {
namespace {

DoubleArray randomMatrix(int64_t rows, int64_t columns) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> uniform;
  DoubleArray result = DoubleArray::uninitialized(SizeVector(rows, columns));
  for (int64_t i = 0; i < rows * columns; ++i) result.writable()[i] = uniform(random);
  return result;
}

/// NAME(A, d), or NAME(A, [], d) for the extremes.
void run(benchmark::State& state, const char* name, int64_t rows, int64_t columns, int64_t d) {
  const Builtin& row = *builtins::library().find(Name::intern(name));
  const DoubleArray a = randomMatrix(rows, columns);
  const bool isExtreme = row.inputs.most == 3 && name[0] == 'm';
  for (auto _ : state) {
    std::vector<Storable> args{a};
    if (isExtreme) args.emplace_back(DoubleArray());
    args.emplace_back(static_cast<double>(d));
    Call call(row, args, std::nullopt, CallSite{}, *static_cast<AppController*>(nullptr), nullptr);
    benchmark::DoNotOptimize(row.handler(call));
  }
  state.SetItemsProcessed(state.iterations() * rows * columns);
}

void scalar(benchmark::State& state) {
  const Builtin& row = *builtins::library().find(Name::intern("sum"));
  for (auto _ : state) {
    Storable args[] = {Storable(2.0)};
    Call call(row, args, std::nullopt, CallSite{}, *static_cast<AppController*>(nullptr), nullptr);
    benchmark::DoNotOptimize(row.handler(call));
  }
}
BENCHMARK(scalar)->Name("sum of a scalar");

const int kRegistered = [] {
  static platform::native::ParallelPool pool;
  platform::setParallelFor(&pool);
  const int64_t shapes[][2] = {{1000000, 1},  {1000, 1000},  {10, 100000}, {100000, 10},
                               {10000000, 1}, {1000, 10000}, {1000000, 10}};
  for (const char* name : {"sum", "mean", "max", "min", "cumsum", "prod", "any", "var", "median"}) {
    for (const auto& [rows, columns] : shapes) {
      for (int64_t d : {1, 2}) {
        if (columns == 1 && d == 2) continue;
        const std::string title = std::string(name) + " " + std::to_string(rows) + "x" + std::to_string(columns) +
                                  " dim " + std::to_string(d);
        benchmark::RegisterBenchmark(title.c_str(), run, name, rows, columns, d)->Unit(benchmark::kMillisecond);
      }
    }
  }
  return 0;
}();

}  // namespace
}  // namespace kelo
