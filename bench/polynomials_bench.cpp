// Signals and polynomials on long vectors, as a program calls them. The rows are those that
// bench/compare/polynomials.py prints for NumPy.
#include "builtin_calls.h"

namespace kelo {
namespace {

DoubleArray deviates(int64_t n) { return numbersBetween(-1, 1, {1, n}); }

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
    benchmark::RegisterBenchmark(r.label, [r](benchmark::State& state) { callOver(state, r.name, r.args); })
        ->Unit(benchmark::kMicrosecond)
        ->UseRealTime();
  }
  return true;
}();

}  // namespace
}  // namespace kelo
