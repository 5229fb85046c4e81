// The vector routines against the C library: on random arguments of a usual range, on random bit
// patterns, on special values, and element for element whatever the neighbours are.
#include "platform/vector_math.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "platform/vector_angle.h"
#include "platform/vector_power.h"

namespace kelo::platform {
namespace {

using F = VectorFunction;

struct Case {
  F function;
  const char* name;
  double low, high;  // a usual range
  long double (*reference)(long double);
  bool exact = false;  // no rounding allowed
};

const Case kCases[] = {
    // clang-format off
    {F::cos, "cos", -1e5, 1e5, cosl},              {F::sin, "sin", -1e5, 1e5, sinl},
    {F::tan, "tan", -1e5, 1e5, tanl},              {F::cosh, "cosh", -711, 711, coshl},
    {F::sinh, "sinh", -20, 20, sinhl},             {F::tanh, "tanh", -3, 3, tanhl},
    {F::acos, "acos", -1, 1, acosl},               {F::asin, "asin", -1, 1, asinl},
    {F::atan, "atan", -10, 10, atanl},             {F::acosh, "acosh", 1, 30, acoshl},
    {F::asinh, "asinh", -30, 30, asinhl},          {F::atanh, "atanh", -1, 1, atanhl},
    {F::exp, "exp", -745, 709, expl},              {F::log, "log", 0, 10, logl},
    {F::log2, "log2", 0, 10, log2l},               {F::log10, "log10", 0, 10, log10l},
    {F::sqrt, "sqrt", 0, 10, sqrtl, true},
    {F::reciprocal, "reciprocal", -3, 3, [](long double x) { return 1 / x; }, true},
    {F::absolute, "absolute", -3, 3, fabsl, true}, {F::ceil, "ceil", -9, 9, ceill, true},
    {F::fix, "fix", -9, 9, truncl, true},          {F::floor, "floor", -9, 9, floorl, true},
    {F::round, "round", -9, 9, roundl, true},
    // clang-format on
};

std::vector<double> applied(VectorRoutine routine, const std::vector<double>& x) {
  std::vector<double> y(x.size());
  routine(y.data(), x.data(), static_cast<int64_t>(x.size()));
  return y;
}

bool identical(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b)); }

/// Distance of y from the true value, in units of the last place of the latter.
double errorInUlps(double y, long double truth) {
  const double near = static_cast<double>(truth);
  if (identical(y, near)) return 0;
  if (!std::isfinite(near) || !std::isfinite(y)) return std::numeric_limits<double>::infinity();
  const double place = std::nextafter(std::fabs(near), std::numeric_limits<double>::infinity()) - std::fabs(near);
  return static_cast<double>(fabsl((y - truth) / place));
}

/// The reference itself is exact to a small part of a double's last place only while its own
/// argument reduction is.
void checkAccuracy(const Case& c, const std::vector<double>& x) {
  const std::vector<double> y = applied(vectorRoutine(c.function), x), plain = applied(plainRoutine(c.function), x);
  for (size_t i = 0; i < x.size(); ++i) {
    if (identical(y[i], plain[i])) continue;
    ASSERT_LE(errorInUlps(y[i], c.reference(x[i])), c.exact ? 0 : 1.0) << c.name << "(" << x[i] << ")";
  }
}

