// Signals and polynomials on long vectors, as a program calls them. The rows are those that
// bench/compare/polynomials.py prints for NumPy.
#include <benchmark/benchmark.h>

#include "builtins/library.h"
#include "platform/native/machine.h"
#include "platform/native/parallel_pool.h"

namespace {

using namespace kelo;

DoubleArray deviates(int64_t n, double low = -1, double high = 1) {
  DoubleArray x = DoubleArray::uninitialized(SizeVector(1, n));
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
}

struct Row {
  const char* label;
  const char* name;
  std::vector<Storable> args;
};

[[maybe_unused]] const bool registered = [] {
  const DoubleArray million = deviates(1'000'000);
  const DoubleArray feedback(SizeVector(1, 5), {1, -0.5, 0.25, -0.1, 0.05});
  const Row rows[] = {
      {"conv/1e6x100", "conv", {million, deviates(100)}},
      {"conv/5000x5000", "conv", {deviates(5000), deviates(5000)}},
      {"filter/fir/1e6x32", "filter", {deviates(32), DoubleArray(1.0), million}},
      {"filter/iir/1e6x5", "filter", {deviates(5), feedback, million}},
      {"polyval/1e6x10", "polyval", {deviates(10), million}},
      {"polyfit/1e5x5", "polyfit", {deviates(100'000), deviates(100'000), DoubleArray(5.0)}},
      {"roots/100", "roots", {deviates(101)}},
      {"diff/1e6", "diff", {million}},
      {"gradient/1e6", "gradient", {million}},
      {"dot/1e6", "dot", {million, deviates(1'000'000)}},
  };
  for (const Row& r : rows) {
    benchmark::RegisterBenchmark(r.label, [r](benchmark::State& state) { run(state, r.name, r.args); })
        ->Unit(benchmark::kMicrosecond)
        ->UseRealTime();
  }
  return true;
}();

}  // namespace
