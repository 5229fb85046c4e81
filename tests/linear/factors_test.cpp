// Factorisations: residuals and orthogonality on random and hard matrices, real and complex, of
// every shape; and the functions that follow from them against identities and known values.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "linear/eigen.h"
#include "linear/linear.h"
#include "linear/lu.h"
#include "linear/matrix_structure.h"
#include "linear/norm.h"
#include "linear/qr.h"
#include "linear/matrix_parts.h"
#include "linear/rref.h"
#include "linear/samples.h"
#include "linear/svd.h"

namespace kelo {
namespace {

using namespace kelo::testing;

void expectOrthogonal(const NumericArray& q) {
  const int64_t n = q.size().columns();
  EXPECT_LE(distance(mtimes(adjoint(q), q), identity(n)), 20 * static_cast<double>(q.size().rows() + 1) * kEps);
}

TEST(Factors, Lu) {
  for (const auto& [name, a] : samples()) {
    SCOPED_TRACE(name);
    const Lu f = lu(a);
    const double bound = boundOf(a) * greatestSum(a);
    EXPECT_LE(distance(mtimes(f.lower(), f.upper()), mtimes(f.permutationMatrix(), a)), bound);
    EXPECT_LE(distance(mtimes(f.permutedLower(), f.upper()), a), bound);
    EXPECT_EQ(bandwidthOf(f.lower()).upper, 0);
    EXPECT_EQ(bandwidthOf(f.upper()).lower, 0);
    EXPECT_LE(matrixNorm(f.lower().toComplexArray(), INFINITY), std::sqrt(2) * static_cast<double>(a.size().columns()))
        << "the greatest element of a column is its pivot";
  }
}

TEST(Factors, Qr) {
  for (const auto& [name, a] : samples()) {
    for (const QrSize size : {QrSize::full, QrSize::economy}) {
      SCOPED_TRACE(name + (size == QrSize::full ? ", full" : ", economy"));
      const double bound = boundOf(a) * greatestSum(a);
      const Qr plain = qr(a, size);
      expectOrthogonal(plain.q);
      EXPECT_LE(distance(mtimes(plain.q, plain.r), a), bound);
      EXPECT_EQ(bandwidthOf(plain.r).lower, 0);
      EXPECT_LE(distance(triangleOfQr(a, size), plain.r), bound);

      const Qr pivoted = qrWithExchanges(a, size);
      expectOrthogonal(pivoted.q);
      EXPECT_LE(distance(mtimes(pivoted.q, pivoted.r), mtimes(a, pivoted.permutationMatrix())), bound);
      const ComplexDoubleArray r = pivoted.r.toComplexArray();
      for (int64_t k = 1; k < std::min(r.size().rows(), r.size().columns()); ++k) {
        const int64_t step = r.size().rows() + 1;
        EXPECT_LE(r[k * step].magnitude(), r[(k - 1) * step].magnitude() * (1 + 1e-10) + bound);
      }
    }
  }
}

TEST(Factors, SingularValues) {
  for (const auto& [name, a] : samples()) {
    for (const SvdSize size : {SvdSize::full, SvdSize::economy}) {
      SCOPED_TRACE(name + (size == SvdSize::full ? ", full" : ", economy"));
      const Svd f = svd(a, size);
      expectOrthogonal(f.u);
      expectOrthogonal(f.v);
      const double bound = boundOf(a) * greatestSum(a);
      EXPECT_LE(distance(mtimes(mtimes(f.u, f.s), adjoint(f.v)), a), bound);
      const DoubleArray s = singularValues(a, "");
      for (int64_t k = 0; k < s.numElements(); ++k) {
        EXPECT_NEAR(s[k], f.s[k * (f.s.size().rows() + 1)], bound);
        if (k > 0) {
          EXPECT_GE(s[k - 1], s[k]);
        }
      }
    }
  }
}

TEST(Factors, PseudoInverse) {
  for (const auto& [name, a] : samples()) {
    SCOPED_TRACE(name);
    const NumericArray x = pseudoInverse(a, std::nullopt);
    // The conditions of Penrose, as far as the small singular values let them hold.
    const double bound = 1e3 * boundOf(a);
    const double scale = greatestSum(a) * greatestSum(x);
    EXPECT_LE(distance(mtimes(mtimes(a, x), a), a), bound * scale * greatestSum(a));
    EXPECT_LE(distance(mtimes(mtimes(x, a), x), x), bound * scale * greatestSum(x));
    EXPECT_LE(distance(adjoint(mtimes(a, x)), mtimes(a, x)), bound * scale);
    EXPECT_LE(distance(adjoint(mtimes(x, a)), mtimes(x, a)), bound * scale);
  }
}

// How far an eigenvalue of one list is at most from the nearest one of the other: the routines for
// values alone and for values with vectors may find them in another order.
double distanceOfSpectra(const NumericArray& a, const NumericArray& b) {
  const ComplexDoubleArray x = a.toComplexArray(), y = b.toComplexArray();
  double farthest = 0;
  for (const ComplexDouble& value : x.values()) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const ComplexDouble& other : y.values()) {
      nearest = std::min(nearest, (value - other).magnitude());
    }
    farthest = std::max(farthest, nearest);
  }
  return farthest;
}

