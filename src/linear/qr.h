// QR factors by Householder reflections, with or without exchanges of columns.
#pragma once

#include <vector>

#include "values/numeric_array.h"

namespace kelo {

/// full: q is m x m and r is m x n. economy: q is m x k and r is k x n, k = min(m, n).
enum class QrSize { full, economy };

/// a(:, permutation) = q * r.
struct Qr {
  NumericArray q;
  NumericArray r;
  std::vector<int> permutation;  ///< columns of a, from 1; empty unless they were asked to move

  DoubleArray permutationMatrix() const;  ///< E with A * E = Q * R
  DoubleArray permutationVector() const;  ///< a row
};

/// r alone, without exchanges. throws Problem
NumericArray triangleOfQr(NumericArray a, QrSize size);
/// Both factors. With exchanges the magnitudes on the diagonal of r do not grow. throws Problem
Qr qr(NumericArray a, QrSize size);
Qr qrWithExchanges(NumericArray a, QrSize size);

}  // namespace kelo
