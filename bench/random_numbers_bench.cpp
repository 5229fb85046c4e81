// Arrays of random numbers, and error functions and distributions on large arrays. The rows are
// those that bench/compare/random_numbers.py prints for NumPy, where it has the function.
#include "builtin_calls.h"

namespace kelo {
namespace {

constexpr int64_t kMany = 10'000'000;

std::vector<Storable> sized(std::initializer_list<double> parameters) {
  std::vector<Storable> result;
  for (const double p : parameters) result.emplace_back(p);
  result.emplace_back(static_cast<double>(kMany));
  result.emplace_back(1.0);
  return result;
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
      {"erf", "erf", {numbersBetween(-4, 4, {1'000'000, 1})}, 1'000'000},
      {"normcdf", "normcdf", {numbersBetween(-4, 4, {1'000'000, 1})}, 1'000'000},
      {"norminv", "norminv", {numbersBetween(0, 1, {1'000'000, 1})}, 1'000'000},
      {"poisscdf", "poisscdf", {numbersBetween(0, 60, {1'000'000, 1}), Storable(30.0)}, 1'000'000},
  };
  for (const Row& r : rows) {
    const auto body = [r](benchmark::State& state) {
      callOver(state, r.name, r.args);
      state.SetItemsProcessed(state.iterations() * r.items);
    };
    benchmark::RegisterBenchmark(r.label, body)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
  }
  return true;
}();

}  // namespace
}  // namespace kelo
