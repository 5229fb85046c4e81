// Reductions and scans of 1e6 and 1e7 doubles, called as a program calls them.
// bench/compare/reductions.py has the same rows for another library.
#include "builtin_calls.h"

namespace kelo {
namespace {

/// NAME(A, d), max(A, [], d), var(A, 0, d).
void run(benchmark::State& state, const char* name, int64_t rows, int64_t columns, int64_t d) {
  std::vector<Storable> args{numbersBetween(0, 1, {rows, columns})};
  const std::string function = name;
  if (function == "max" || function == "min") args.emplace_back(DoubleArray());
  if (function == "var") args.emplace_back(0.0);
  args.emplace_back(static_cast<double>(d));
  callOver(state, name, args);
  state.SetItemsProcessed(state.iterations() * rows * columns);
}

void scalar(benchmark::State& state) { callOver(state, "sum", {Storable(2.0)}); }
BENCHMARK(scalar)->Name("sum of a scalar");

const int kRegistered = [] {
  const int64_t shapes[][2] = {{1000000, 1},  {1000, 1000},  {10, 100000}, {100000, 10},
                               {10000000, 1}, {1000, 10000}, {1000000, 10}};
  for (const char* name : {"sum", "mean", "max", "min", "cumsum", "prod", "any", "var", "median"}) {
    for (const auto& [rows, columns] : shapes) {
      for (int64_t d : {1, 2}) {
        if (columns == 1 && d == 2) continue;
        const std::string title = std::string(name) + " " + std::to_string(rows) + "x" + std::to_string(columns) +
                                  " dim " + std::to_string(d);
        benchmark::RegisterBenchmark(title.c_str(), run, name, rows, columns, d)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
      }
    }
  }
  return 0;
}();

}  // namespace
}  // namespace kelo
