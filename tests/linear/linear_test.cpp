// Matrix operators: failures and warnings as tables, residuals on random and hard matrices, real and complex.
#include "linear/linear.h"

#include <gtest/gtest.h>

#include <cmath>

#include "linear/lapack.h"
#include "linear/samples.h"
#include "linear/svd.h"

namespace kelo {
namespace {

using namespace kelo::testing;
using Op = BinaryOp;

TEST(Linear, Table) {
  const NumericArray square = shaped({2, 2}, {1, 3, 2, 4});  // [1 2; 3 4]
  const NumericArray singular = shaped({2, 2}, {1, 2, 2, 4});
  const NumericArray cube = zeros({2, 2, 2});
  const struct {
    NumericArray a;
    Op op;
    NumericArray b;
    const char* expected;
  } rows[] = {
      {square, Op::mult, column({1, 1}), "double 2 x 1: 3 7"},
      {row({1, 1}), Op::mult, square, "double 1 x 2: 4 6"},
      {square, Op::mult, whole(2), "double 2 x 2: 2 6 4 8"},
      {whole(3), Op::mult, whole(4), "int 1 x 1: 12"},
      {text("ab"), Op::mult, column({1, 1}), "double 1 x 1: 195"},
      {zeros({2, 0}), Op::mult, zeros({0, 2}), "double 2 x 2: 0 0 0 0"},
      {complexShaped({1, 2}, {{1, 0}, {2, 0}}), Op::mult, column({1, 1}), "double 1 x 1: 3"},
      {complexShaped({1, 2}, {{0, 1}, {2, 0}}), Op::mult, column({1, 1}), "complex 1 x 1: 2,1"},
      {cube, Op::mult, square,
       "Invalid operands | In A * B or mtimes(A, B), A and B are expected to be matrices (2D arrays)"},
      {square, Op::mult, row({1, 2}),
       "Invalid operands | In A * B or mtimes(A, B), size(A, 2) == size(B, 1) should hold"},

      {square, Op::power, num(2), "double 2 x 2: 7 15 10 22"},
      {square, Op::power, num(0), "double 2 x 2: 1 0 0 1"},
      {shaped({2, 2}, {2, 0, 0, 4}), Op::power, num(-2), "double 2 x 2: 0.25 0 0 0.0625"},
      {num(-2), Op::power, num(2), "double 1 x 1: 4"},
      {square, Op::power, row({1, 2}), "In A^b and mpower(A, b), b should be scalar"},
      {row({1, 2}), Op::power, num(2), "In A^b and mpower(A, b), A is expected to be a square matrix or scalar"},
      {square, Op::power, num(2.5), "In A^b and mpower(A, b), when A is non-scalar, b should be a real integer scalar"},
      {square, Op::power, num(INFINITY),
       "In A^b and mpower(A, b), when A is non-scalar, b should be a real integer scalar"},
      {singular, Op::power, num(-1), "Attempting to compute inverse of a singular matrix"},

      {shaped({2, 2}, {2, 0, 0, 4}), Op::mldivide, column({2, 4}), "double 2 x 1: 1 1"},
      {row({2, 4}), Op::mrdivide, shaped({2, 2}, {2, 0, 0, 4}), "double 1 x 2: 1 1"},
      {num(2), Op::mldivide, row({2, 4}), "double 1 x 2: 1 2"},
      {column({1, 0}), Op::mrdivide, num(0), "double 2 x 1: inf nan"},
      {zeros({0, 3}), Op::mldivide, column({1, 2}), "double 0 x 0:"},
      {cube, Op::mrdivide, num(1), "double 2 x 2 x 2: 0 0 0 0 0 0 0 0"},
      {shaped({3, 2}, {NAN, 0, 0, 0, 0, 0}), Op::mldivide, column({1, 2, 3}),
       "Failed to solve A * x = b, since A is singular"},
      {singular, Op::mldivide, column({1, 2}), "Failed to solve the matrix equation A * x = b since A is singular"},
      {row({1, 2}), Op::mrdivide, singular, "Failed to solve the matrix equation x * A = b since A is singular"},
      {square, Op::mldivide, column({1, 2, 3}),
       "Matrix sizes mismatch | When solving A * x = b or A \\ b, A and b are expected to have same numbers of rows"},
      {row({1, 2, 3}), Op::mrdivide, square,
       "Matrix sizes mismatch | When solving x * A = b or b / A, A and b are expected to have same numbers of columns"},
      {cube, Op::mldivide, column({1, 2}),
       "Array sizes mismatch | When solving A * x = b or A \\ b, if ndim(A) > 2, b has to be a scalar"},
      {cube, Op::mrdivide, square,
       "Array sizes mismatch | When solving x * A = b or b / A, if ndim(b) > 2, A has to be a scalar"},
  };
  const Warn noWarning = [](std::string text) { ADD_FAILURE() << text; };
  for (const auto& r : rows) {
    EXPECT_EQ(outcome([&] { return binary(r.op, r.a, r.b, noWarning); }), r.expected)
        << describe(r.a) << " op " << static_cast<int>(r.op) << " " << describe(r.b);
  }
}

// The warnings that an operation gives.
std::string warningOf(const std::function<void(const Warn&)>& operation) {
  std::string all;
  operation([&](std::string text) { all += text; });
  return all;
}

TEST(Linear, Warnings) {
  const NumericArray near = shaped({2, 2}, {1, 1, 1, 1 + 1e-15});
  const NumericArray deficient = shaped({3, 2}, {1, 2, 3, 2, 4, 6});
  const std::string left = warningOf([&](const Warn& warn) { mldivide(near, column({1, 2}), warn); });
  EXPECT_EQ(left.find("A is nearly singular, or singular, when solving A * x = b with rcond = "), 0u) << left;
  EXPECT_NE(left.find("e-16. Results may be inaccurate"), std::string::npos) << left;
  const std::string right = warningOf([&](const Warn& warn) { mrdivide(row({1, 2}), near, warn); });
  EXPECT_NE(right.find("when solving x * A = b with rcond"), std::string::npos) << right;
  const std::string inverted = warningOf([&](const Warn& warn) { inverse(near, warn); });
  EXPECT_EQ(inverted.find("When computing A^(-1), A is nearly singular with rcond = "), 0u) << inverted;
  NumericArray x;
  const std::string rank = warningOf([&](const Warn& warn) { x = mldivide(deficient, column({1, 2, 3}), warn); });
  EXPECT_EQ(rank.find("A is rank deficient when solving A * x = b. A has rank 1 with tolerance "), 0u) << rank;
  EXPECT_NEAR(x.asDouble()[0] + 2 * x.asDouble()[1], 1, 1e-14);
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

double greatest(const NumericArray& a) {
  double result = 0;
  const ComplexDoubleArray elements = a.toComplexArray();
  for (const ComplexDouble z : elements.values()) result = std::max(result, z.magnitude());
  return result;
}

NumericArray conjugated(const NumericArray& a) { return *transpose(a, true).numeric(); }

TEST(Linear, SolveAndMultiply) {
  const auto seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937_64 random(seed);
  const Warn ignore = [](std::string) {};
  for (int round = 0; round < 60; ++round) {
    const auto m = static_cast<int64_t>(2 + random() % 40), n = static_cast<int64_t>(2 + random() % 40);
    const auto make = [&](int64_t rows, int64_t columns) {
      const SizeVector size(rows, columns);
      return round % 2 ? NumericArray(randomArray(random, size)) : NumericArray(randomComplex(random, size));
    };
    const NumericArray a = make(n, n), b = make(n, 3), tall = make(m + n, n);
    const auto residual = [&](NumericArray x, const NumericArray& y) {
      return greatest(elementwise(Op::minus, std::move(x), y));
    };
    const double bound = 1e-13 / std::max(rcond(a), 1e-12);
    EXPECT_LT(residual(mtimes(a, mldivide(a, b, ignore)), b), bound);
    EXPECT_LT(residual(mtimes(mrdivide(conjugated(b), a, ignore), a), conjugated(b)), bound);
    EXPECT_LT(residual(mtimes(a, inverse(a, ignore)), mpower(a, num(0), ignore)), bound);
    EXPECT_LT(residual(mpower(a, num(3), ignore), mtimes(a, mtimes(a, a))),
              1e-9 * std::pow(greatest(a) * double(n), 3));
    // Least squares: the error is orthogonal to the columns.
    const NumericArray target = make(m + n, 2);
    const NumericArray error = elementwise(Op::minus, mtimes(tall, mldivide(tall, target, ignore)), target);
    EXPECT_LT(greatest(mtimes(conjugated(tall), error)), 1e-11);
    const NumericArray wide = conjugated(tall);
    const NumericArray exact = make(n, 1);
    EXPECT_LT(residual(mtimes(wide, mldivide(wide, exact, ignore)), exact), 1e-10);
  }
}

// Sizes as rounding leaves them: a residual beside |a| * |x|, and for what has no solution the part of the error within
// the columns of a.
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

TEST(Lapack, FaultyCallDoesNotEndTheProcess) {
  double a[1] = {1};
  int pivots[1];
  EXPECT_LT(lapack::getrf(-1, 1, a, pivots), 0);
  EXPECT_NE(lapack::lastComplaint().find("GETRF"), std::string::npos) << lapack::lastComplaint();
}

}  // namespace
}  // namespace kelo
