// Diagonals and triangles of matrices. Diagonal k lies k places above the main one.
#include <algorithm>

#include "builtins/arrays/handlers.h"
#include "interpreter/reader.h"
#include "messages/fatal_fault.h"
#include "values/element_view.h"

namespace kelo::builtins::arrays {
namespace {

const NumericArray& numericMatrix(const Call& call, const char* predicate) {
  const Wording words{call.count() == 1 ? "A" : "A, k", "A", predicate};
  const NumericArray& array = read::numeric(call, 0, words);
  if (!array.size().isMatrix()) throw words.complaint(call);
  return array;
}

int64_t diagonalArgument(const Call& call) {
  return call.count() == 1 ? 0 : read::integer(call, 1, {"A, k", "k", predicate::kFiniteInteger});
}

/// A square matrix with a vector on diagonal k.
template <class T>
NodeValue matrixFromDiagonal(const TypedArray<T>& vector, int64_t k) {
  const int64_t side = checkedAdd(vector.numElements(), std::abs(k));
  TypedArray<T> result(SizeVector(side, side), T{});
  T* out = result.writable() + (k > 0 ? k * side : -k);
  for (int64_t i = 0; i < vector.numElements(); ++i) out[i * (side + 1)] = vector[i];
  return result;
}

/// Diagonal k of a matrix as a column; without elements beyond the corners.
NodeValue diagonalOf(const NumericArray& matrix, int64_t k) {
  const int64_t rows = matrix.size().rows();
  const int64_t columns = matrix.size().columns();
  const bool outside = k >= columns || -k >= rows;
  const int64_t length = outside ? 0 : k > 0 ? std::min(rows, columns - k) : std::min(rows + k, columns);
  const int64_t first = outside ? 0 : k > 0 ? k * rows : -k;
  return viewed(matrix, SizeVector(length, 1), {{length, rows + 1}}, first);
}

}  // namespace

NodeValue diag(Call& call) {
  const NumericArray& array = numericMatrix(call, predicate::kNumericMatrix);
  const int64_t k = diagonalArgument(call);
  if (array.isEmpty() && !array.size().isVector() && array.size().rows() == array.size().columns()) {
    return array.emptyLike();
  }
  if (!array.size().isVector()) return diagonalOf(array, k);
  return array.visit([k](const auto& vector) { return matrixFromDiagonal(vector, k); });
}

namespace {

template <class T>
NodeValue triangleOf(TypedArray<T> matrix, Triangle triangle, int64_t k) {
  const int64_t rows = matrix.size().rows();
  const int64_t columns = matrix.size().columns();
  T* column = matrix.writable();
  for (int64_t j = 0; j < columns; ++j, column += rows) {
    // The diagonal is met at row j - k. Below it, k <= -rows and k >= columns are as good as any
    // beyond.
    const int64_t diagonal = j - std::clamp(k, -rows - 1, columns + 1);
    if (triangle == Triangle::tril) std::fill_n(column, std::clamp<int64_t>(diagonal, 0, rows), T{});
    else std::fill(column + std::clamp<int64_t>(diagonal + 1, 0, rows), column + rows, T{});
  }
  return matrix;
}

}  // namespace

NodeValue triangle(Call& call) {
  numericMatrix(call, predicate::kNumericMatrix);
  const int64_t k = diagonalArgument(call);
  const auto own = call.selector<Triangle>();
  NumericArray matrix = std::move(*call.arg(0).numeric());
  if (matrix.isEmpty()) return matrix;
  return std::move(matrix).visit([&](auto&& typed) { return triangleOf(std::move(typed), own, k); });
}

NodeValue trace(Call& call) {
  const NumericArray& matrix = numericMatrix(call, predicate::kSquareNumericMatrix);
  if (matrix.size().rows() != matrix.size().columns()) {
    throw Wording{"A", "A", predicate::kSquareNumericMatrix}.complaint(call);
  }
  const auto sum = [&](const auto& numbers, auto zero) {
    for (int64_t i = 0; i < numbers.size().rows(); ++i) zero = zero + numbers[i * (numbers.size().rows() + 1)];
    return NodeValue(zero);
  };
  if (matrix.is(Kind::Complex)) return sum(matrix.asComplex(), ComplexDouble{});
  return sum(matrix.toDoubleArray(), 0.0);
}

}  // namespace kelo::builtins::arrays
