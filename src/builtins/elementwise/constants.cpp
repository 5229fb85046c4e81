// `pi` and `eps`.
#include <limits>
#include <numbers>

#include "builtins/elementwise/kernels.h"
#include "builtins/library.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"
#include "values/numbers.h"

namespace kelo::builtins {
namespace {

/// From |x| to the next larger double: Inf for the largest one, NaN for Inf. NOTE: intended.
double gapAbove(double x) {
  const double magnitude = std::fabs(x);
  return std::nextafter(magnitude, kInf) - magnitude;
}

NodeValue pi(Call&) { return NodeValue(std::numbers::pi); }

NodeValue eps(Call& call) {
  if (call.count() == 0) return NodeValue(std::numeric_limits<double>::epsilon());
  NumericArray a = read::takeNumeric(call, 0, {"A", "A", text::kNumericalArray});
  if (a.is(Kind::Complex)) {
    return unaryLoop(std::move(a).take<ComplexDouble>(),
                     [](ComplexDouble z) noexcept { return gapAbove(z.magnitude()); });
  }
  return unaryLoop(std::move(a).toDoubleArray(), [](double x) noexcept { return gapAbove(x); });
}

// clang-format off
constexpr Builtin kConstants[] = {
    {"pi",  pi,  {0, 0}, 1, "",
     "Ratio of a circle's circumference to its diameter", "pi", {.inputs = text::kNoInput}},
    {"eps", eps, {0, 1}, 1, "A",
     "Gap between a number, 1 unless given, and the next larger one", "eps(1000)"},
};
// clang-format on

}  // namespace

std::span<const Builtin> constantsTable() { return kConstants; }

}  // namespace kelo::builtins
