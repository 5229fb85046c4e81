// Division of matrices. A square system goes through LU with row exchanges, any other through QR
// with column exchanges, which gives a least squares solution with as few nonzero rows as the rank
// says. `b / a` is the transposed problem.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "linear/lapack.h"
#include "linear/linear.h"
#include "linear/rcond.h"
#include "linear/matrix_parts.h"
#include "linear/triangle_kernels.h"
#include "linear/triangles.h"
#include "messages/catalogue/operators.h"
#include "messages/message.h"

namespace kelo {
namespace {

constexpr double kEps = std::numeric_limits<double>::epsilon();

size_t at(int64_t i) { return static_cast<size_t>(i); }

void checkInfo(int info, const char* failure) {
  if (info < 0) throw problem(failure);
}

// Smaller systems are as quick in the general way.
constexpr int kLeastTriangle = 16;

// Whether all elements below the diagonal are 0 (or above it), and none on it.
bool isTriangle(int n, const double* a, bool isUpper) {
  const auto isZero = [](double x) { return x == 0; };
  for (int64_t j = 0; j < n; ++j) {
    const double* column = a + j * n;
    if (column[j] == 0) return false;
    if (!(isUpper ? std::all_of(column + j + 1, column + n, isZero) : std::all_of(column, column + j, isZero))) {
      return false;
    }
  }
  return true;
}

// An upper triangle is its own factor. A lower one is an upper one whose equations and unknowns are
// counted from the end. Absent where `a` is neither, or its condition is a matter of a warning.
std::optional<Solution> solveTriangle(DoubleArray& a, DoubleArray& b, double norm) {
  const int n = checkedInt32(a.size().rows());
  if (n < kLeastTriangle) return std::nullopt;
  const bool isLower = !isTriangle(n, a.data(), /*isUpper*/ true);
  if (isLower && !isTriangle(n, a.data(), /*isUpper*/ false)) return std::nullopt;
  DoubleArray upper = a;
  if (isLower) std::reverse(upper.writable(), upper.writable() + upper.numElements());
  const double* u = upper.data();
  if (!triangles::areFinite(u, upper.numElements()) || !isRcondFarAbove(norm * kEps, n, u, norm)) return std::nullopt;
  const int columns = checkedInt32(b.size().columns());
  double* x = b.writable();
  const auto turn = [&] {
    for (int64_t j = 0; isLower && j < columns; ++j) std::reverse(x + j * n, x + (j + 1) * n);
  };
  turn();
  triangles::solveUpper(n, columns, u, n, x, n);
  turn();
  Solution solution;
  solution.x = std::move(b);
  return solution;
}
std::optional<Solution> solveTriangle(ComplexDoubleArray&, ComplexDoubleArray&, double) { return std::nullopt; }

// A norm that is good enough to see that a condition is far from a warning. That of complex numbers
// differs from the library's in its last bits, is not normal where squares pass the range, and takes
// a tenth of its time.
double quickNorm(int n, const double* a) { return lapack::norm1(n, n, a); }
double quickNorm(int n, const ComplexDouble* a) { return triangles::quickNorm1(n, n, a); }

template <class T>
Solution solveSquare(TypedArray<T> a, TypedArray<T> b, Quality quality) {
  const int n = checkedInt32(a.size().rows());
  const int columns = checkedInt32(b.size().columns());
  Solution solution;
  std::vector<int> pivots(at(n));
  const double quick = quickNorm(n, a.data());
  if (quality == Quality::warnings) {
    if (auto solution = solveTriangle(a, b, quick)) return std::move(*solution);
  }
  TypedArray<T> given;  // before it becomes its factors, if its norm may be asked for once more
  if constexpr (std::is_same_v<T, ComplexDouble>) given = a;
  const int info = lapack::gesv(n, columns, a.writable(), pivots.data(), b.writable());
  checkInfo(info, text::kUnexpectedError);
  if (info > 0) {
    solution.rcond = 0;
    return solution;
  }
  solution.x = std::move(b);
  // NOTE: intended: the threshold grows with the norm of a, and not with its order.
  if (quality == Quality::warnings && std::isnormal(quick) && isRcondFarAbove(quick * kEps, n, a.data(), quick)) {
    return solution;
  }
  const double norm = given.isEmpty() ? quick : lapack::norm1(n, n, given.data());
  const double threshold = norm * kEps;
  solution.rcond = rcondOfFactors(n, a.data(), norm);
  solution.isNearlySingular = solution.rcond < threshold;
  return solution;
}

template <class T>
Solution solveByColumns(TypedArray<T> a, TypedArray<T> b) {
  const int m = checkedInt32(a.size().rows());
  const int n = checkedInt32(a.size().columns());
  const int columns = checkedInt32(b.size().columns());
  const int diagonal = std::min(m, n);
  Solution solution;
  std::vector<int> permutation(at(n));
  std::vector<T> tau(at(diagonal));
  checkInfo(lapack::geqp3(m, n, a.writable(), permutation.data(), tau.data()), text::kLeastSquaresFailed);
  const T* r = a.data();
  solution.tolerance = std::max(m, n) * kEps * magnitudeOf(r[0]);
  int rank = 0;
  while (rank < diagonal && !(magnitudeOf(r[at(rank) * at(m) + at(rank)]) <= solution.tolerance)) ++rank;
  solution.rank = rank;
  checkInfo(lapack::multiplyByQ(/*conjugated*/ true, m, columns, diagonal, r, tau.data(), b.writable(), m),
            text::kLeastSquaresFailed);
  const int info = lapack::trtrs(rank, columns, r, m, b.writable(), m);
  checkInfo(info, text::kLeastSquaresFailed);
  // The tolerance was NaN, or so small that it became 0.
  if (info > 0) throw problem(text::kLeastSquaresSingular);
  TypedArray<T> x(SizeVector(n, columns), T{});
  T* out = x.writable();
  for (int64_t j = 0; j < columns; ++j) {
    for (int64_t k = 0; k < rank; ++k) out[j * n + permutation[at(k)] - 1] = b.data()[j * m + k];
  }
  solution.x = std::move(x);
  return solution;
}

NumericArray solved(const NumericArray& a, const NumericArray& b, const char* equation, const Warn& warn) {
  Solution solution = solve(a, b, Quality::warnings);
  report(solution, a.size(), equation, warn);
  return std::move(*solution.x);
}

// The words of one of the two divisions.
struct Division {
  const char* beginning;
  const char* sameNumbers;
  const char* equation;
};
constexpr Division kLeft{text::kLeftDivision, text::kSameNumbersOfRows, text::kLeftEquation};
constexpr Division kRight{text::kRightDivision, text::kSameNumbersOfColumns, text::kRightEquation};

[[noreturn]] void mismatch(const char* reason, const Division& division, const char* rest) {
  throw problem(reason, std::string(division.beginning) + rest);
}

// Whether the division is element-wise; throws when it is none at all.
bool isElementwise(const NumericArray& a, const NumericArray& b, int64_t dimension, const Division& division) {
  if (a.isScalar()) return true;
  if (!a.size().isMatrix()) {
    if (b.isScalar()) return true;
    mismatch(text::kArraySizesMismatch, division, text::kManyDimensionsOfA);
  }
  if (!b.size().isMatrix()) mismatch(text::kArraySizesMismatch, division, text::kManyDimensionsOfB);
  if (a.size().dimensionLength(dimension) != b.size().dimensionLength(dimension)) {
    mismatch(text::kMatrixSizesMismatch, division, division.sameNumbers);
  }
  return false;
}

NumericArray flipped(NumericArray a) { return std::move(*transpose(std::move(a), /*conjugate*/ false).numeric()); }

}  // namespace

Solution solve(const NumericArray& a, const NumericArray& b, Quality quality) {
  if (a.size().rows() != b.size().rows()) throw problem(text::kSolveSizes);
  const bool isSquare = a.size().rows() == a.size().columns();
  if (!isSquare) return solveLeastSquares(a, b);
  return inCommonKind([=](auto x, auto y) { return solveSquare(std::move(x), std::move(y), quality); }, a, b);
}

Solution solveLeastSquares(const NumericArray& a, const NumericArray& b) {
  return inCommonKind([](auto x, auto y) { return solveByColumns(std::move(x), std::move(y)); }, a, b);
}

void report(const Solution& solution, const SizeVector& size, const char* equation, const Warn& warn) {
  if (!solution.x) throw problem(text::solveSingular(equation));
  if (solution.isNearlySingular) warn(text::solveNearlySingular(equation, solution.rcond));
  if (size.rows() != size.columns() && solution.rank < std::min(size.rows(), size.columns())) {
    warn(text::solveRankDeficient(equation, solution.rank, solution.tolerance));
  }
}

NumericArray mldivide(NumericArray a, NumericArray b, const Warn& warn) {
  a = charsToNumbers(std::move(a));
  b = charsToNumbers(std::move(b));
  if (a.isEmpty() || b.isEmpty()) return NumericArray();
  if (isElementwise(a, b, 1, kLeft)) return elementwise(BinaryOp::ldivide, std::move(a), std::move(b));
  return solved(a, b, kLeft.equation, warn);
}

NumericArray mrdivide(NumericArray b, NumericArray a, const Warn& warn) {
  a = charsToNumbers(std::move(a));
  b = charsToNumbers(std::move(b));
  if (a.isEmpty() || b.isEmpty()) return NumericArray();
  if (isElementwise(a, b, 2, kRight)) return elementwise(BinaryOp::rdivide, std::move(b), std::move(a));
  return flipped(solved(flipped(std::move(a)), flipped(std::move(b)), kRight.equation, warn));
}

}  // namespace kelo
