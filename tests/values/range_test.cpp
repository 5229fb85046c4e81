// Ranges: counts and last elements at the edges, the count by bisection against the plain walk,
// failures.
#include <gtest/gtest.h>

#include <cmath>

#include "values/arrays.h"
#include "values/operators.h"

namespace kelo {
namespace {

using namespace kelo::testing;
const char* const kOperands = "Operands of ':' are expected to be real well-defined scalars, while creating a vector";

TEST(Range, Table) {
  const std::tuple<NumericArray, NumericArray, NumericArray, const char*> rows[] = {
      {num(1), num(1), num(0), "double 0 x 0:"},
      {num(0), num(0.1), num(0.3), "double 1 x 4: 0 0.1 0.2 0.30000000000000004"},
      {num(1), num(0), num(5), "double 0 x 0:"},
      {num(-0.5), num(0.25), num(0.1), "double 1 x 3: -0.5 -0.25 0"},
      {zeros({0, 0}), num(1), num(NAN), "double 0 x 0:"},
      {num(1), num(1), num(NAN), kOperands},
      {num(1), num(1), num(kInf), kOperands},
      {num(1), row({1, 2}), num(3), kOperands},
      {complex(1, 1), num(1), num(3), kOperands},
      {complex(1, 0), num(1), whole(3), "double 1 x 3: 1 2 3"},
      {text("a"), truth(true), text("c"), "double 1 x 3: 97 98 99"},
      {num(1), num(1e-20), num(2), "fatal: a range of too many elements"},
  };
  for (const auto& [first, step, last, expected] : rows) {
    EXPECT_EQ(outcome([&] { return rangeOf(first, &step, last).elements(); }), expected)
        << describe(first) << " " << describe(step) << " " << describe(last);
  }
  EXPECT_EQ(describe(rangeOf(num(2), nullptr, num(4)).elements()), "double 1 x 3: 2 3 4");
}

// The definition: counted one by one.
int64_t walked(double a, double s, double b) {
  int64_t n = 1;
  for (int64_t k = 1;; ++k, ++n) {
    const double x = static_cast<double>(k) * s + a;
    const bool before = s > 0 ? x < b : x > b;
    if (!before && !(std::fabs(x - b) <= std::fmax(std::fabs(x), std::fabs(b)) * 2.220446049250313e-16)) return n;
  }
}

TEST(Range, CountEqualsTheWalk) {
  const auto seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937_64 random(seed);
  const double scales[] = {1, 0.1, 1e-3, 1e16, 1.0 / 3, 1e-300};
  for (int round = 0; round < 2000; ++round) {
    const double scale = scales[random() % 6];
    const double a = (static_cast<double>(random() % 2001) - 1000) * scale;
    const double s = static_cast<double>(1 + random() % 30) * scale * (round % 7 == 0 ? 0.125 : 1);
    const double b = a + static_cast<double>(1 + random() % 50) * s * (round % 3 == 0 ? 1.1 : 1);
    const bool down = random() % 2 == 0;
    const double sign = down ? -1 : 1;
    if (a == b) continue;
    const NumericArray step = num(sign * s);
    ASSERT_EQ(rangeOf(num(sign * a), &step, num(sign * b)).count, walked(sign * a, sign * s, sign * b))
        << elementText(sign * a) << ":" << elementText(sign * s) << ":" << elementText(sign * b);
  }
}

TEST(Range, ElementsDoNotAccumulate) {
  const NumericArray step = num(0.1);
  const DoubleArray x = rangeOf(num(0), &step, num(20000)).elements();
  ASSERT_EQ(x.numElements(), 200001);
  for (int64_t k = 0; k < x.numElements(); k += 997) ASSERT_EQ(x[k], static_cast<double>(k) * 0.1);
}

}  // namespace
}  // namespace kelo
