// What the measurements of built-in functions share: numbers to work on, and a handler called as a
// program calls it, with variables going in, so that nothing of theirs is taken over, and new
// values coming out.
#pragma once

#include <benchmark/benchmark.h>

#include <optional>
#include <vector>

#include "builtins/library.h"
#include "interpreter/test_app.h"

namespace kelo {

/// Numbers between two bounds, the same at every run.
inline DoubleArray numbersBetween(double low, double high, const SizeVector& size) {
  DoubleArray x = DoubleArray::uninitialized(size);
  double* out = x.writable();
  uint64_t state = 1;
  for (int64_t i = 0; i < size.numElements(); ++i) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    out[i] = low + (high - low) * static_cast<double>(state >> 11) * 0x1p-53;
  }
  return x;
}

/// Calls NAME(values...) over and over.
inline void callOver(benchmark::State& state, const char* name, const std::vector<Storable>& values,
                     std::optional<int> outputs = 1) {
  static TestApp test(builtins::library());
  const Builtin* row = builtins::library().find(Name::intern(name));
  const CallSite site;
  for (auto _ : state) {
    std::vector<Storable> args = values;
    Call call(*row, args, outputs, site, test.app.environment, nullptr);
    benchmark::DoNotOptimize(row->handler(call));
  }
}

}  // namespace kelo
