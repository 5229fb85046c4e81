// Texts of polynomials, signals and calculus. "{}" stands for the function's name.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>

namespace kelo::text {

// Predicates, for the complaint about an argument.
inline constexpr const char* kNonEmpty = "be non-empty";
inline constexpr const char* kNonZero = "be non-zero";
inline constexpr const char* kNonZeroMagnitude = "have non-zero magnitude";
inline constexpr const char* kSameSizes = "have the same sizes";
inline constexpr const char* kSameCounts = "have same numbers of elements";
inline constexpr const char* kFiniteNumbers = "be an array of numbers equal to neither Inf nor NaN";
inline constexpr const char* kDegree = "be a real non-negative integer scalar";
inline constexpr const char* kVectorAndArray = "be a vector of numbers and x should be an array of numbers";
inline constexpr const char* kFieldsOfFit = "have the fields \"R\", \"normr\" and \"df\"";
inline constexpr const char* kVectorOrSquareMatrix = "be a vector or a square matrix of numeric values";
inline constexpr const char* kNumbersNotCharacters = "contain numbers, not characters";
inline constexpr const char* kNoInfNorNaN = "not contain Inf nor NaN";
inline constexpr const char* kNoNaNNorInf = "not contain NaN nor Inf";
inline constexpr const char* kCoefficients = "be a vector of numbers (not characters) not equal to Inf nor NaN";
// NOTE: intended, as it stands
inline constexpr const char* kScalarNumber = "be a scalar complex or real numbers";
inline constexpr const char* kShapeOfConvolution = "be a character vector equal to full, valid or same";
inline constexpr const char* kStateCount = "have max(length(b),length(a)) - 1 elements";
inline constexpr const char* kPositiveDimension = "be a positive integer";
inline constexpr const char* kSpacing = "be a scalar of numeric type (non-character)";
inline constexpr const char* kThreeElements = "have exactly 3 elements along the k-th dimension";
inline constexpr const char* kTolerance = "be empty or real non-negative scalar smaller than 1";
inline constexpr const char* kConjugatePairs = "consist of real numbers and pairs of complex conjugates";

// Arguments, for the same.
inline constexpr const char* kFirstOfA = "the first element of a";
inline constexpr const char* kStateVector = "when wi is a vector, it";

// Whole sentences.
inline constexpr const char* kNoOutputWithoutS = "There is only 1 output when S is not given in the inputs";
inline constexpr const char* kTooManyOutputs = "Too many output arguments";
inline constexpr const char* kManyPolynomials =
    "There are more than one polynomial that can pass through all data points, since the degree >= number data points";
inline constexpr const char* kManyComplexPolynomials =
    "There are more than one polynomial that pass through all data points, since the degree >= number data points";
inline constexpr const char* kDeficientFit = "The least-square problem has more than one solution (rank deficiency)";
inline constexpr const char* kNoRoots = "At least one root should be given";
inline constexpr const char* kNoCoefficients = "A polynomial should have at least one coefficient";
inline constexpr const char* kEmptyConvolution = "Convolution of empty vectors is invalid";
inline constexpr const char* kSpacingOfVector = "When F is a vector, there should be exactly 1 spacing value";
inline constexpr const char* kSpacingsOfArray = "When F is an array, there should be exactly ndim(F) spacing values";
inline constexpr const char* kInputsOfGradient = "Incorrect number of input arguments";
inline constexpr const char* kOutputsOfGradient =
    "When F is not a vector, gradient(F) should have no more than ndims(F) outputs";
inline constexpr const char* kOutputsOfVectorGradient =
    "gradient(F), when F is a vector, it should have at most 1 output argument";
inline constexpr const char* kEmptyProduct = "In a {} operation, one of the operands is unexpectedly found empty";

inline std::string wrongStateSize(const char* signature) {
  return fmt::format("In filter({}), wi has a wrong size", signature);
}

/// NOTE: intended: "have least".
inline std::string tooShortForDifference(int64_t order) {
  if (order == 1) {
    return "When computing the first order difference of the vector a, it should have least two elements";
  }
  return fmt::format("When computing the {}-th order difference of the vector a, it should have least {} elements",
                     order, static_cast<uint64_t>(order) + 1);
}

}  // namespace kelo::text