TEST(VectorMath, isWithinOneUlpOnUsualArguments) {
  std::mt19937_64 random(20);
  for (const Case& c : kCases) {
    std::uniform_real_distribution<double> usual(c.low, c.high);
    std::vector<double> x(200'001);
    for (double& v : x) v = usual(random);
    checkAccuracy(c, x);
  }
}

TEST(VectorMath, isWithinOneUlpOnAnyBitPattern) {
  std::mt19937_64 random(21);
  std::vector<double> x(200'001);
  for (double& v : x) v = std::bit_cast<double>(random());
  for (const Case& c : kCases) checkAccuracy(c, x);
}

TEST(VectorMath, agreesWithTheLibraryOnSpecialValues) {
  const double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
  // clang-format off
  const std::vector<double> x = {0.0, -0.0, 1, -1, inf, -inf, nan, 5e-324, -5e-324, 1e-310, -1e-310,
                                 2.2250738585072014e-308, 1e-200, 1e-20, -1e-20, 1e308, -1e308, 0.49999999999999994,
                                 -0.49999999999999994, 0.5, -0.5, 1.5, 2.5, -2.5, 4503599627370495.5,
                                 4503599627370497.0, 9007199254740993.0, 1e22, 710, -710.4, 710.5, 709.7, -745.2, -744,
                                 1.0000000000000002, 0.9999999999999999};
  // clang-format on
  for (const Case& c : kCases) {
    const std::vector<double> y = applied(vectorRoutine(c.function), x), plain = applied(plainRoutine(c.function), x);
    for (size_t i = 0; i < x.size(); ++i) {
      EXPECT_TRUE(identical(y[i], plain[i]) || (y[i] != 0 && errorInUlps(y[i], c.reference(x[i])) <= 1))
          << c.name << "(" << x[i] << ") is " << y[i] << ", not " << plain[i];
      EXPECT_EQ(std::signbit(y[i]) && !std::isnan(y[i]), std::signbit(plain[i]) && !std::isnan(plain[i]))
          << c.name << x[i];
    }
  }
}

TEST(VectorMath, logarithmsOfPowersAreWhole) {
  for (int k = -1074; k <= 1023; ++k) EXPECT_EQ(applied(vectorRoutine(F::log2), {std::ldexp(1.0, k)})[0], k);
  for (int k = -307; k <= 308; ++k) {
    EXPECT_EQ(applied(vectorRoutine(F::log10), {std::strtod(("1e" + std::to_string(k)).c_str(), nullptr)})[0], k);
  }
}

// A result must not depend on where an array was split, on its length or on what stands beside it;
// and y may be x.
TEST(VectorMath, treatsEachElementAlone) {
  std::mt19937_64 random(22);
  std::uniform_real_distribution<double> exponent(-40, 60);
  std::vector<double> x(1003);
  for (double& v : x) v = std::exp2(exponent(random)) * (random() % 2 ? 1 : -1);
  for (const Case& c : kCases) {
    const VectorRoutine routine = vectorRoutine(c.function);
    const std::vector<double> whole = applied(routine, x);
    std::vector<double> inPlace = x;
    routine(inPlace.data() + 1, inPlace.data() + 1, 1001);
    for (size_t i = 0; i < x.size(); ++i) {
      EXPECT_TRUE(identical(whole[i], applied(routine, {x[i]})[0])) << c.name << "(" << x[i] << ")";
      EXPECT_TRUE(identical(inPlace[i], i == 0 || i > 1001 ? x[i] : whole[i])) << c.name << "(" << x[i] << ") in place";
    }
  }
}

// ---- Powers

constexpr double kInfinity = std::numeric_limits<double>::infinity(), kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<double> powersOf(PowerRoutine routine, const std::vector<double>& x, const std::vector<double>& y) {
  std::vector<double> z(x.size());
  routine(z.data(), x.data(), y.data(), static_cast<int64_t>(x.size()));
  return z;
}

TEST(VectorPower, isWithinOneUlp) {
  std::mt19937_64 random(23);
  std::uniform_real_distribution<double> usual(0, 100), exponent(-10, 10), logarithm(-800, 800);
  std::vector<double> x(300'001), y(x.size());
  for (size_t i = 0; i < x.size(); ++i) {
    x[i] = i % 3 == 0 ? usual(random) : std::fabs(std::bit_cast<double>(random()));
    // Every third result is anywhere, or just beyond what a double holds.
    y[i] = i % 3 == 1 ? logarithm(random) / std::log(x[i]) : exponent(random);
  }
  const std::vector<double> z = powersOf(powerRoutine(), x, y), plain = powersOf(plainPowerRoutine(), x, y);
  for (size_t i = 0; i < x.size(); ++i) {
    if (identical(z[i], plain[i])) continue;
    ASSERT_LE(errorInUlps(z[i], powl(x[i], y[i])), 1.0) << x[i] << " ^ " << y[i];
  }
}

TEST(VectorPower, wholePowersOfWholeNumbersAreExact) {
  for (int base = -200; base <= 200; ++base) {
    int64_t power = 1;
    for (int exponent = 0; power < (int64_t{1} << 53) / 200 && exponent < 60; ++exponent, power *= std::abs(base)) {
      const double expected = static_cast<double>(base < 0 && exponent % 2 == 1 ? -power : power);
      if (base == 0 && exponent > 0) break;
      const double given = base, times = exponent;
      EXPECT_EQ(powersOf(powerRoutine(), {given}, {times})[0], expected) << base << " ^ " << exponent;
    }
  }
}

TEST(VectorPower, agreesWithTheLibraryOnSpecialValues) {
  const double inf = kInfinity, nan = kNaN;
  const std::vector<double> values = {0.0, -0.0, 1, -1, inf, -inf, nan, 0.5, 2, -2, 3, -3, 5e-324, 1e308, -1e308, 1e17};
  for (const double a : values) {
    for (const double b : values) {
      const double z = powersOf(powerRoutine(), {a}, {b})[0], plain = std::pow(a, b);
      EXPECT_TRUE(identical(z, plain) || errorInUlps(z, powl(a, b)) <= 1) << a << " ^ " << b << " is " << z;
    }
  }
}

TEST(VectorPower, ofOneWholeExponentIsThatOfTheLibraryWithinOneUlp) {
  const WholePowerRoutine routine = wholePowerRoutine();
  if (routine == nullptr) GTEST_SKIP() << "no such routine on this processor";
  std::mt19937_64 random(25);
  std::uniform_real_distribution<double> usual(-50, 50);
  std::vector<double> x = {0.0, -0.0, kInfinity, -kInfinity, kNaN, 5e-324, 1e308, -1e-100, 1, -1}, z(30'003);
  while (x.size() < z.size()) x.push_back(x.size() % 2 ? usual(random) : std::bit_cast<double>(random()));
  for (const int exponent : {1, 2, 3, 4, 5, 7, 10, 33, kMostWholePower, -1, -2, -3, -kMostWholePower}) {
    routine(z.data(), x.data(), exponent, static_cast<int64_t>(x.size()));
    for (size_t i = 0; i < x.size(); ++i) {
      if (identical(z[i], std::pow(x[i], exponent))) continue;
      ASSERT_LE(errorInUlps(z[i], powl(x[i], exponent)), 1.0) << x[i] << " ^ " << exponent;
    }
  }
}

// ---- Angles

TEST(VectorAngle, isWithinOneUlp) {
  std::mt19937_64 random(24);
  std::uniform_real_distribution<double> usual(-10, 10);
  std::vector<double> x(300'001), y(x.size());
  for (size_t i = 0; i < x.size(); ++i) {
    x[i] = i % 2 == 0 ? usual(random) : std::bit_cast<double>(random());
    y[i] = i % 3 == 0 ? usual(random) : std::bit_cast<double>(random());
  }
  const std::vector<double> z = powersOf(angleRoutine(), y, x), plain = powersOf(plainAngleRoutine(), y, x);
  for (size_t i = 0; i < x.size(); ++i) {
    if (identical(z[i], plain[i])) continue;
    ASSERT_LE(errorInUlps(z[i], atan2l(y[i], x[i])), 1.0) << y[i] << ", " << x[i];
  }
}

TEST(VectorAngle, agreesWithTheLibraryOnSpecialValues) {
  const double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<double> values = {0.0, -0.0, 1, -1, inf, -inf, nan, 5e-324, -5e-324, 1e-310, 1e308, -1e308, 3};
  for (const double y : values) {
    for (const double x : values) {
      const double z = powersOf(angleRoutine(), {y}, {x})[0], plain = std::atan2(y, x);
      EXPECT_TRUE(identical(z, plain) || errorInUlps(z, atan2l(y, x)) <= 1) << y << ", " << x << " is " << z;
    }
  }
}

}  // namespace
}  // namespace kelo::platform
