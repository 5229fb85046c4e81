// Arrays of random numbers, and error functions and distributions on large arrays. The rows are those that
// bench/compare/random_numbers.py prints for NumPy, where it has the function.
#include <benchmark/benchmark.h>

#include "builtins/library.h"
#include "interpreter/app_controller.h"
#include "platform/memory/twins.h"
#include "platform/memory_file_system.h"
#include "platform/native/machine.h"
#include "platform/native/parallel_pool.h"

namespace {

using namespace kelo;

struct SilentView : ConsoleView {
  void item(const Display&) override {}
};

struct App {
  SilentView view;
  platform::InlineQueue queue;
  platform::ManualClock clock;
  platform::ManualMainQueue mainQueue{clock};
  platform::ScriptedSynchronization synchronization;
  platform::MemoryFileSystem files;
  platform::MemoryStore store;
  platform::native::ParallelPool pool;
  AppController app{{queue, mainQueue, synchronization, files, store, clock}, view, builtins::library()};

  App() {
    platform::native::adaptToMachine();
    platform::setParallelFor(&pool);
  }
};

void run(benchmark::State& state, const char* name, const std::vector<Storable>& values, int64_t items) {
  static App app;
  const Builtin* row = builtins::library().find(Name::intern(name));
  const CallSite site;
  for (auto _ : state) {
    std::vector<Storable> args = values;
    Call call(*row, args, 1, site, app.app, nullptr);
    benchmark::DoNotOptimize(row->handler(call));
  }
  state.SetItemsProcessed(state.iterations() * items);
}

constexpr int64_t kMany = 10'000'000;

std::vector<Storable> sized(std::initializer_list<double> parameters) {
  std::vector<Storable> result;
  for (const double p : parameters) result.emplace_back(p);
  result.emplace_back(static_cast<double>(kMany));
  result.emplace_back(1.0);
  return result;
}

DoubleArray ramp(double low, double high, int64_t n) {
  DoubleArray x = DoubleArray::uninitialized(SizeVector(n, 1));
  for (int64_t i = 0; i < n; ++i)
    x.writable()[i] = low + (high - low) * static_cast<double>(i) / static_cast<double>(n);
  return x;
}

struct Row {
  const char* label;
  const char* name;
  std::vector<Storable> args;
  int64_t items = kMany;
};

[[maybe_unused]] const bool registered = [] {
  const Row rows[] = {
      {"rand", "rand", sized({})},
      {"randi(6)", "randi", sized({6})},
      {"randn", "randn", sized({})},
      {"normrnd(1, 2)", "normrnd", sized({1, 2})},
      {"exprnd(2)", "exprnd", sized({2})},
      {"poissrnd(3)", "poissrnd", sized({3})},
      {"poissrnd(30)", "poissrnd", sized({30})},
      {"randperm", "randperm", {Storable(static_cast<double>(kMany))}},
      {"rand/1", "rand", {}, 1},
      {"erf", "erf", {ramp(-4, 4, 1'000'000)}, 1'000'000},
      {"normcdf", "normcdf", {ramp(-4, 4, 1'000'000)}, 1'000'000},
      {"norminv", "norminv", {ramp(0, 1, 1'000'000)}, 1'000'000},
      {"poisscdf", "poisscdf", {ramp(0, 60, 1'000'000), Storable(30.0)}, 1'000'000},
  };
  for (const Row& r : rows) {
    benchmark::RegisterBenchmark(r.label, [r](benchmark::State& state) { run(state, r.name, r.args, r.items); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
  }
  return true;
}();

}  // namespace
