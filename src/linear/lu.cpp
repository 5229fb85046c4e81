#include "linear/lu.h"

#include <algorithm>
#include <numeric>

#include "linear/lapack.h"
#include "linear/matrix_parts.h"
#include "messages/catalogue/linear_algebra.h"
#include "platform/parallel.h"

namespace kelo {
namespace {

// The factors in place of `a`; gives `info`.
template <class T>
int factorInPlace(TypedArray<T>& a, std::vector<int>& pivots, const char* failed) {
  const int m = checkedInt32(a.size().rows()), n = checkedInt32(a.size().columns());
  pivots.resize(static_cast<size_t>(std::min(m, n)));
  const int info = lapack::getrf(m, n, a.writable(), pivots.data());
  if (info < 0) throw expectation(failed);
  return info;
}

// Carries out the exchanges of rows, in their order, on the numbers of the rows.
std::vector<int64_t> orderOfRows(int64_t m, const std::vector<int>& pivots) {
  std::vector<int64_t> order(static_cast<size_t>(m));
  std::iota(order.begin(), order.end(), 0);
  for (size_t i = 0; i < pivots.size(); ++i) std::swap(order[i], order[static_cast<size_t>(pivots[i] - 1)]);
  return order;
}

// Row i of L goes to row placeOf(i) of the result.
template <class T, class Place>
TypedArray<T> lowerTriangle(const TypedArray<T>& packed, const Place& placeOf) {
  const int64_t m = packed.size().rows(), n = std::min(m, packed.size().columns());
  auto result = TypedArray<T>::uninitialized(SizeVector(m, n));
  T* out = result.writable();
  const T* in = packed.data();
  platform::parallelForUnits(n, m, [=, &placeOf](int64_t begin, int64_t end) {
    for (int64_t j = begin; j < end; ++j) {
      for (int64_t i = 0; i < j; ++i) out[j * m + placeOf(i)] = T{};
      out[j * m + placeOf(j)] = T{1};
      for (int64_t i = j + 1; i < m; ++i) out[j * m + placeOf(i)] = in[j * m + i];
    }
  });
  return result;
}

template <class T>
NumericArray signedProduct(const TypedArray<T>& factors, const std::vector<int>& pivots) {
  const int64_t n = factors.size().rows();
  T product{1};
  for (int64_t i = 0; i < n; ++i) {
    product = product * factors[i * (n + 1)];
    if (pivots[static_cast<size_t>(i)] != i + 1) product = -product;
  }
  return TypedArray<T>(product);
}

}  // namespace

NumericArray Lu::lower() const {
  return inOwnKind(
      [](const auto& p) { return NumericArray(lowerTriangle(p, [](int64_t i) { return i; })); }, packed);
}

NumericArray Lu::permutedLower() const {
  const auto place = [this](int64_t i) { return order[static_cast<size_t>(i)]; };
  return inOwnKind([&](const auto& p) { return NumericArray(lowerTriangle(p, place)); }, packed);
}

NumericArray Lu::upper() const {
  const int64_t rows = std::min(packed.size().rows(), packed.size().columns());
  return inOwnKind([rows](const auto& p) { return NumericArray(upperTriangle(p, rows)); }, packed);
}

DoubleArray Lu::permutationMatrix() const {
  const auto m = static_cast<int64_t>(order.size());
  auto result = DoubleArray::uninitialized(SizeVector(m, m));
  double* x = result.writable();
  platform::parallelForUnits(m, m, [=](int64_t begin, int64_t end) { std::fill(x + begin * m, x + end * m, 0.0); });
  for (int64_t i = 0; i < m; ++i) x[order[static_cast<size_t>(i)] * m + i] = 1;
  return result;
}

DoubleArray Lu::permutationVector() const {
  auto result = DoubleArray::uninitialized(SizeVector(1, static_cast<int64_t>(order.size())));
  std::transform(order.begin(), order.end(), result.writable(), [](int64_t i) { return static_cast<double>(i + 1); });
  return result;
}

Lu lu(NumericArray a) {
  return inCommonKind([](auto matrix) {
    std::vector<int> pivots;
    // A zero pivot is no failure: U is singular, and that is all.
    factorInPlace(matrix, pivots, text::kLuFailed);
    const int64_t m = matrix.size().rows();
    return Lu{std::move(matrix), orderOfRows(m, pivots)};
  }, std::move(a));
}

NumericArray determinant(NumericArray a) {
  return inCommonKind([](auto matrix) {
    using T = typename decltype(matrix)::Element;
    std::vector<int> pivots;
    const bool isSingular = factorInPlace(matrix, pivots, text::kDeterminantFailed) > 0;
    return isSingular ? NumericArray(0.0) : signedProduct<T>(matrix, pivots);
  }, std::move(a));
}

}  // namespace kelo
