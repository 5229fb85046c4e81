// The estimate of a reciprocal condition number from LU factors, for solving and inverting.
#pragma once

#include <cmath>

#include "linear/lapack.h"
#include "linear/triangles.h"
#include "messages/catalogue/operators.h"
#include "messages/message.h"

namespace kelo {

/// norm: the 1-norm of the matrix. A norm of NaN gives NaN and one of Inf gives 0, which the
/// library does not promise.
template <class T>
double rcondOfFactors(int n, const T* factors, double norm) {
  if (std::isnan(norm)) return norm;
  if (std::isinf(norm)) return 0;
  double rcond = 0;
  if (lapack::gecon(n, factors, norm, &rcond) < 0) throw problem(text::kUnexpectedError);
  return rcond;
}

/// Whether the reciprocal condition is so far above this limit that its number does not matter. The
/// estimate costs a third of the library's.
template <class T>
bool isRcondFarAbove(double limit, int n, const T* factors, double norm) {
  constexpr double kMargin = 1000;
  return n > 1 && triangles::inverseNorm(n, factors) * norm * kMargin * limit < 1;
}

}  // namespace kelo
