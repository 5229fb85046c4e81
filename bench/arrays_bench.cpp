// Sorting, searching and rearranging of 1e6 and 1e7 doubles, through the handlers.
// bench/compare/arrays.py has the same rows for NumPy.
#include <algorithm>
#include <cmath>

#include "builtin_calls.h"

namespace kelo {
namespace {

using Arguments = std::vector<Storable>;

DoubleArray randomNumbers(const SizeVector& size) { return numbersBetween(0, 1, size); }

LogicalArray halves(int64_t n) {
  const DoubleArray x = randomNumbers(SizeVector(n, 1));
  LogicalArray result = LogicalArray::uninitialized(x.size());
  for (int64_t i = 0; i < n; ++i) result.writable()[i] = x[i] > 0.5;
  return result;
}

Storable numbers(std::initializer_list<double> x) { return DoubleArray::row(std::span(x.begin(), x.size())); }

int64_t sideOf(int64_t n) { return static_cast<int64_t>(std::sqrt(static_cast<double>(n))); }
Storable square(int64_t n) { return randomNumbers(SizeVector(sideOf(n), sideOf(n))); }

void run(benchmark::State& state, const char* name, int outputs, Arguments (*make)(int64_t)) {
  callOver(state, name, make(state.range(0)), outputs);
}

struct Row {
  const char* label;
  const char* name;
  int outputs;
  Arguments (*arguments)(int64_t n);
};

const Row kRows[] = {
    {"sort", "sort", 1,
     [](int64_t n) {
       return Arguments{randomNumbers({n, 1})};
     }},
    {"sort with positions", "sort", 2,
     [](int64_t n) {
       return Arguments{randomNumbers({n, 1})};
     }},
    {"sort columns", "sort", 1, [](int64_t n) { return Arguments{square(n)}; }},
    {"sort rows", "sort", 1,
     [](int64_t n) {
       return Arguments{square(n), Storable(2.0)};
     }},
    {"find in logical", "find", 1, [](int64_t n) { return Arguments{halves(n)}; }},
    {"find in doubles", "find", 1,
     [](int64_t n) {
       return Arguments{randomNumbers({n, 1})};
     }},
    {"repmat row down", "repmat", 1,
     [](int64_t n) {
       return Arguments{randomNumbers({1, 1000}), numbers({static_cast<double>(n) / 1000, 1})};
     }},
    {"repmat 2 x 2", "repmat", 1,
     [](int64_t n) {
       return Arguments{randomNumbers({sideOf(n) / 2, sideOf(n) / 2}), Storable(2.0)};
     }},
    {"transpose", "transpose", 1, [](int64_t n) { return Arguments{square(n)}; }},
    {"permute 3 1 2", "permute", 1,
     [](int64_t n) {
       return Arguments{randomNumbers({100, 100, n / 10000}), numbers({3, 1, 2})};
     }},
    {"permute 2 1 3", "permute", 1,
     [](int64_t n) {
       return Arguments{randomNumbers({100, 100, n / 10000}), numbers({2, 1, 3})};
     }},
    {"permute 3 2 1", "permute", 1,
     [](int64_t n) {
       return Arguments{randomNumbers({100, 100, n / 10000}), numbers({3, 2, 1})};
     }},
    {"flip", "flip", 1,
     [](int64_t n) {
       return Arguments{randomNumbers({n, 1})};
     }},
    {"rot90", "rot90", 1, [](int64_t n) { return Arguments{square(n)}; }},
    {"zeros", "zeros", 1,
     [](int64_t n) {
       return Arguments{Storable(static_cast<double>(n)), Storable(1.0)};
     }},
    {"linspace", "linspace", 1,
     [](int64_t n) {
       return Arguments{Storable(0.0), Storable(1.0), Storable(static_cast<double>(n))};
     }},
};

/// The machine may be busy: the best repetition counts.
double least(const std::vector<double>& times) { return *std::min_element(times.begin(), times.end()); }

const bool kRegistered = [] {
  for (const Row& row : kRows) {
    const auto body = [&row](benchmark::State& state) { run(state, row.name, row.outputs, row.arguments); };
    benchmark::RegisterBenchmark(row.label, body)
        ->Arg(1000000)
        ->Arg(10000000)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Repetitions(7)
        ->ReportAggregatesOnly()
        ->ComputeStatistics("min", least);
  }
  const auto scalarCall = [](benchmark::State& state) {
    run(state, "zeros", 1, [](int64_t n) { return Arguments{Storable(static_cast<double>(n)), Storable(1.0)}; });
  };
  benchmark::RegisterBenchmark("zeros(1, 1)", scalarCall)->Arg(1);
  const auto numel = [](benchmark::State& state) {
    run(state, "numel", 1, [](int64_t) { return Arguments{Storable(1.0)}; });
  };
  benchmark::RegisterBenchmark("numel(x)", numel)->Arg(1);
  return true;
}();

}  // namespace
}  // namespace kelo
