// The operators of matrices, and the one function that carries out any binary operator.
//
// Operands that hold only real numbers are worked on in doubles whatever their record is; otherwise
// both are complex. A matrix that is singular to working precision still gives a result; the
// caller's `warn` receives the warning's text.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "values/operators.h"

namespace kelo {

/// Receives the text of a warning.
using Warn = std::function<void(std::string)>;

/// Ends the threads that the library behind the products keeps, until a product needs them: they
/// wait busily, from the moment the program is loaded, at the cost of 70 ms of a processor.
void endIdleMatrixThreads();

/// Any of the 18 binary operators. throws Problem, FatalFault
NumericArray binary(BinaryOp op, NumericArray a, NumericArray b, const Warn& warn);

/// a * b: element-wise beside a scalar, else the product of matrices. throws Problem
NumericArray mtimes(NumericArray a, NumericArray b);

/// A factor of a product, or the matrix of doubles whose transpose the factor is.
struct Factor {
  NumericArray array;
  bool isTransposed = false;
};
/// The same without forming a transpose, where the product can do without.
NumericArray mtimes(Factor a, Factor b);

/// a \ b: x with a * x = b, the least squares solution when a is not square. Element-wise where `a`
/// is a scalar.
/// throws Problem for sizes, for an exactly singular square matrix
NumericArray mldivide(NumericArray a, NumericArray b, const Warn& warn);
/// b / a: x with x * a = b.
NumericArray mrdivide(NumericArray b, NumericArray a, const Warn& warn);

/// a ^ b: repeated products of a square matrix, of its inverse for a negative exponent. throws
/// Problem
NumericArray mpower(NumericArray a, NumericArray b, const Warn& warn);

/// The inverse of a square matrix. throws Problem for other arrays and for an exact zero pivot
NumericArray inverse(NumericArray a, const Warn& warn);

/// Estimate of the reciprocal condition number in the 1-norm; 0 for a singular matrix, Inf for an
/// empty one, NaN where a holds NaN. throws Problem unless `a` is square
double rcond(NumericArray a);

/// What solving a * x = b found out besides x.
struct Solution {
  std::optional<NumericArray> x;  ///< absent for an exact zero pivot
  bool isNearlySingular = false;  ///< square: rcond is below 1-norm(a) * eps
  double rcond = 1;               ///< square; only a bound where nobody asked for it
  int64_t rank = 0;               ///< not square; less than full when rank < min(size(a))
  double tolerance = 0;           ///< not square: below it a diagonal element counts as 0
};

/// throws Problem unless they have as many rows, and for a matrix that is not square and of which
/// NaN hides the rank
/// REQUIRES: both are matrices, not empty
enum class Quality { numbers, warnings };  ///< of a solution: wanted in numbers, or to warn of it
[[nodiscard]] Solution solve(const NumericArray& a, const NumericArray& b, Quality quality = Quality::numbers);
/// The same as if no matrix were square: always an x, in the deficient case one with as few rows
/// other than 0 as the rank says.
[[nodiscard]] Solution solveLeastSquares(const NumericArray& a, const NumericArray& b);
/// Complains of a singular matrix of this size, warns of one that is nearly so or deficient in
/// rank. `equation` is the form of the equation in words. throws Problem
void report(const Solution& solution, const SizeVector& size, const char* equation, const Warn& warn);

}  // namespace kelo
