// The factorisations: LU, QR, singular values, eigenvalues. How many outputs are asked for says
// which factors are made.
#include "builtins/linear_algebra/handlers.h"
#include "builtins/linear_algebra/matrix_arguments.h"
#include "linear/eigen.h"
#include "linear/lu.h"
#include "linear/qr.h"
#include "linear/svd.h"
#include "messages/catalogue/linear_algebra.h"

namespace kelo::builtins::linear_algebra {

NodeValue lu(Call& call) {
  const bool asVector = call.count() == 2 && read::option(call, 1, {"A, perm", "perm", text::kVectorOrMatrixForm},
                                                          {"vector", "matrix"}) == 0;
  const Lu factors =
      kelo::lu(takeMatrix(call, Matrix::any, Text::refused, Wording::sentence(text::kFirstNumericMatrix)));
  switch (call.outputCount()) {
    case 1: return factors.packed;
    case 2: return call.outputs({factors.permutedLower(), factors.upper()});
    default:
      return call.outputs(
          {factors.lower(), factors.upper(), asVector ? factors.permutationVector() : factors.permutationMatrix()});
  }
}

namespace {

struct QrOption {
  QrSize size = QrSize::full;
  bool asVector = false;  ///< the exchanges as a row of positions
};

/// Without a word on them the exchanges are a matrix, but for the economy form 0.
QrOption qrOption(const Call& call) {
  if (call.count() == 1) return {};
  if (isZero(call.arg(1))) return {QrSize::economy, true};
  switch (read::option(call, 1, Wording::sentence(text::kOptionOfQr), {"econ", "vector", "matrix"})) {
    case 0: return {QrSize::economy, false};
    case 1: return {QrSize::full, true};
    default: return {};
  }
}

}  // namespace

NodeValue qr(Call& call) {
  const QrOption option = qrOption(call);
  NumericArray a = takeMatrix(call, Matrix::any, Text::refused, Wording::sentence(text::kFirstNumericMatrix));
  if (call.outputCount() == 1) return triangleOfQr(std::move(a), option.size);
  if (call.outputCount() == 2) {
    Qr factors = kelo::qr(std::move(a), option.size);
    return call.outputs({std::move(factors.q), std::move(factors.r)});
  }
  const Qr factors = qrWithExchanges(std::move(a), option.size);
  return call.outputs(
      {factors.q, factors.r, option.asVector ? factors.permutationVector() : factors.permutationMatrix()});
}

namespace {

/// The economy form 0 leaves wide matrices as they are.
SvdSize svdSize(const Call& call, const NumericArray& a) {
  if (call.count() == 1) return SvdSize::full;
  if (isZero(call.arg(1))) return a.size().rows() > a.size().columns() ? SvdSize::economy : SvdSize::full;
  read::option(call, 1, Wording::sentence(text::kOptionOfSvd), {"econ"});
  return SvdSize::economy;
}

}  // namespace

NodeValue svd(Call& call) {
  NumericArray a = takeMatrix(call, Matrix::finite, Text::refused, Wording::sentence(text::kFirstFiniteMatrixOfSvd));
  const SvdSize size = svdSize(call, a);
  if (call.outputCount() == 1) return singularValues(std::move(a), text::kSvdFailed);
  Svd parts = kelo::svd(std::move(a), size);
  return call.outputs({std::move(parts.u), std::move(parts.s), std::move(parts.v)});
}

NodeValue eig(Call& call) {
  NumericArray a = takeMatrix(call, Matrix::squareFinite, Text::asNumbers, {"A", "A", text::kSquareFiniteMatrix});
  if (call.outputCount() == 1) return eigen(std::move(a), EigenVectors::none).values;
  Eigen parts = eigen(std::move(a), call.outputCount() == 2 ? EigenVectors::right : EigenVectors::both);
  NumericArray diagonal = parts.diagonal();
  return call.outputs({std::move(parts.right), std::move(diagonal), std::move(parts.left)});
}

}  // namespace kelo::builtins::linear_algebra
