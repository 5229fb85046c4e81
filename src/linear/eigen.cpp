#include "linear/eigen.h"

#include "linear/lapack.h"
#include "linear/matrix_parts.h"
#include "messages/catalogue/linear_algebra.h"

namespace kelo {
namespace {

NumericArray realParts(const ComplexDoubleArray& values) {
  auto result = DoubleArray::uninitialized(values.size());
  std::transform(values.values().begin(), values.values().end(), result.writable(), [](auto z) { return z.real; });
  return result;
}

// The library packs the vectors of a complex pair as two real columns, the real and the imaginary
// parts of the first.
NumericArray unpacked(const DoubleArray& packed, const ComplexDoubleArray& values) {
  const int64_t n = values.numElements();
  if (packed.isEmpty()) return packed;
  auto result = ComplexDoubleArray::uninitialized(packed.size());
  ComplexDouble* out = result.writable();
  for (int64_t j = 0; j < n; ++j) {
    const double* real = packed.data() + j * n;
    if (values[j].imaginary == 0) {
      for (int64_t i = 0; i < n; ++i) out[j * n + i] = {real[i], 0};
      continue;
    }
    const double* imaginary = real + n;
    for (int64_t i = 0; i < n; ++i) {
      out[j * n + i] = {real[i], imaginary[i]};
      out[(j + 1) * n + i] = {real[i], -imaginary[i]};
    }
    ++j;
  }
  return result;
}

Eigen assembled(ComplexDoubleArray values, DoubleArray right, DoubleArray left) {
  if (NumericArray(values).has(Property::allReals)) return {realParts(values), std::move(right), std::move(left)};
  NumericArray complexRight = unpacked(right, values), complexLeft = unpacked(left, values);
  return {std::move(values), std::move(complexRight), std::move(complexLeft)};
}
Eigen assembled(ComplexDoubleArray values, ComplexDoubleArray right, ComplexDoubleArray left) {
  return {std::move(values), std::move(right), std::move(left)};
}

template <class T>
Eigen computed(TypedArray<T> a, EigenVectors vectors) {
  const SizeVector size = a.size();
  const auto place = [&](bool wanted) { return wanted ? TypedArray<T>::uninitialized(size) : TypedArray<T>(); };
  auto values = ComplexDoubleArray::uninitialized(SizeVector(size.rows(), 1));
  TypedArray<T> right = place(vectors != EigenVectors::none), left = place(vectors == EigenVectors::both);
  const int info =
      lapack::geev(checkedInt32(size.rows()), a.writable(), values.writable(),
                   left.isEmpty() ? nullptr : left.writable(), right.isEmpty() ? nullptr : right.writable());
  requireDone(info, text::kEigenvaluesFailed);
  return assembled(std::move(values), std::move(right), std::move(left));
}

}  // namespace

NumericArray Eigen::diagonal() const {
  const int64_t n = values.numElements();
  if (values.is(Kind::Complex)) return diagonalMatrix(n, n, values.asComplex());
  return diagonalMatrix(n, n, values.asDouble());
}

Eigen eigen(NumericArray a, EigenVectors vectors) {
  if (!a.has(Property::squareMatrixInNumbers)) throw problem(text::kFirstInvalid, text::kShouldBeSquareMatrix);
  return inCommonKind([vectors](auto matrix) { return computed(std::move(matrix), vectors); }, std::move(a));
}

}  // namespace kelo
