// The matrix product. Small products are plain loops, since a call of the library costs more than
// they do.
#include <algorithm>

#include "linear/lapack.h"
#include "linear/linear.h"
#include "linear/matrix_vector.h"
#include "messages/catalogue/operators.h"
#include "messages/message.h"

namespace kelo {
namespace {

constexpr double kSmallWork = 512;  // multiplications; from about here the library is faster
// Up to here the library multiplies matrices in another order when one of them is transposed.
constexpr double kOrderedWork = 1e6;

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

// A matrix of doubles as a factor that need not be there in its form.
struct Side {
  const DoubleArray& stored;
  bool isTransposed;

  int64_t rows() const { return isTransposed ? stored.size().columns() : stored.size().rows(); }
  int64_t columns() const { return isTransposed ? stored.size().rows() : stored.size().columns(); }
  CblasTranspose form() const { return isTransposed ? CblasTrans : CblasNoTrans; }
  int ld() const { return checkedInt32(stored.size().rows()); }
  lapack::Factor<double> factor() const { return {stored.data(), ld(), form()}; }
  /// The product with a vector from the right, or from the left, which is the transposed one's.
  void applyTo(const double* x, double* y, bool fromTheLeft) const {
    const int64_t m = stored.size().rows(), n = stored.size().columns();
    if (isTransposed != fromTheLeft)
      multiplyVectorTransposed(m, n, stored.data(), x, y);
    else
      multiplyVector(m, n, stored.data(), x, y);
  }
};

// The lower triangle as the mirror of the upper one, in blocks that stay in the cache.
void mirrorUpper(int64_t n, double* c) {
  constexpr int64_t kBlock = 32;
  for (int64_t first = 0; first < n; first += kBlock) {
    const int64_t end = std::min(n, first + kBlock);
    for (int64_t top = first; top < n; top += kBlock) {
      for (int64_t j = first; j < end; ++j) {
        for (int64_t i = std::max(top, j + 1); i < std::min(n, top + kBlock); ++i) c[j * n + i] = c[i * n + j];
      }
    }
  }
}

// A matrix times its own transpose takes half of the work.
bool areTransposes(const Side& a, const Side& b) {
  return a.isTransposed != b.isTransposed && a.stored.data() == b.stored.data() && a.stored.size() == b.stored.size();
}

NumericArray product(const Side& a, const Side& b) {
  const int64_t m = a.rows(), k = a.columns(), n = b.columns();
  auto result = DoubleArray::uninitialized(SizeVector(m, n));
  double* c = result.writable();
  if (n == 1) {
    a.applyTo(b.stored.data(), c, /*fromTheLeft*/ false);
  } else if (m == 1) {
    b.applyTo(a.stored.data(), c, /*fromTheLeft*/ true);
  } else if (areTransposes(a, b)) {
    lapack::syrk(checkedInt32(n), checkedInt32(k), a.factor(), c);
    mirrorUpper(n, c);
  } else {
    lapack::gemm(checkedInt32(m), checkedInt32(n), checkedInt32(k), a.factor(), b.factor(), c);
  }
  return result;
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
  if (k == 1) {
    outerProduct(m, n, a.data(), b.data(), c);
  } else if (n == 1) {
    multiplyVector(m, k, a.data(), b.data(), c);
  } else if (m == 1) {
    multiplyVectorTransposed(k, n, b.data(), a.data(), c);
  } else {
    const int rows = checkedInt32(m), columns = checkedInt32(n), inner = checkedInt32(k);
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

namespace {

NumericArray formed(Factor factor) {
  if (!factor.isTransposed) return std::move(factor.array);
  return std::move(*transpose(Storable(std::move(factor.array)), /*conjugate*/ false).numeric());
}

bool isMatrixOfDoubles(const Factor& factor) {
  return factor.array.is(Kind::Double) && factor.array.size().isMatrix() && !factor.array.isEmpty() &&
         !factor.array.isScalar();
}

}  // namespace

NumericArray mtimes(Factor a, Factor b) {
  if (!isMatrixOfDoubles(a) || !isMatrixOfDoubles(b)) return mtimes(formed(std::move(a)), formed(std::move(b)));
  const Side left{a.array.asDouble(), a.isTransposed}, right{b.array.asDouble(), b.isTransposed};
  if (left.columns() != right.rows()) throw problem(text::kInvalidOperands, text::kProductSizes);
  const double work = static_cast<double>(left.rows()) * static_cast<double>(left.columns()) *
                      static_cast<double>(right.columns());
  const bool isOfMatrices = left.rows() != 1 && right.columns() != 1;
  if (work <= (isOfMatrices ? kOrderedWork : kSmallWork)) return mtimes(formed(std::move(a)), formed(std::move(b)));
  return product(left, right);
}

}  // namespace kelo
