// Matrices of the orders at which triangles are halved: what the laws of factors_test.cpp and
// linear_test.cpp do not reach.
#include <gtest/gtest.h>

#include <cmath>

#include "linear/lapack.h"
#include "linear/lu.h"
#include "linear/samples.h"
#include "linear/triangles.h"
#include "values/numbers.h"

namespace kelo {
namespace {

using namespace kelo::testing;

const Warn kIgnore = [](std::string) {};

TEST(Triangles, ExactZeroPivot) {
  std::mt19937_64 random(5);
  for (const int64_t n : {32, 50, 130}) {
    DoubleArray a = randomArray(random, SizeVector(n, n));
    std::fill_n(a.writable() + n * (n / 2), n, 0.0);
    EXPECT_EQ(determinant(a).asDouble().scalar(), 0) << n;
    EXPECT_EQ(rcond(a), 0) << n;
    EXPECT_THROW(inverse(a, kIgnore), Problem) << n;
    EXPECT_THROW(mldivide(a, DoubleArray(SizeVector(n, 1), 1.0), kIgnore), Problem) << n;
    const Lu factors = lu(a);
    EXPECT_LE(distance(mtimes(factors.permutedLower(), factors.upper()), a), boundOf(a) * greatestSum(a)) << n;
  }
}

TEST(Triangles, NotFiniteGoesTheWayOfTheLibrary) {
  const DoubleArray ones(SizeVector(40, 1), 1.0);
  DoubleArray a = identityMatrix<double>(40, 40);
  a.writable()[85] = kNaN;
  EXPECT_NO_THROW(lu(a));
  EXPECT_TRUE(mldivide(a, ones, kIgnore).has(Property::hasSomeNaNs));
  a.writable()[85] = kInf;
  EXPECT_THROW(mldivide(a, ones, kIgnore), Problem);
}

// A warning comes exactly where the number that is asked for says so, though it is not worked out
// otherwise.
TEST(Triangles, WarnsByTheConditionThatIsReported) {
  std::mt19937_64 random(6);
  int warned = 0;
  for (int64_t n : {2, 20, 40, 70}) {
    for (int digits = 0; digits < 20; ++digits) {
      const double part = std::pow(10, -digits);
      const DoubleArray ones(SizeVector(n, n), 1.0);
      for (const bool isComplex : {false, true}) {
        const NumericArray noise = isComplex ? NumericArray(randomComplex(random, SizeVector(n, n)))
                                             : NumericArray(randomArray(random, SizeVector(n, n)));
        const NumericArray a = elementwise(BinaryOp::plus, ones, elementwise(BinaryOp::dmult, num(part), noise));
        std::string divided, inverted;
        try {
          mldivide(a, ones, [&](const std::string& text) { divided = text; });
          inverse(a, [&](const std::string& text) { inverted = text; });
        } catch (const Problem&) {
          continue;
        }
        const double condition = rcond(a);
        EXPECT_EQ(!divided.empty(), condition < greatestSum(a) * kEps) << n << " " << digits;
        EXPECT_EQ(!inverted.empty(), !(static_cast<double>(n) * kEps <= condition)) << n << " " << digits;
        warned += !divided.empty();
      }
    }
  }
  EXPECT_GT(warned, 10);
}

TEST(Triangles, InverseNormIsBelowTheTrueOneAndNear) {
  std::mt19937_64 random(8);
  for (const int64_t n : {2, 3, 17, 40, 90}) {
    const DoubleArray a = randomArray(random, SizeVector(n, n));
    const Lu factors = lu(a);
    const double truth = greatestSum(inverse(a, kIgnore));
    const double estimate = triangles::inverseNorm(static_cast<int>(n), factors.packed.asDouble().data());
    EXPECT_LE(estimate, truth * (1 + 1e-9)) << n;
    EXPECT_GE(estimate, truth / 3) << n;
  }
}

TEST(Triangles, ManyRightSides) {
  std::mt19937_64 random(9);
  for (const int64_t n : {33, 48, 100}) {
    for (const int64_t sides : {1, 2, 3, 7, 40}) {
      const DoubleArray a = randomArray(random, SizeVector(n, n)), b = randomArray(random, SizeVector(n, sides));
      const NumericArray x = mldivide(a, b, kIgnore);
      EXPECT_LE(distance(mtimes(a, x), b), boundOf(a) * greatestSum(a) * greatestSum(x)) << n << " " << sides;
    }
  }
}

TEST(Triangles, MatrixByVectorAsMatrixByMatrix) {
  std::mt19937_64 random(10);
  for (const auto& [m, n] : {std::pair<int64_t, int64_t>{37, 41}, {600, 500}, {1, 700}, {700, 3}, {9000, 40}}) {
    const DoubleArray a = randomArray(random, SizeVector(m, n)), v = randomArray(random, SizeVector(n, 1));
    const NumericArray twice = mtimes(a, NumericArray(DoubleArray(SizeVector(n, 2), [&] {
                                        std::vector<double> both(v.values().begin(), v.values().end());
                                        both.insert(both.end(), v.values().begin(), v.values().end());
                                        return both;
                                      }())));
    const NumericArray right = mtimes(a, v), left = mtimes(adjoint(v), adjoint(a));
    for (int64_t i = 0; i < m; ++i) {
      EXPECT_NEAR(right.asDouble()[i], twice.asDouble()[i], 1e-12);
      EXPECT_NEAR(left.asDouble()[i], twice.asDouble()[i], 1e-12);
    }
  }
}

}  // namespace
}  // namespace kelo
