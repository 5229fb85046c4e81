// `rem` and `mod`, by an ordinary division without correction for its rounding: mod(0.3, 0.1) is what that arithmetic
// gives, and Inf as divisor gives NaN. NOTE: intended.
#include <limits>

#include "builtins/elementwise/handlers.h"
#include "builtins/elementwise/kernels.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"

namespace kelo::builtins {
namespace {

double remOf(double a, double b) {
  return b == 0 ? std::numeric_limits<double>::quiet_NaN() : a - b * std::trunc(a / b);
}
double modOf(double a, double b) { return b == 0 ? a : a - b * std::floor(a / b); }

}  // namespace

NodeValue remainders(Call& call) {
  const Wording words = {"A, B", "A and B", text::kRealNumericArrays};
  DoubleArray a = read::takeReal(call, 0, words), b = read::takeReal(call, 1, words);
  if (!expandedSizeIfAny(a.size(), b.size())) throw Wording{"A, B", "A and B", text::kCompatibleSizes}.complaint(call);
  if (call.selector<Remainder>() == Remainder::rem) {
    return binaryLoop(std::move(a), std::move(b), [](double x, double y) noexcept { return remOf(x, y); });
  }
  return binaryLoop(std::move(a), std::move(b), [](double x, double y) noexcept { return modOf(x, y); });
}

}  // namespace kelo::builtins