TEST(Factors, Eigen) {
  for (const auto& [name, a] : samples()) {
    if (a.size().rows() != a.size().columns()) continue;
    SCOPED_TRACE(name);
    const Eigen f = eigen(a, EigenVectors::both);
    const NumericArray d = f.diagonal();
    const double bound = 10 * boundOf(a) * greatestSum(a);
    EXPECT_LE(distance(mtimes(a, f.right), mtimes(f.right, d)), bound);
    EXPECT_LE(distance(mtimes(adjoint(f.left), a), mtimes(d, adjoint(f.left))), bound);
    const Eigen alone = eigen(a, EigenVectors::none);
    EXPECT_LE(distanceOfSpectra(alone.values, f.values), 1e10 * bound);  // defective ones are sensitive
    EXPECT_LE(distanceOfSpectra(f.values, alone.values), 1e10 * bound);
    const ComplexDoubleArray v = f.right.toComplexArray();
    for (int64_t k = 0; k < a.size().rows(); ++k) {
      const auto column =
          ComplexDoubleArray::column(v.values().subspan(size_t(k * a.size().rows()), size_t(a.size().rows())));
      EXPECT_NEAR(vectorNorm(column, 2), 1, 1e-14);
    }
  }
  EXPECT_EQ(describe(eigen(shaped({2, 2}, {0, -1, 1, 0}), EigenVectors::none).values), "complex 2 x 1: 0,1 0,-1");
  EXPECT_EQ(describe(eigen(shaped({2, 2}, {3, 0, 0, 2}), EigenVectors::right).right), "double 2 x 2: 1 0 0 1");
  EXPECT_THROW(eigen(row({1, 2}), EigenVectors::none), Problem);
}

TEST(Factors, Determinant) {
  std::mt19937_64 random(4);
  const DoubleArray a = randomArray(random, SizeVector(9, 9)), b = randomArray(random, SizeVector(9, 9));
  const auto of = [](const NumericArray& x) { return determinant(x).asDouble().scalar(); };
  EXPECT_NEAR(of(mtimes(a, b)) / (of(a) * of(b)), 1, 1e-12);
  EXPECT_NEAR(of(*transpose(a, false).numeric()) / of(a), 1, 1e-12);
  EXPECT_NEAR(of(hilbert(4)) * 6048000, 1, 1e-11);  // 1 / 6048000: the known determinant
  EXPECT_EQ(describe(determinant(zeros({0, 0}))), "double 1 x 1: 1");
  EXPECT_EQ(describe(determinant(shaped({2, 2}, {0, 1, 1, 0}))), "double 1 x 1: -1");
  EXPECT_EQ(describe(determinant(shaped({2, 2}, {1, 2, 2, 4}))), "double 1 x 1: 0");
  EXPECT_EQ(describe(determinant(complexShaped({2, 2}, {{0, 1}, {}, {}, {3, 0}}))), "complex 1 x 1: 0,3");
}

TEST(Factors, Rref) {
  for (const auto& [name, a] : samples()) {
    SCOPED_TRACE(name);
    const Rref f = rref(a, std::nullopt);
    const DoubleArray s = singularValues(a, "");
    const double limit = s.isEmpty() ? 0 : rankTolerance(a.size(), s[0]);
    const auto rank = std::count_if(s.values().begin(), s.values().end(), [limit](double x) { return x > limit; });
    if (name != "hilbert") {  // whose rank is a matter of the measure
      EXPECT_EQ(static_cast<int64_t>(f.pivots.size()), rank);
    }
    const ComplexDoubleArray reduced = f.reduced.toComplexArray();
    const int64_t m = a.size().rows();
    for (size_t k = 0; k < f.pivots.size(); ++k) {
      for (int64_t i = 0; i < m; ++i)
        EXPECT_EQ(reduced[f.pivots[k] * m + i], ComplexDouble{i == int64_t(k) ? 1.0 : 0.0});
    }
  }
  EXPECT_LE(
      distance(rref(shaped({2, 3}, {1, 3, 2, 4, 5, 6}), std::nullopt).reduced, shaped({2, 3}, {1, 0, 0, 1, -4, 4.5})),
      1e-14);
}

