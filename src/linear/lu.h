// LU factors with row exchanges, and the determinant from them.
#pragma once

#include <vector>

#include "values/numeric_array.h"

namespace kelo {

/// The factors of an m x n matrix: row order[i] of it is row i of lower() * upper().
struct Lu {
  NumericArray packed;         ///< m x n: L below the diagonal without its 1s, U on and above it
  std::vector<int64_t> order;  ///< m rows, from 0

  NumericArray lower() const;             ///< m x min(m, n)
  NumericArray permutedLower() const;     ///< the same, rows in the order of the matrix
  NumericArray upper() const;             ///< min(m, n) x n
  DoubleArray permutationMatrix() const;  ///< P with P * A = L * U
  DoubleArray permutationVector() const;  ///< a row, from 1: A(p, :) = L * U
};

/// Also of singular and empty matrices; NaN and Inf spread. throws Problem
Lu lu(NumericArray a);

/// Exactly 0 for an exact zero pivot, 1 for an empty matrix; complex for a complex one. throws
/// Problem
/// REQUIRES: `a` is square
NumericArray determinant(NumericArray a);

}  // namespace kelo
