// `factorial` and `fibonacci`: elements of a table that is filled up to the largest one asked for.
#include <algorithm>
#include <vector>

#include "builtins/elementwise/kernels.h"
#include "builtins/library.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"
#include "values/numbers.h"

namespace kelo::builtins {
namespace {

constexpr int64_t kLastFactorial = 170;  // the last one that a double holds
constexpr int64_t kLastFibonacci = 1476;

std::vector<double> factorialsTo(int64_t last) {
  std::vector<double> table = {1.0};
  for (int64_t n = 1; n <= last; ++n) table.push_back(table.back() * static_cast<double>(n));
  return table;
}

/// Each number is held as the sum of two doubles, so that the rounding of long sums does not add
/// up.
std::vector<double> fibonaccisTo(int64_t last) {
  std::vector<double> table = {0.0, 1.0}, rest = {0.0, 0.0};
  for (size_t n = 2; n <= static_cast<size_t>(last); ++n) {
    const double a = table[n - 1], b = table[n - 2];  // a >= b, so the error of the sum is exact
    const double sum = a + b;
    const double low = (b - (sum - a)) + rest[n - 1] + rest[n - 2];
    table.push_back(sum + low);
    rest.push_back(low - (table[n] - sum));
  }
  return table;
}

/// Non-negative whole numbers, however large.
DoubleArray readCounts(Call& call) {
  const Wording words = {"A", "A", text::kNonNegativeIntegers};
  DoubleArray a = read::takeReal(call, 0, words);
  if (anyElement(a, [](double x) { return !(x >= 0 && x == std::floor(x) && std::isfinite(x)); }))
    throw words.complaint(call);
  return a;
}

DoubleArray lookUp(DoubleArray a, int64_t last, std::vector<double> (*fill)(int64_t)) {
  double most = 0;
  for (const double x : a.values()) most = std::max(most, x);
  const std::vector<double> table = fill(static_cast<int64_t>(std::min(most, static_cast<double>(last))));
  return unaryLoop(std::move(a), [&](double n) noexcept {
    return n < static_cast<double>(table.size()) ? table[static_cast<size_t>(n)]
                                                 : kInf;
  });
}

NodeValue factorial(Call& call) { return lookUp(readCounts(call), kLastFactorial, factorialsTo); }
NodeValue fibonacci(Call& call) { return lookUp(readCounts(call), kLastFibonacci, fibonaccisTo); }

// clang-format off
constexpr Builtin kSequences[] = {
    {"factorial", factorial, {1, 1}, 1, "A",
     "Product of the whole numbers from 1 to A", "factorial([0 5 10])"},
    {"fibonacci", fibonacci, {1, 1}, 1, "A",
     "Number A of the sequence 0, 1, 1, 2, 3, 5 and so on", "fibonacci([0 1 10])"},
};
// clang-format on

}  // namespace

std::span<const Builtin> sequencesTable() { return kSequences; }

}  // namespace kelo::builtins
