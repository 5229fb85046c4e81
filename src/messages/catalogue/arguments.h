// The standard sentences about the arguments of built-in functions, and what stands in their slots.
// "{}" is a slot.
#pragma once

namespace kelo::text {

inline constexpr const char* kArgumentShould = "In {}({}), {} should {}";
inline constexpr const char* kInputsOrMore = "Function {}() must have {} or more input arguments";
inline constexpr const char* kInputsFromTo = "Function {}() must have {} to {} input arguments";
inline constexpr const char* kInputs = "Function {}() must have {} input argument{}";
inline constexpr const char* kOutputsAtMost = "Function {}() must have at most {} output argument{}";

// Arguments that have no name in the signature.
inline constexpr const char* kSecondArgument = "the second input argument";
inline constexpr const char* kFinalArgument = "the final input argument";

}  // namespace kelo::text

/// What several functions ask of an argument: the last slot of kArgumentShould.
namespace kelo::predicate {
inline constexpr const char* kNumericArray = "be a numeric array";
inline constexpr const char* kArray = "be an array";
inline constexpr const char* kArrayOfNumbers = "be an array of numbers";
inline constexpr const char* kMatrixOfNumbers = "be a matrix of real or complex numbers";
inline constexpr const char* kSquareNumericMatrix = "be a square numeric matrix";
inline constexpr const char* kNumericMatrix = "be a numeric matrix";
inline constexpr const char* kNumericMatrix2D = "be a numeric matrix (2D)";
inline constexpr const char* kVectorOfNumbers = "be a vector of numbers";
inline constexpr const char* kVectorOfNumericValues = "be a vector of numeric values";
inline constexpr const char* kVectorOfComplexOrReal = "be a vector of complex or real numbers";
inline constexpr const char* kVectorOfTwoOrMore = "be a vector of at least 2 elements";
inline constexpr const char* kVectorOfTwoNumbers = "be a vector of 2 numbers";
inline constexpr const char* kNonNegativeScalar = "be a non-negative real scalar";
inline constexpr const char* kNonNegativeInteger = "be a non-negative real integer scalar";
inline constexpr const char* kPositiveInteger = "be a real positive integer scalar";
inline constexpr const char* kInteger = "be a real integer scalar";
inline constexpr const char* kFiniteInteger = "be a real integer scalar not equal to Inf nor NaN";
inline constexpr const char* kNumericScalar = "be a numeric scalar";
inline constexpr const char* kCharacterVector = "be a character vector";
inline constexpr const char* kCharacterVectorEqualTo = "be a character vector equal to";
inline constexpr const char* kEmptyOrStructure = "be an empty array or a structure";
}  // namespace kelo::predicate
