// Texts of operators, ranges, concatenation and the solving of matrix equations.
#pragma once

#include <cstdint>
#include <string>

#include "messages/catalogue/values.h"

namespace kelo::text {

inline constexpr const char* kTransposeOfNonArray = "Transpose should be performed on an array";
inline constexpr const char* kTransposeOfManyDimensions = "Transpose should be applied to a scalar, vector or matrix";

inline constexpr const char* kRangeOperands =
    "Operands of ':' are expected to be real well-defined scalars, while creating a vector";

inline constexpr const char* kCatenateMixed = "Operand types mismatch while catenating arrays";
inline constexpr const char* kCatenateMixedExpected = "Arrays are expected to have same types";
inline constexpr const char* kCatenateUnexpected = "Unexpected error occurred while catenating arrays";

inline constexpr const char* kInvalidOperands = "Invalid operands";
inline constexpr const char* kProductOfMatrices =
    "In A * B or mtimes(A, B), A and B are expected to be matrices (2D arrays)";
inline constexpr const char* kProductSizes = "In A * B or mtimes(A, B), size(A, 2) == size(B, 1) should hold";

inline constexpr const char* kPowerScalarExponent = "In A^b and mpower(A, b), b should be scalar";
inline constexpr const char* kPowerSquareBase =
    "In A^b and mpower(A, b), A is expected to be a square matrix or scalar";
inline constexpr const char* kPowerIntegerExponent =
    "In A^b and mpower(A, b), when A is non-scalar, b should be a real integer scalar";

inline constexpr const char* kMatrixSizesMismatch = "Matrix sizes mismatch";
inline constexpr const char* kArraySizesMismatch = "Array sizes mismatch";
inline constexpr const char* kLeftDivision = "When solving A * x = b or A \\ b";
inline constexpr const char* kRightDivision = "When solving x * A = b or b / A";
inline constexpr const char* kSameNumbersOfRows = ", A and b are expected to have same numbers of rows";
inline constexpr const char* kSameNumbersOfColumns = ", A and b are expected to have same numbers of columns";
inline constexpr const char* kManyDimensionsOfA = ", if ndim(A) > 2, b has to be a scalar";
inline constexpr const char* kManyDimensionsOfB = ", if ndim(b) > 2, A has to be a scalar";

inline constexpr const char* kLeftEquation = "A * x = b";
inline constexpr const char* kRightEquation = "x * A = b";
inline constexpr const char* kSolveSizes = "Sizes of A and b mismatch while attempting to solve the matrix equation";
inline constexpr const char* kLeastSquaresFailed = "Failed to solve A * x = b";
inline constexpr const char* kLeastSquaresSingular = "Failed to solve A * x = b, since A is singular";
std::string solveSingular(const std::string& equation);
std::string solveRankDeficient(const std::string& equation, int64_t rank, double tolerance);
std::string solveNearlySingular(const std::string& equation, double rcond);

inline constexpr const char* kInverseOfNonSquare =
    "The input argument of inv() should be a square numeric (non-character) matrix";
inline constexpr const char* kInverseOfSingular = "Attempting to compute inverse of a singular matrix";
inline constexpr const char* kInverseUnexpected = "Unexpected error occurred while finding matrix inverse";
std::string inverseNearlySingular(double rcond);
inline constexpr const char* kRcondUnexpected = "Unexpected error occurred while performing rcond()";

}  // namespace kelo::text
