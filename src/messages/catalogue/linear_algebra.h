// Texts of the functions of matrices. "{}" stands for the function's name.
#pragma once

namespace kelo::text {

// What the first argument should be, as a whole sentence.
inline constexpr const char* kFirstNumericMatrix =
    "The first input argument of {}() should be a numeric (non-character) matrix";
inline constexpr const char* kFirstFiniteMatrix =
    "The first input argument of {}() should be a numeric (non-character) matrix not containing Inf nor NaN";
inline constexpr const char* kFirstFiniteMatrixOfSvd =
    "The first input argument of {}() should be a numeric (non-character) matrix. It should not contain Inf nor NaN";
inline constexpr const char* kFiniteInputs = "Input arguments of {}() should not contain Inf and NaN";

// Options, as a whole sentence.
inline constexpr const char* kOptionOfQr =
    "The second input argument of {}() should be either 0, 'econ', 'vector' or 'matrix'";
inline constexpr const char* kOptionOfSvd = "The second input argument of {}() should be either 0 or 'econ'";

// Predicates that only these functions use.
inline constexpr const char* kSquareFiniteMatrix = "be a square numeric matrix not containing Inf nor NaN";
inline constexpr const char* kSquareMatrix = "be a square matrix";
inline constexpr const char* kVectorOrMatrix = "be a vector or matrix";
inline constexpr const char* kFiniteTolerance = "be a non-negative real scalar not equal to Inf nor NaN";
inline constexpr const char* kFiniteTolerances =
    "be an array containing non-negative real scalars not equal to Inf nor NaN";
inline constexpr const char* kVectorOrMatrixForm = "be either 'vector' or 'matrix'";
inline constexpr const char* kUpperOrLower = "be either 'upper' or 'lower'";
inline constexpr const char* kBandLimits = "be non-negative integer scalars not equal to Inf nor NaN";

inline constexpr const char* kNormOfVector =
    "In {}(x, p), when x is a vector, p should be -Inf, Inf or real positive scalar";
inline constexpr const char* kNormOfMatrix = "In {}(x, p), when x is a matrix, p should be 1, 2 or Inf";
inline constexpr const char* kSameRows = "In {}(A, b), A and b are expected to have same numbers of rows";
inline constexpr const char* kInvalidArguments = "Invalid input arguments";
inline constexpr const char* kNotForCharacters = "{}() does not work with character arrays";
inline constexpr const char* kFirstInvalid = "The 1st input argument is invalid";
inline constexpr const char* kShouldBeNumericMatrix = "It should be a numeric (non-character) matrix (2D)";
inline constexpr const char* kShouldBeSquareMatrix = "It should be a square matrix";

// A routine that did not come to a result.
inline constexpr const char* kLuFailed = "Failed to perform LU decomposition";
inline constexpr const char* kDeterminantFailed = "Failed to compute determinant";
inline constexpr const char* kQrFailed = "Failed to perform QR decomposition";
inline constexpr const char* kSvdFailed = "Unexpected error occurred while performing svd()";
inline constexpr const char* kPseudoInverseFailed = "Failed to obtain pseudo-inverse";
inline constexpr const char* kRankFailed = "Failed to perform SVD while computing the rank of a matrix";
inline constexpr const char* kMatrixNormFailed = "Failed to obtain matrix norm";
inline constexpr const char* kNormError = "Error occurred while computing the norm of a vector or matrix";
inline constexpr const char* kEigenvaluesFailed =
    "Unexpected error occurred while computing eigenvalues and eigenvectors";

}  // namespace kelo::text
