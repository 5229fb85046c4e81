// Matrix operators: failures and warnings as tables, residuals on random and hard matrices, real
// and complex.
#include "linear/linear.h"

#include <gtest/gtest.h>

#include <cmath>

#include "linear/lapack.h"
#include "linear/matrix_structure.h"
#include "linear/norm.h"
#include "linear/samples.h"
#include "linear/svd.h"
#include "values/numbers.h"

namespace kelo {
namespace {

using namespace kelo::testing;
using Op = BinaryOp;

TEST(Linear, Table) {
  const NumericArray square = shaped({2, 2}, {1, 3, 2, 4});  // [1 2; 3 4]
  const NumericArray singular = shaped({2, 2}, {1, 2, 2, 4});
  const NumericArray cube = zeros({2, 2, 2});
  const std::tuple<NumericArray, Op, NumericArray, const char*> rows[] = {
      // clang-format off
      {square, Op::mult, column({1, 1}), "double 2 x 1: 3 7"},
      {square, Op::mult, whole(2), "double 2 x 2: 2 6 4 8"},
      {whole(3), Op::mult, whole(4), "int 1 x 1: 12"},
      {zeros({2, 0}), Op::mult, zeros({0, 2}), "double 2 x 2: 0 0 0 0"},
      {complexShaped({1, 2}, {{1, 0}, {2, 0}}), Op::mult, column({1, 1}), "double 1 x 1: 3"},
      {complexShaped({1, 2}, {{0, 1}, {2, 0}}), Op::mult, column({1, 1}), "complex 1 x 1: 2,1"},
      {cube, Op::mult, square, "Invalid operands | In A * B or mtimes(A, B), A and B are expected to be matrices (2D arrays)"},
      {square, Op::mult, row({1, 2}), "Invalid operands | In A * B or mtimes(A, B), size(A, 2) == size(B, 1) should hold"},

      {square, Op::power, num(3), "double 2 x 2: 37 81 54 118"},
      {square, Op::power, num(0), "double 2 x 2: 1 0 0 1"},
      {shaped({2, 2}, {2, 0, 0, 4}), Op::power, num(-2), "double 2 x 2: 0.25 0 0 0.0625"},
      {square, Op::power, row({1, 2}), "In A^b and mpower(A, b), b should be scalar"},
      {row({1, 2}), Op::power, num(2), "In A^b and mpower(A, b), A is expected to be a square matrix or scalar"},
      {square, Op::power, num(2.5), "In A^b and mpower(A, b), when A is non-scalar, b should be a real integer scalar"},
      {square, Op::power, num(INFINITY), "In A^b and mpower(A, b), when A is non-scalar, b should be a real integer scalar"},
      {singular, Op::power, num(-1), "Attempting to compute inverse of a singular matrix"},

      {shaped({2, 2}, {2, 0, 0, 4}), Op::mldivide, column({2, 4}), "double 2 x 1: 1 1"},
      {column({1, 0}), Op::mrdivide, num(0), "double 2 x 1: inf nan"},
      {zeros({0, 3}), Op::mldivide, column({1, 2}), "double 0 x 0:"},
      {cube, Op::mrdivide, num(1), "double 2 x 2 x 2: 0 0 0 0 0 0 0 0"},
      {shaped({3, 2}, {NAN, 0, 0, 0, 0, 0}), Op::mldivide, column({1, 2, 3}), "Failed to solve A * x = b, since A is singular"},
      {singular, Op::mldivide, column({1, 2}), "Failed to solve the matrix equation A * x = b since A is singular"},
      {row({1, 2}), Op::mrdivide, singular, "Failed to solve the matrix equation x * A = b since A is singular"},
      {square, Op::mldivide, column({1, 2, 3}), "Matrix sizes mismatch | When solving A * x = b or A \\ b, A and b are expected to have same numbers of rows"},
      {row({1, 2, 3}), Op::mrdivide, square, "Matrix sizes mismatch | When solving x * A = b or b / A, A and b are expected to have same numbers of columns"},
      {cube, Op::mldivide, column({1, 2}), "Array sizes mismatch | When solving A * x = b or A \\ b, if ndim(A) > 2, b has to be a scalar"},
      {cube, Op::mrdivide, square, "Array sizes mismatch | When solving x * A = b or b / A, if ndim(b) > 2, A has to be a scalar"},
      // clang-format on
  };
  const Warn noWarning = [](std::string text) { ADD_FAILURE() << text; };
  for (const auto& [a, op, b, expected] : rows) {
    EXPECT_EQ(outcome([&] { return binary(op, a, b, noWarning); }), expected)
        << describe(a) << " op " << static_cast<int>(op) << " " << describe(b);
  }
}

TEST(Linear, ConditionAndNotFinite) {
  EXPECT_EQ(rcond(shaped({2, 2}, {1, 2, 2, 4})), 0);
  EXPECT_EQ(rcond(shaped({2, 2}, {1, 0, 0, 4})), 0.25);
  EXPECT_EQ(rcond(complexShaped({2, 2}, {{0, 1}, {}, {}, {0, 4}})), 0.25);
  EXPECT_TRUE(std::isnan(rcond(shaped({2, 2}, {NAN, 1, 1, 1}))));
  const Warn ignore = [](std::string) {};
  EXPECT_TRUE(std::isnan(mldivide(shaped({2, 2}, {NAN, 1, 1, 1}), column({1, 2}), ignore).asDouble()[0]));
  EXPECT_NO_THROW(mldivide(shaped({3, 2}, {NAN, 1, 1, 1, INFINITY, 3}), column({1, 2, 3}), ignore));
  EXPECT_NO_THROW(mldivide(shaped({2, 2}, {INFINITY, 1, 1, 1}), column({1, 2}), ignore));
}

// Sizes as rounding leaves them: a residual beside |a| * |x|, and for what has no solution the part
// of the error within the columns of a.
TEST(Linear, SolvesHardMatrices) {
  std::mt19937_64 random(31);
  const Warn ignore = [](std::string) {};
  int solved = 0, refused = 0;
  for (const auto& [name, a] : samples()) {
    if (a.isEmpty()) continue;
    SCOPED_TRACE(name);
    const NumericArray b = a.is(Kind::Complex) ? NumericArray(randomComplex(random, SizeVector(a.size().rows(), 2)))
                                               : NumericArray(randomArray(random, SizeVector(a.size().rows(), 2)));
    const bool isSquare = a.size().rows() == a.size().columns();
    NumericArray left, right, inverted;
    try {
      left = mldivide(a, b, ignore);
      right = mrdivide(adjoint(b), adjoint(a), ignore);
      inverted = isSquare ? inverse(a, ignore) : pseudoInverse(a, std::nullopt);
    } catch (const Problem&) {
      EXPECT_EQ(rcond(a), 0);
      ++refused;
      continue;
    }
    ++solved;
    const double bound = boundOf(a), size = greatestSum(a), sizeOfX = greatestSum(left);
    ASSERT_TRUE(std::isfinite(sizeOfX));
    const NumericArray error = elementwise(Op::minus, mtimes(a, left), b);
    const NumericArray transposed = elementwise(Op::minus, mtimes(right, adjoint(a)), adjoint(b));
    if (isSquare) {
      EXPECT_LE(greatestSum(error) / size, bound * sizeOfX);
      EXPECT_LE(greatestSum(transposed) / size, 3 * bound * greatestSum(right));
      EXPECT_LE(distance(mtimes(a, inverted), identity(a.size().rows())) / size, 10 * bound * greatestSum(inverted));
    } else {
      const double limit = bound * size * (size * sizeOfX + greatestSum(b));
      EXPECT_LE(greatestSum(mtimes(adjoint(a), error)), limit);
      EXPECT_LE(distance(adjoint(transposed), error), limit);
    }
  }
  EXPECT_GT(solved, 20);
  EXPECT_GT(refused, 0);
}

// The inverse of the matrix of Hilbert is known: it has whole numbers.
TEST(Linear, InverseOfHilbertMatrix) {
  const Warn ignore = [](std::string) {};
  const DoubleArray x = inverse(hilbert(4), ignore).asDouble();
  const double expected[] = {16,  -120,  240,  -140,  -120, 1200, -2700, 1680,
                             240, -2700, 6480, -4200, -140, 1680, -4200, 2800};
  for (int64_t i = 0; i < 16; ++i) EXPECT_NEAR(x[i], expected[i], 1e-8) << i;
  EXPECT_NEAR(1 / rcond(hilbert(4)), 28375, 1e-6);  // the known condition in the 1-norm
}

TEST(Linear, EuclideanNormOfMany) {
  std::mt19937_64 random(11);
  for (const int64_t n : {32, 33, 100, 5000, 70000}) {
    DoubleArray x = randomArray(random, SizeVector(1, n));
    long double sum = 0;
    for (const double element : x.values()) sum += static_cast<long double>(element) * element;
    EXPECT_DOUBLE_EQ(vectorNorm(x, 2), static_cast<double>(std::sqrt(sum))) << n;
    x.writable()[n / 2] = 1e200;  // its square is out of range
    EXPECT_DOUBLE_EQ(vectorNorm(x, 2), 1e200);
    x.writable()[0] = -kInf;
    EXPECT_EQ(vectorNorm(x, 2), kInf);
    x.writable()[1] = kNaN;
    EXPECT_TRUE(std::isnan(vectorNorm(x, 2)));
  }
}

TEST(Linear, ColumnTimesRow) {
  const DoubleArray a = DoubleArray::column(std::vector<double>(40, -0.0));
  const DoubleArray b = DoubleArray::row(std::vector<double>(30, 2));
  const DoubleArray c = mtimes(a, b).asDouble();
  EXPECT_EQ(c.size(), SizeVector(40, 30));
  for (const double element : c.values()) EXPECT_EQ(1 / element, kInf);  // a zero of the library's sign
}

TEST(Linear, SmallAndLargeProductsAgree) {
  std::mt19937_64 random(7);
  for (const int64_t n : {5, 8, 9, 20, 70}) {
    const DoubleArray a = randomArray(random, SizeVector(n, n + 1)), b = randomArray(random, SizeVector(n + 1, n));
    const NumericArray c = mtimes(a, b);
    for (int64_t i = 0; i < n; ++i) {
      double expected = 0;
      for (int64_t k = 0; k <= n; ++k) expected += a[k * n + i] * b[2 * (n + 1) + k];
      ASSERT_NEAR(c.asDouble()[2 * n + i], expected, 1e-12);
    }
  }
}

TEST(Linear, TrianglesAreSolvedWithoutFactors) {
  std::mt19937_64 random(8);
  const Warn never = [](const auto&) { FAIL() << "a warning"; };
  for (const int64_t n : {16, 45, 150}) {
    DoubleArray upper = randomArray(random, SizeVector(n, n));
    for (int64_t i = 0; i < n * n; ++i) upper.writable()[i] = i % n > i / n ? 0 : upper[i] + (i % n == i / n ? 9.0 : 0);
    const NumericArray b = randomArray(random, SizeVector(n, 3));
    for (const NumericArray& a : {NumericArray(upper), adjoint(upper)}) {
      const NumericArray x = mldivide(a, b, never);
      EXPECT_LE(distance(mtimes(a, x), b), 8 * static_cast<double>(n) * kEps * greatestSum(a) * greatestSum(x));
    }
  }
}

TEST(Linear, ProductsWithTheOwnTransposeMirrorThemselves) {
  std::mt19937_64 random(9);
  const NumericArray a = randomArray(random, SizeVector(170, 131));
  for (const bool isLeft : {true, false}) {
    const NumericArray product = mtimes(Factor{a, isLeft}, Factor{a, !isLeft});
    const NumericArray plain = isLeft ? mtimes(adjoint(a), a) : mtimes(a, adjoint(a));
    EXPECT_LE(distance(product, plain), 170 * kEps * greatestSum(a) * greatestSum(adjoint(a)));
    EXPECT_TRUE(isMirrored(product, Mirror::plain, 0));
  }
}

TEST(Lapack, FaultyCallDoesNotEndTheProcess) {
  double a[1] = {1};
  int pivots[1];
  EXPECT_LT(lapack::getrf(-1, 1, a, pivots), 0);
  EXPECT_NE(lapack::lastComplaint().find("GETRF"), std::string::npos) << lapack::lastComplaint();
}

}  // namespace
}  // namespace kelo
