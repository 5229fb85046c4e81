// The matrix product. Small products are plain loops, since a call of the library costs more than
// they do.
#include "linear/lapack.h"
#include "linear/linear.h"
#include "messages/catalogue/operators.h"
#include "messages/message.h"

namespace kelo {
namespace {

constexpr double kSmallWork = 512;  // multiplications; from about here the library is faster

template <class T>
void smallProduct(int64_t m, int64_t n, int64_t k, const T* a, const T* b, T* c) {
  std::fill_n(c, m * n, T{});
  for (int64_t j = 0; j < n; ++j) {
    for (int64_t p = 0; p < k; ++p) {
      for (int64_t i = 0; i < m; ++i) c[j * m + i] = c[j * m + i] + a[p * m + i] * b[j * k + p];
    }
  }
}

// A column times a row. Adding to zero makes a zero of either sign a positive one, as the library
// does.
template <class T>
void outerProduct(int64_t m, int64_t n, const T* __restrict a, const T* b, T* __restrict c) {
  for (int64_t j = 0; j < n; ++j) {
    const T factor = b[j];
    for (int64_t i = 0; i < m; ++i) c[j * m + i] = T{} + a[i] * factor;
  }
}

template <class T>
NumericArray product(const TypedArray<T>& a, const TypedArray<T>& b) {
  const int64_t m = a.size().rows(), k = a.size().columns(), n = b.size().columns();
  auto result = TypedArray<T>::uninitialized(SizeVector(m, n));
  T* c = result.writable();
  if (static_cast<double>(m) * static_cast<double>(n) * static_cast<double>(k) <= kSmallWork) {
    smallProduct(m, n, k, a.data(), b.data(), c);
    return result;
  }
  const int rows = checkedInt32(m), columns = checkedInt32(n), inner = checkedInt32(k);
  if (k == 1) {
    outerProduct(m, n, a.data(), b.data(), c);
  } else if (n == 1) {
    lapack::gemv(CblasNoTrans, rows, inner, a.data(), b.data(), c);
  } else if (m == 1) {
    lapack::gemv(CblasTrans, inner, columns, b.data(), a.data(), c);
  } else {
    lapack::gemm(rows, columns, inner, {a.data(), rows}, {b.data(), inner}, c);
  }
  return result;
}

}  // namespace

NumericArray mtimes(NumericArray a, NumericArray b) {
  if (a.isScalar() || b.isScalar()) return elementwise(BinaryOp::dmult, std::move(a), std::move(b));
  if (!a.size().isMatrix() || !b.size().isMatrix()) throw problem(text::kInvalidOperands, text::kProductOfMatrices);
  // Characters count by their numbers, of which there may be more than characters.
  const bool real = a.has(Property::allReals) && b.has(Property::allReals);
  a = std::move(a).toKind(real ? Kind::Double : Kind::Complex);
  b = std::move(b).toKind(real ? Kind::Double : Kind::Complex);
  if (a.size().columns() != b.size().rows()) throw problem(text::kInvalidOperands, text::kProductSizes);
  return real ? product(a.asDouble(), b.asDouble()) : product(a.asComplex(), b.asComplex());
}

}  // namespace kelo