TEST(Factors, NotFiniteComesToAnEnd) {
  for (const int64_t n : {1, 2, 3, 17, 100}) {
    for (const double bad : {NAN, INFINITY, -INFINITY}) {
      NumericArray a = DoubleArray(SizeVector(n, n), bad);
      EXPECT_TRUE(std::isnan(determinant(a).asDouble().scalar()) || n == 1) << n;
      lu(a);
      qr(a, QrSize::full);
      qrWithExchanges(a, QrSize::full);
      rref(a, std::nullopt);
      DoubleArray one = hilbert(n);
      one.writable()[n / 2] = bad;
      lu(one);
      qrWithExchanges(one, QrSize::full);
      EXPECT_EQ(std::isnan(matrixNorm(one, 2)), std::isnan(bad));
    }
  }
}

TEST(Norms, Table) {
  const NumericArray v = column({3, 0, -4}), z = complexShaped({1, 2}, {{3, 4}, {0, -12}});
  const struct {
    NumericArray x;
    double p;
    double expected;
  } vectors[] = {
      // clang-format off
      {v, 2, 5},                          {v, 1, 7},                          {v, INFINITY, 4},
      {v, -INFINITY, 0},                  {v, 3, std::cbrt(91.0)},            {z, 2, 13},
      {z, 1, 17},                         {z, INFINITY, 12},                  {z, -INFINITY, 5},
      {column({1, 4}), 0.5, 9},           {row({}), 2, 0},                    {row({INFINITY, 1}), 2, INFINITY},
      {row({INFINITY, 1}), -INFINITY, 1}, {row({3e200, 4e200}), 2, 5e200},    {row({3e-200, 4e-200}), 2, 5e-200},
      // clang-format on
  };
  for (const auto& r : vectors) {
    EXPECT_DOUBLE_EQ(vectorNorm(r.x, r.p), r.expected) << describe(r.x) << " p " << r.p;
  }
  EXPECT_TRUE(std::isnan(vectorNorm(row({NAN, 1}), INFINITY)));
  const NumericArray a = shaped({2, 3}, {1, -4, 2, 5, -3, 6});
  EXPECT_EQ(matrixNorm(a, 1), 9);
  EXPECT_EQ(matrixNorm(a, INFINITY), 15);
  EXPECT_NEAR(matrixNorm(shaped({2, 2}, {1, 3, 2, 4}), 2), std::sqrt(15 + std::sqrt(221.0)), 1e-14);
}

TEST(MatrixStructure, BandAndMirror) {
  const auto band = [](const NumericArray& a) {
    const Bandwidth b = bandwidthOf(a);
    return std::to_string(b.lower) + " " + std::to_string(b.upper);
  };
  EXPECT_EQ(band(shaped({4, 2}, {1, 0, 5, 0, 0, 0, 0, 0})), "2 0");
  EXPECT_EQ(band(shaped({2, 4}, {1, 0, 0, 1, 0, 0, 0, 7})), "0 2");
  EXPECT_EQ(band(shaped({2, 2}, {0, NAN, -0.0, 0})), "1 0");
  EXPECT_EQ(band(zeros({0, 3})), "0 0");
  std::mt19937_64 random(11);
  const NumericArray a = randomComplex(random, SizeVector(70, 70));
  const NumericArray hermitian = mtimes(adjoint(a), a);
  DoubleArray spoilt = elementwise(BinaryOp::plus, identity(70), num(1)).toDoubleArray();
  EXPECT_TRUE(isMirrored(spoilt, Mirror::plain, 0));
  spoilt.writable()[69 * 70 + 3] += 1e-6;
  EXPECT_FALSE(isMirrored(spoilt, Mirror::plain, 0));
  EXPECT_TRUE(isMirrored(spoilt, Mirror::plain, 2e-6));
  EXPECT_TRUE(isMirrored(hermitian, Mirror::conjugated, 1e-12));
  EXPECT_FALSE(isMirrored(hermitian, Mirror::plain, 1e-12));
  EXPECT_FALSE(isMirrored(num(NAN), Mirror::plain, 1));
  EXPECT_FALSE(isMirrored(complex(1, 1), Mirror::conjugated, 0));
  EXPECT_TRUE(isMirrored(zeros({0, 0}), Mirror::plain, 0));
  EXPECT_FALSE(isMirrored(row({1, 1}), Mirror::plain, 0));
}

}  // namespace
}  // namespace kelo
