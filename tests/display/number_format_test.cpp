#include "display/number_format.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include "values/arrays.h"

namespace kelo {
namespace {

using namespace testing;

std::string real(int nDigits, double x) {
  std::string text;
  appendReal(text, nDigits, x);
  return text;
}

TEST(NumberFormat, PrintsRealsInTheirField) {
  const struct {
    int nDigits;
    double x;
    const char* text;
  } rows[] = {
      {5, 3.14159, " 3.1416"},
      {5, -12.5, "-12.500"},
      {5, 1234567, " 1234567."},
      // precision before rounding
      {5, 9.99999, " 10.0000"},
      // ties go to the even neighbour of the binary value
      {5, 100.125, " 100.12"},
      {5, 100.375, " 100.38"},
      {5, -1e-10, "-0.0000"},
      {16, 3.14159265358979, " 3.141592653589790"},
      {1, 7, " 7."},
      {5, kNaN, " NaN   "},
      {8, -kInf, "-Inf      "},
  };
  for (const auto& row : rows) EXPECT_EQ(real(row.nDigits, row.x), row.text);
}

TEST(NumberFormat, PrintsEveryNumberAsPrintfDoes) {
  const unsigned seed = std::random_device()();
  std::mt19937_64 random(seed);
  std::uniform_real_distribution<double> exponent(-12, 25);
  for (int k = 0; k < 40'000; ++k) {
    double x;
    switch (k % 4) {
      case 0: x = std::bit_cast<double>(random()); break;
      case 1: x = std::pow(10, exponent(random)); break;
      case 2: x = -static_cast<double>(random() % 2'000'000) / 16; break;                                // many ties
      default: x = std::nextafter(std::pow(10, static_cast<int>(random() % 24)), k % 8 < 4 ? 0 : kInf);  // near powers
    }
    if (!std::isfinite(x)) continue;
    for (const int nDigits : {5, 8, 12, 16}) {
      char expected[512];
      std::snprintf(expected, sizeof expected, "% #*.*f", nDigits + 2, precisionFor(nDigits, x), x);
      ASSERT_EQ(real(nDigits, x), expected) << "seed " << seed;
      int divisions = 0;
      for (double y = std::fabs(x); y >= 1; y /= 10) ++divisions;
      ASSERT_EQ(precisionFor(nDigits, x), divisions >= 2 ? std::max(nDigits - divisions, 0) : nDigits - 1) << x;
    }
  }
}

TEST(NumberFormat, PrintsComplexNumbers) {
  const struct {
    ComplexDouble z;
    const char* text;
  } rows[] = {
      {{1, 1}, " 1.0000 + 1.0000i"},         {{-1, -1}, "-1.0000 - 1.0000i"},     {{0.5, 123.456}, " 0.5000 + 123.46i"},
      {{12345, -1e-9}, " 12345. - 0.0000i"}, {{kNaN, kNaN}, " NaN    + NaN   i"}, {{-kInf, -kInf}, "-Inf    - Inf   i"},
      {{1, kInf}, " 1.0000 + Inf   i"},      {{1, -0.0}, " 1.0000 + 0.0000i"},
  };
  for (const auto& row : rows) {
    std::string text;
    appendComplex(text, 5, row.z);
    EXPECT_EQ(text, row.text);
    EXPECT_EQ(text.size(), 17u);
  }
  std::string wide;
  appendComplex(wide, 8, {kNaN, 3.14159265});
  EXPECT_EQ(wide, " NaN       + 3.1415927i");
}

TEST(NumberFormat, FindsTheCommonScale) {
  const struct {
    std::vector<double> values;
    int nDigits, scale;
  } rows[] = {
      // clang-format off
      {{0}, 5, 0},                {{1}, 5, 0},                {{0.5}, 5, 1},              {{0.001}, 5, 3},
      {{0.00999}, 5, 3},          {{1e6}, 5, -6},             {{99999}, 5, 0},            {{100000}, 5, -5},
      {{100000}, 8, 0},           {{1, -2, -1e6}, 5, -6},     {{kNaN}, 5, 0},             {{kInf, 3}, 5, 0},
      {{kNaN, 1e-3}, 5, 3},       {{0, 0.25, 0.1}, 5, 1},     {{1e-3, 5, kInf}, 5, 0},    {{5e-324}, 5, 324},
      {{1e308}, 5, -308},         {{1, 1, 1, 1, 1e7}, 5, -7}, {{1, 1e7, 1, 1, 1}, 5, -7},
      // clang-format on
  };
  for (const auto& row : rows) EXPECT_EQ(scaleExponent(row.values, row.nDigits), row.scale) << row.values[0];

  EXPECT_EQ(scaleExponent(std::vector<int64_t>{1, INT64_MIN}, 5), -18);
  EXPECT_EQ(scaleExponent(std::vector<ComplexDouble>{{kNaN, 0.01}, {0.001, kInf}}, 5), 2);
}

TEST(NumberFormat, ScalesStepByStep) {
  double expected = 0.1234567;
  for (int k = 0; k < 20; ++k) expected *= 10;
  EXPECT_EQ(scaled(0.1234567, 20), expected);
  EXPECT_EQ(scaled(1e6, -6), 1);
  EXPECT_FALSE(std::signbit(scaled(-0.0, 0)));
  EXPECT_FALSE(std::signbit(scaled(-5e-324, -3)));
  EXPECT_TRUE(std::signbit(scaled(-1e-300, -3)));
  EXPECT_EQ(scaled(-kInf, 300), -kInf);
}

TEST(NumberFormat, GivesShortNumbers) {
  const std::tuple<double, int, const char*> rows[] = {
      // clang-format off
      {5, 5, "5"},                     {-0.0, 5, "0"},                  {-1234567, 5, "-1234567"},
      {1e15, 5, "1000000000000000"},   {1e20, 5, "1e+20"},              {3.14159, 5, "3.1416"},
      {-123.456, 5, "-123.46"},        {0.5, 5, "0.5000"},              {12345.6, 5, "12346"},
      {3.14159, 8, "3.1415900"},       {0.001234, 5, "0.001234"},       {1.234567e-10, 5, "1.2346e-10"},
      {kNaN, 5, "NaN"},                {kInf, 5, "Inf"},                {-kInf, 5, "-Inf"},
      // clang-format on
  };
  for (const auto& [x, nDigits, text] : rows) EXPECT_EQ(shortNumber(x, nDigits), text);
}

}  // namespace
}  // namespace kelo
