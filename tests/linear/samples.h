// Matrices that are hard in one way or another, of every shape, and what rounding may come to on
// them.
#pragma once

#include <gtest/gtest.h>

#include "linear/linear.h"
#include "linear/norm.h"
#include "linear/matrix_parts.h"
#include "values/arrays.h"

namespace kelo::testing {

inline constexpr double kEps = 2.220446049250313e-16;

inline NumericArray adjoint(const NumericArray& a) { return *transpose(a, true).numeric(); }
inline NumericArray identity(int64_t n) { return identityMatrix<double>(n, n); }
inline double greatestSum(const NumericArray& a) { return matrixNorm(a, 1); }
inline double distance(NumericArray a, const NumericArray& b) {
  EXPECT_EQ(a.size(), b.size());
  return greatestSum(elementwise(BinaryOp::minus, std::move(a), b));
}

struct Sample {
  std::string name;
  NumericArray matrix;
};

inline DoubleArray hilbert(int64_t n) {
  DoubleArray a(SizeVector(n, n), 0.0);
  for (int64_t i = 0; i < n * n; ++i) a.writable()[i] = 1.0 / static_cast<double>(i / n + i % n + 1);
  return a;
}

// A block with an eigenvalue of which there is one vector only.
inline DoubleArray jordan(int64_t n) {
  DoubleArray a = identityMatrix<double>(n, n);
  for (int64_t k = 1; k < n; ++k) a.writable()[k * n + k - 1] = 1;
  return a;
}

inline std::vector<Sample> samples() {
  std::mt19937_64 random(20);
  std::vector<Sample> all = {{"hilbert", hilbert(12)},
                             {"jordan", jordan(9)},
                             {"rotation", shaped({3, 3}, {0, 1, 0, -1, 0, 0, 0, 0, 2})},
                             {"zeros", zeros({4, 4})},
                             {"singular", shaped({3, 3}, {1, 4, 7, 2, 5, 8, 3, 6, 9})},
                             {"scalar", num(-3)},
                             {"complex scalar", complex(0, 2)},
                             {"tiny", elementwise(BinaryOp::dmult, num(1e-300), hilbert(5))},
                             {"huge", elementwise(BinaryOp::dmult, num(1e300), hilbert(5))},
                             {"empty", zeros({0, 0})},
                             {"no rows", zeros({0, 3})},
                             {"no columns", zeros({3, 0})}};
  const int64_t sizes[][2] = {{7, 7}, {40, 40}, {1, 6}, {6, 1}, {30, 4}, {4, 30}, {90, 70}, {70, 90}, {130, 130}};
  for (const auto& [m, n] : sizes) {
    const std::string size = std::to_string(m) + " x " + std::to_string(n);
    all.push_back({"random " + size, randomArray(random, SizeVector(m, n))});
    all.push_back({"complex " + size, randomComplex(random, SizeVector(m, n))});
    const NumericArray thin = randomArray(random, SizeVector(m, 1)), wide = randomComplex(random, SizeVector(1, n));
    all.push_back({"of rank 1 " + size, mtimes(thin, wide)});
  }
  return all;
}

// What rounding may come to in a matrix of this size.
inline double boundOf(const NumericArray& a) {
  const auto n = static_cast<double>(a.size().rows() + a.size().columns());
  return 20 * n * kEps;
}

}  // namespace kelo::testing
