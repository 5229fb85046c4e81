// `pi` and `eps`.
#include <limits>
#include <numbers>

#include "builtins/elementwise/handlers.h"
#include "builtins/elementwise/kernels.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"

namespace kelo::builtins {
namespace {

/// From |x| to the next larger double: Inf for the largest one, NaN for Inf. NOTE: intended.
double gapAbove(double x) {
  const double magnitude = std::fabs(x);
  return std::nextafter(magnitude, std::numeric_limits<double>::infinity()) - magnitude;
}

}  // namespace

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

}  // namespace kelo::builtins
