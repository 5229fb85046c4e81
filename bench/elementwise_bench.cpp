// Element-wise functions on large arrays, as a program calls them: a variable goes in, a new array
// comes out. The rows are those that bench/compare/elementwise.py prints for NumPy.
#include "builtin_calls.h"

namespace kelo {
namespace {

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
                                     std::vector<Storable> args = {numbersBetween(r.low, r.high, {n, 1})};
                                     if (r.hasTwo) args.push_back(numbersBetween(1, 3, {n, 1}));
                                     callOver(state, r.name, args);
                                     state.SetItemsProcessed(state.iterations() * n);
                                   })
          ->Unit(benchmark::kMillisecond)
          ->UseRealTime();
    }
  }
  return true;
}();

}  // namespace
}  // namespace kelo
