#include "linear/rref.h"

#include <cmath>

#include "linear/norm.h"
#include "linear/matrix_parts.h"
#include "linear/svd.h"

namespace kelo {
namespace {

template <class T>
class Elimination {
 public:
  explicit Elimination(TypedArray<T> a)
      : a_(std::move(a)), x_(a_.writable()), m_(a_.size().rows()), n_(a_.size().columns()), factors_(size_t(m_)) {}

  Rref run(double tolerance) {
    std::vector<int64_t> pivots;
    for (int64_t column = 0, row = 0; row < m_ && column < n_; ++column) {
      const int64_t greatest = greatestFrom(row, column);
      if (magnitudeOf(column_(column)[greatest]) <= tolerance) {
        std::fill(column_(column) + row, column_(column) + m_, T{});
        continue;
      }
      eliminate(row++, column, greatest);
      pivots.push_back(column);
    }
    return {std::move(a_), std::move(pivots)};
  }

 private:
  T* column_(int64_t j) { return x_ + j * m_; }

  // The row, from `row` on, of the greatest magnitude in the column. A NaN counts as greatest, so
  // that it spreads and is not eliminated.
  int64_t greatestFrom(int64_t row, int64_t column) {
    int64_t result = row;
    for (int64_t i = row + 1; i < m_ && !std::isnan(magnitudeOf(column_(column)[result])); ++i) {
      const double best = magnitudeOf(column_(column)[result]), next = magnitudeOf(column_(column)[i]);
      if (next > best || std::isnan(next)) result = i;
    }
    return result;
  }

  // Exchanges rows, divides the pivot row and takes its multiples from all others, column by
  // column.
  void eliminate(int64_t row, int64_t column, int64_t greatest) {
    T* own = column_(column);
    std::swap(own[row], own[greatest]);
    const T pivot = own[row];
    std::copy_n(own, m_, factors_.data());
    const bool isNumber = !std::isnan(magnitudeOf(pivot));
    std::fill_n(own, m_, isNumber ? T{} : pivot);
    own[row] = isNumber ? T{1} : pivot;
    for (int64_t j = column + 1; j < n_; ++j) {
      T* x = column_(j);
      std::swap(x[row], x[greatest]);
      const T divided = x[row] / pivot;
      for (int64_t i = 0; i < m_; ++i) x[i] = x[i] - factors_[size_t(i)] * divided;
      x[row] = divided;
    }
  }

  TypedArray<T> a_;
  T* x_;
  int64_t m_, n_;
  std::vector<T> factors_;  // the pivot column, before it is reduced
};

}  // namespace

Rref rref(NumericArray a, std::optional<double> tolerance) {
  const double limit = tolerance ? *tolerance : rankTolerance(a.size(), matrixNorm(a, INFINITY));
  return inCommonKind([limit](auto matrix) { return Elimination(std::move(matrix)).run(limit); }, std::move(a));
}

}  // namespace kelo
