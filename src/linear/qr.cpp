#include "linear/qr.h"

#include "linear/lapack.h"
#include "linear/matrix_parts.h"
#include "messages/catalogue/linear_algebra.h"

namespace kelo {
namespace {

// A matrix of which the reflectors stand below the diagonal and r on and above it.
template <class T>
class Reflected {
 public:
  explicit Reflected(TypedArray<T> a)
      : packed_(std::move(a)),
        m_(checkedInt32(packed_.size().rows())),
        n_(checkedInt32(packed_.size().columns())),
        tau_(static_cast<size_t>(diagonal())) {}

  void reduce() { requireDone(lapack::geqrf(m_, n_, packed_.writable(), tau_.data()), text::kQrFailed); }

  std::vector<int> reduceWithExchanges() {
    std::vector<int> permutation(static_cast<size_t>(n_));
    requireDone(lapack::geqp3(m_, n_, packed_.writable(), permutation.data(), tau_.data()), text::kQrFailed);
    return permutation;
  }

  NumericArray r(QrSize size) const { return upperTriangle(packed_, rows(size)); }

  // The reflections of the identity.
  //
  // OPTIMIZATION: a panel of reflectors at a time, the last first: the reflectors from p on leave
  // the first p rows and columns as they are, which saves a third of the work.
  NumericArray q(QrSize size) const {
    constexpr int kPanel = 64;
    const int columns = rows(size);
    TypedArray<T> result = identityMatrix<T>(m_, columns);
    T* out = result.writable();
    for (int end = diagonal(); end > 0;) {
      const int p = (end - 1) / kPanel * kPanel;
      const int64_t corner = static_cast<int64_t>(p) * (m_ + 1);
      requireDone(lapack::multiplyByQ(/*conjugated*/ false, m_ - p, columns - p, end - p, packed_.data() + corner,
                                      tau_.data() + p, out + corner, m_),
                  text::kQrFailed);
      end = p;
    }
    return result;
  }

 private:
  int diagonal() const { return std::min(m_, n_); }
  int rows(QrSize size) const { return size == QrSize::full ? m_ : diagonal(); }

  TypedArray<T> packed_;
  int m_, n_;
  std::vector<T> tau_;
};

}  // namespace

DoubleArray Qr::permutationMatrix() const {
  const auto n = static_cast<int64_t>(permutation.size());
  DoubleArray result(SizeVector(n, n), 0.0);
  double* x = result.writable();
  for (int64_t k = 0; k < n; ++k) x[k * n + permutation[static_cast<size_t>(k)] - 1] = 1;
  return result;
}

DoubleArray Qr::permutationVector() const {
  auto result = DoubleArray::uninitialized(SizeVector(1, static_cast<int64_t>(permutation.size())));
  std::copy(permutation.begin(), permutation.end(), result.writable());
  return result;
}

NumericArray triangleOfQr(NumericArray a, QrSize size) {
  return inCommonKind([size](auto matrix) {
    Reflected reflected(std::move(matrix));
    reflected.reduce();
    return reflected.r(size);
  }, std::move(a));
}

Qr qr(NumericArray a, QrSize size) {
  return inCommonKind([size](auto matrix) {
    Reflected reflected(std::move(matrix));
    reflected.reduce();
    return Qr{reflected.q(size), reflected.r(size), {}};
  }, std::move(a));
}

Qr qrWithExchanges(NumericArray a, QrSize size) {
  return inCommonKind([size](auto matrix) {
    Reflected reflected(std::move(matrix));
    std::vector<int> permutation = reflected.reduceWithExchanges();
    return Qr{reflected.q(size), reflected.r(size), std::move(permutation)};
  }, std::move(a));
}

}  // namespace kelo
