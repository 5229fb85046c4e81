// Polynomials, signals and calculus: laws on random input against plain formulas, and the
// complaints. What comes back at the console stands in transcripts/builtins/polynomials.txt.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <complex>

#include "builtins/calls.h"
#include "values/operators.h"

namespace kelo {
namespace {

using namespace kelo::testing;
using C = std::complex<double>;
using Vector = std::vector<C>;

Vector elements(const NumericArray& array) {
  const ComplexDoubleArray z = array.toComplexArray();
  Vector result;
  for (const ComplexDouble w : z.values()) result.emplace_back(w.real, w.imaginary);
  return result;
}

void expectNear(const Vector& actual, const Vector& expected, double tolerance, const std::string& what) {
  ASSERT_EQ(actual.size(), expected.size()) << what;
  for (size_t k = 0; k < actual.size(); ++k)
    EXPECT_LE(std::abs(actual[k] - expected[k]), tolerance) << what << " " << k;
}

NumericArray randomVector(std::mt19937_64& random, int64_t n, bool isComplex) {
  if (isComplex) return randomComplex(random, SizeVector(1, n));
  return randomArray(random, SizeVector(1, n));
}

Vector plainConvolution(const Vector& u, const Vector& v) {
  Vector sum(u.size() + v.size() - 1);
  for (size_t i = 0; i < u.size(); ++i) {
    for (size_t j = 0; j < v.size(); ++j) sum[i + j] += u[i] * v[j];
  }
  return sum;
}

NumericArray sum(const NumericArray& a, const NumericArray& b) { return elementwise(BinaryOp::plus, a, b); }

TEST(Convolution, agreesWithThePlainSumInAllShapes) {
  std::mt19937_64 random(1);
  for (const int64_t nu : {1, 2, 15, 16, 17, 40, 100}) {
    for (const int64_t nv : {1, 3, 16, 33, 100}) {
      for (const bool isComplex : {false, true}) {
        const NumericArray u = randomVector(random, nu, false), v = randomVector(random, nv, isComplex);
        const Vector full = plainConvolution(elements(u), elements(v));
        const std::string what = fmt::format("{} with {}", nu, nv);
        expectNear(elements(called("conv", {u, v})), full, 1e-12, what);
        const auto part = [&](int64_t first, int64_t count) {
          return Vector(full.begin() + first, full.begin() + first + count);
        };
        expectNear(elements(called("conv", {u, v, text("same")})), part(nv / 2, nu), 1e-12, what + " same");
        const int64_t valid = std::max<int64_t>(nu - nv + 1, 0);
        expectNear(elements(called("conv", {u, v, text("valid")})), valid == 0 ? Vector() : part(nv - 1, valid), 1e-12,
                   what + " valid");
      }
    }
  }
}

TEST(Convolution, divisionUndoesIt) {
  std::mt19937_64 random(2);
  for (const bool isComplex : {false, true}) {
    NumericArray a = randomVector(random, 4, isComplex), q = randomVector(random, 9, false);
    a = sum(a, row({9, 0, 0, 0}));  // far from a small first element, which would grow the errors
    const auto divided = outputsOf("deconv", {called("conv", {q, a}), a}, 2);
    expectNear(elements(*divided[0].numeric()), elements(q), 1e-12, "quotient");
    expectNear(elements(*divided[1].numeric()), Vector(12), 1e-12, "remainder");
  }
}

// y(n) = sum of b(k) x(n - k) - sum of a(k) y(n - k), with a(1) divided out.
Vector plainFilter(const Vector& b, const Vector& a, const Vector& x) {
  Vector y(x.size());
  for (size_t n = 0; n < x.size(); ++n) {
    for (size_t k = 0; k < b.size() && k <= n; ++k) y[n] += b[k] * x[n - k];
    for (size_t k = 1; k < a.size() && k <= n; ++k) y[n] -= a[k] * y[n - k];
    y[n] /= a[0];
  }
  return y;
}

TEST(Filter, agreesWithTheDifferenceEquationAndGoesOnFromItsState) {
  std::mt19937_64 random(3);
  for (const int64_t nb : {1, 2, 3, 5, 20}) {
    for (const int64_t na : {1, 2, 4, 7, 12}) {
      for (const bool isComplex : {false, true}) {
        const NumericArray b = randomVector(random, nb, false);
        NumericArray a = randomVector(random, na, isComplex);
        if (isComplex)  // far from 0, so that no pole is outside the unit circle
          a.as<ComplexDouble>().writable()[0] = {20, 3};
        else
          a.as<double>().writable()[0] = 20;
        const NumericArray x = randomVector(random, 60, false);
        const std::string what = fmt::format("{} over {}", nb, na);
        const Vector y = plainFilter(elements(b), elements(a), elements(x));
        expectNear(elements(called("filter", {b, a, x})), y, 1e-11, what);

        const auto xs = x.asDouble().values();
        for (const size_t cut : {size_t{1}, size_t{30}}) {
          const auto first = outputsOf("filter", {b, a, DoubleArray::row(xs.first(cut))}, 2);
          const NumericArray second = called("filter", {b, a, DoubleArray::row(xs.subspan(cut)), first[1]});
          Vector joined = elements(*first[0].numeric());
          for (const C z : elements(second)) joined.push_back(z);
          expectNear(joined, y, 1e-11, what + " in two parts");
        }
      }
    }
  }
}

TEST(Polynomials, valuesAgreeWithPowers) {
  std::mt19937_64 random(5);
  for (const bool isComplex : {false, true}) {
    const NumericArray p = randomVector(random, 6, isComplex), x = randomVector(random, 37, false);
    Vector expected;
    for (const C z : elements(x)) {
      C value = 0;
      for (size_t k = 0; k < 6; ++k) value += elements(p)[k] * std::pow(z, static_cast<int>(5 - k));
      expected.push_back(value);
    }
    expectNear(elements(called("polyval", {p, x})), expected, 1e-11, "polyval");
  }
}

TEST(Polynomials, rootsAreWhereTheyWere) {
  std::mt19937_64 random(6);
  for (const bool isComplex : {false, true}) {
    const NumericArray r = randomVector(random, 6, isComplex);
    const NumericArray found = called("roots", {called("poly", {r})});
    for (const C z : elements(found)) {
      double nearest = kInf;
      for (const C w : elements(r)) nearest = std::min(nearest, std::abs(z - w));
      EXPECT_LT(nearest, 1e-6);
    }
    const NumericArray back = called("poly", {called("compan", {called("poly", {r})})});
    expectNear(elements(back), elements(called("poly", {r})), 1e-10, "characteristic polynomial");
  }
}

TEST(Polynomials, theDerivativeUndoesTheIntegral) {
  std::mt19937_64 random(7);
  for (const bool isComplex : {false, true}) {
    const NumericArray p = randomVector(random, 7, isComplex);
    expectNear(elements(called("polyder", {called("polyint", {p, complex(1, 2)})})), elements(p), 1e-14, "polyder");
  }
}

TEST(Polynomials, theFitLeavesAResidualAcrossThePowers) {
  std::mt19937_64 random(8);
  for (const bool isComplex : {false, true}) {
    const NumericArray x = randomVector(random, 30, false), y = randomVector(random, 30, isComplex);
    const Vector xs = elements(x), ys = elements(y);
    const auto fit = outputsOf("polyfit", {x, y, num(4)}, 2);
    const Vector values = elements(called("polyval", {*fit[0].numeric(), x}));
    double squares = 0;
    for (int power = 0; power <= 4; ++power) {
      C across = 0;
      for (size_t k = 0; k < 30; ++k) across += std::pow(xs[k], power) * (ys[k] - values[k]);
      EXPECT_LT(std::abs(across), 1e-10) << power;
    }
    for (size_t k = 0; k < 30; ++k) squares += std::norm(ys[k] - values[k]);
    const StructArray& s = *fit[1].structure();
    EXPECT_NEAR(s.value(0, s.fieldIndex(Name::intern("normr"))).doubleScalar(), std::sqrt(squares), 1e-12);
    EXPECT_EQ(s.value(0, s.fieldIndex(Name::intern("df"))).doubleScalar(), 25);
  }
}

TEST(Polynomials, theErrorOfAValueIsThatOfTheFit) {
  // For the mean of n numbers: s / sqrt(n - 1) * sqrt(1 + 1 / n), s the norm of what is left.
  const auto fit = outputsOf("polyfit", {row({1, 2, 3, 4}), row({1, 4, 4, 7}), num(0)}, 2);
  const auto value = outputsOf("polyval", {fit[0], row({5, 6}), fit[1]}, 2);
  const double expected = std::sqrt(18) / std::sqrt(3) * std::sqrt(1.25);
  for (const C delta : elements(*value[1].numeric())) EXPECT_NEAR(delta.real(), expected, 1e-14);
}

TEST(FiltersAndDifferences, goAlongAnyDimension) {
  const NumericArray b = row({1, 1}), a = num(1), none = DoubleArray(), cube = counting({2, 2, 2});
  check({
      {"filter", {b, a, cube}, "double 2 x 2 x 2: 1 3 3 7 5 11 7 15"},
      {"filter", {b, a, cube, none, num(2)}, "double 2 x 2 x 2: 1 2 4 6 5 6 12 14"},
      {"filter", {b, a, cube, none, num(3)}, "double 2 x 2 x 2: 1 2 3 4 6 8 10 12"},
      {"filter", {b, a, cube, none, num(4)}, "double 2 x 2 x 2: 1 2 3 4 5 6 7 8"},
      {"diff", {shaped({2, 2, 2}, {1, 2, 4, 8, 16, 32, 64, 128})}, "double 1 x 2 x 2: 1 4 16 64"},
      {"diff", {shaped({2, 2, 2}, {1, 2, 4, 8, 16, 32, 64, 128}), num(1), num(2)}, "double 2 x 1 x 2: 3 6 48 96"},
      {"diff", {shaped({2, 2, 2}, {1, 2, 4, 8, 16, 32, 64, 128}), num(1), num(3)}, "double 2 x 2: 15 30 60 120"},
  });
}

TEST(Products, ofLongAndOfManyVectors) {
  std::mt19937_64 random(10);
  const ComplexDoubleArray a = randomComplex(random, SizeVector(19, 3)), b = randomComplex(random, SizeVector(19, 3));
  const Vector u = elements(a), v = elements(b);
  Vector down(3), across(19);
  for (size_t i = 0; i < 57; ++i) {
    down[i / 19] += std::conj(u[i]) * v[i];
    across[i % 19] += std::conj(u[i]) * v[i];
  }
  expectNear(elements(called("dot", {a, b})), down, 1e-13, "dot");
  expectNear(elements(called("dot", {a, b, num(2)})), across, 1e-13, "dot along rows");

  const DoubleArray x = randomArray(random, SizeVector{2, 3, 4}), y = randomArray(random, SizeVector{2, 3, 4});
  const NumericArray z = called("cross", {x, y});
  for (const NumericArray& operand : {NumericArray(x), NumericArray(y)}) {
    expectNear(elements(called("dot", {z, operand, num(2)})), Vector(8), 1e-14, "at right angles");
  }
}

TEST(Pairs, standSideBySide) {
  const char* const unpaired = " | In cplxpair(A), A should consist of real numbers and pairs of complex conjugates";
  const NumericArray six = complexShaped({1, 6}, {{1, 2}, {5, 0}, {1, -3}, {1, -2}, {1, 3}, {-4, 0}});
  check({
      {"cplxpair", {six}, "complex 1 x 6: 1,-2 1,2 1,-3 1,3 -4,0 5,0"},
      {"cplxpair", {complexShaped({1, 2}, {{2, 1e-20}, {1, 0}})}, "complex 1 x 2: 1,0 2,0"},
      {"cplxpair", {complexShaped({1, 3}, {{1, 2}, {1, -2}, {1, 2}})}, unpaired},
      {"cplxpair", {complexShaped({1, 2}, {{1, 2}, {1, -2.5}})}, unpaired},
      {"cplxpair", {complexShaped({1, 2}, {{kNaN, 2}, {kNaN, -2}})}, unpaired},
  });
}

TEST(Polynomials, ofSpecialNumbersEmptyArraysAndWhatIsRefused) {
  check({
      // clang-format off
      {"polyval", {row({1, 2}), DoubleArray()}, "double 0 x 0:"},
      {"polyval", {row({1, 0, 0}), row({kInf, -kInf, kNaN})}, "double 1 x 3: inf inf nan"},
      {"polyval", {text("!"), truth(true)}, "double 1 x 1: 33"},
      {"conv", {row({kInf, 1}), row({1, 1})}, "double 1 x 3: inf inf 1"},
      {"filter", {row({1, 1}), num(1), row({kInf, 1, 1})}, "double 1 x 3: inf inf 2"},
      {"filter", {num(1), num(1), zeros(SizeVector(0, 3))}, "double 0 x 3:"},
      {"roots", {row({0, 0})}, "double 0 x 1:"},
      {"roots", {row({1e-320, 1, -2})}, "double 1 x 1: 2"},
      {"compan", {num(3)}, "double 0 x 0:"},
      {"diff", {truth(true), num(1), num(3)}, " | When computing the first order difference of the vector a, it should have least two elements"},
      {"diff", {row({1, 2, 3}), num(1e18)}, " | When computing the 1000000000000000000-th order difference of the vector a, it should have least 1000000000000000001 elements"},
      {"gradient", {num(5)}, "double 1 x 1: 0"},
      {"cplxpair", {row({2, kNaN, 1})}, "double 1 x 3: 1 2 nan"},
      {"cross", {zeros(SizeVector(3, 0)), zeros(SizeVector(3, 0))}, " | In a cross operation, one of the operands is unexpectedly found empty"},
      {"poly", {text("ab")}, " | In poly(r), r should contain numbers, not characters"},
      {"poly", {DoubleArray()}, " | At least one root should be given"},
      {"polyder", {DoubleArray()}, " | A polynomial should have at least one coefficient"},
      {"polyint", {row({1, 2}), row({1, 2})}, " | In polyint(p, c), c should be a scalar complex or real numbers"},
      {"roots", {row({1, kNaN})}, " | In roots(p), p should not contain NaN nor Inf"},
      {"conv", {DoubleArray(), num(1)}, " | Convolution of empty vectors is invalid"},
      {"deconv", {row({1, 2, 3}), num(0)}, " | In deconv(b, a), a(1) should be non-zero"},
      {"filter", {num(1), num(0), row({1, 2, 3})}, " | In filter(b, a, x), the first element of a should be non-zero"},
      {"diff", {row({1, 2, 3}), num(0)}, " | In diff(X, n, dim), n should be a real positive integer scalar"},
      {"gradient", {row({1, 2, 3}), num(1), num(2)}, " | When F is a vector, there should be exactly 1 spacing value"},
      {"dot", {row({1, 2, 3}), row({1, 2})}, " | In dot(A, B), A and B should have the same sizes"},
      {"dot", {DoubleArray(), DoubleArray()}, " | In a dot operation, one of the operands is unexpectedly found empty"},
      // clang-format on
  });
}

TEST(Polynomials, ofWhatIsNoArrayOfNumbers) {
  for (const char* name : {"polyval", "polyfit", "poly", "polyder", "polyint", "roots", "compan", "conv", "deconv",
                           "filter", "diff", "gradient", "dot", "cross", "cplxpair"}) {
    const Builtin* function = builtins::library().find(Name::intern(name));
    const std::vector<Storable> args(static_cast<size_t>(function->inputs.least), StructArray());
    EXPECT_TRUE(outcomeOf(name, args).starts_with(std::string(" | In ") + name + "(")) << name;
  }
}

}  // namespace
}  // namespace kelo
