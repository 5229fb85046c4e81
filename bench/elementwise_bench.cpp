// Element-wise functions on large arrays, as a program calls them: a variable goes in, a new array comes out. The rows
// are those that bench/compare/elementwise.py prints for NumPy.
#include <benchmark/benchmark.h>

#include "builtins/library.h"
#include "platform/native/machine.h"
#include "platform/native/parallel_pool.h"

namespace {

using namespace kelo;

DoubleArray between(double low, double high, int64_t n) {
  DoubleArray x = DoubleArray::uninitialized(SizeVector(n, 1));
  uint64_t state = 1;
  for (int64_t i = 0; i < n; ++i) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    x.writable()[i] = low + (high - low) * static_cast<double>(state >> 11) * 0x1p-53;
  }
  return x;
}

void run(benchmark::State& state, const char* name, const std::vector<Storable>& values) {
  alignas(16) static char noApplication[16];
  static platform::native::ParallelPool pool;
  static const bool adapted = (platform::native::adaptToMachine(), true);
  benchmark::DoNotOptimize(adapted);
  platform::setParallelFor(&pool);
  const Builtin* row = builtins::library().find(Name::intern(name));
  const CallSite site;
  for (auto _ : state) {
    std::vector<Storable> args = values;
    Call call(*row, args, 1, site, reinterpret_cast<AppController&>(noApplication), nullptr);
    benchmark::DoNotOptimize(row->handler(call));
  }
  state.SetItemsProcessed(state.iterations() * values[0].numElements());
}

struct Row {
  const char* name;
  double low, high;
  bool hasTwo = false;
};
constexpr Row kRows[] = {
    {"sin", -10, 10},   {"cos", -10, 10}, {"tan", -10, 10},        {"asin", -1, 1},        {"acos", -1, 1},
    {"atan", -10, 10},  {"sinh", -9, 9},  {"cosh", -9, 9},         {"tanh", -3, 3},        {"acosh", 1, 9},
    {"asinh", -9, 9},   {"atanh", -1, 1}, {"exp", -10, 10},        {"log", 0, 100},        {"log2", 0, 100},
    {"log10", 0, 100},  {"sqrt", 0, 100}, {"abs", -10, 10},        {"sign", -10, 10},      {"floor", -10, 10},
    {"round", -10, 10}, {"fix", -10, 10}, {"power", 0.1, 9, true}, {"mod", -10, 10, true},
};

[[maybe_unused]] const bool registered = [] {
  for (const Row& r : kRows) {
    for (const int64_t n : {int64_t{1'000'000}, int64_t{10'000'000}}) {
      benchmark::RegisterBenchmark((std::string(r.name) + "/" + std::to_string(n)).c_str(),
                                   [r, n](benchmark::State& state) {
                                     std::vector<Storable> args = {between(r.low, r.high, n)};
                                     if (r.hasTwo) args.push_back(between(1, 3, n));
                                     run(state, r.name, args);
                                   })
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime();
    }
  }
  return true;
}();

}  // namespace
