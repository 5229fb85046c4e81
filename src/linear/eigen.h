// Eigenvalues and eigenvectors of square matrices.
#pragma once

#include "values/numeric_array.h"

namespace kelo {

/// a * right = right * diag(values), left' * a = diag(values) * left'. Each vector has the
/// Euclidean norm 1. A real matrix whose eigenvalues are all real gives real arrays, any other
/// complex ones, where complex pairs stand side by side.
struct Eigen {
  NumericArray values;  ///< a column
  NumericArray right;   ///< n x n
  NumericArray left;    ///< n x n

  NumericArray diagonal() const;  ///< the values on the diagonal of n x n
};

enum class EigenVectors { none, right, both };

/// What is not asked for stays empty. throws Problem unless `a` is square, and when the iteration
/// does not end
/// REQUIRES: no NaN and no Inf
Eigen eigen(NumericArray a, EigenVectors vectors);

}  // namespace kelo
