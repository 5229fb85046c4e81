// Texts of the functions that make arrays, rearrange them and search in them. "{}" stands for the
// function's name.
#pragma once

namespace kelo::text {

// Filled arrays. NOTE: intended: "is should".
inline constexpr const char* kSizeNotNumeric = "The input arguments of {}() should be numeric data";
inline constexpr const char* kSizeNotIntegers =
    "In {}(v), v is should be a real non-negative integer scalar or vector, not equal to Inf nor NaN";
inline constexpr const char* kSizeNotVector = "In {}(v), v should be scalar or vector";
inline constexpr const char* kSizesNotScalars = "In {}(s1,s2,...,sn), the input arguments should be scalars";
inline constexpr const char* kSizesNotIntegers =
    "In {}(s1,s2,...,sn), the input arguments should be real non-negative integer scalars, not equal to Inf nor NaN";
inline constexpr const char* kEyeOfManyDimensions = "eye() can only produce a scalar, vector or matrix";

// Size queries
inline constexpr const char* kSizeInputs = "Function {}() expects 1 or 2 input arguments";
inline constexpr const char* kSizeDimension = "In {}(A, d), d must be a non-empty real positive integer";
inline constexpr const char* kSizeOneOutput = "{}(A, d) returns only one output";

// Rearrangement
inline constexpr const char* kRepmatFirst = "The first input argument of {}() should be an array";
inline constexpr const char* kReshapeCount = "Array size should remain unchanged after reshaping";
inline constexpr const char* kReshapeEmpties = "In {}(A, s1, s2, ..., sn), there should be less than 2 empty si";
inline constexpr const char* kPermuteTooShort =
    "When dimensions of A are permuted, the vector \"order\" should be a permutation of 1:length(order) and should "
    "have at least ndims(A) elements";

inline constexpr const char* kFlipDimension = "be a real positive integer scalar, not equal to Inf nor NaN";
inline constexpr const char* kRepetitionCounts =
    "be a scalar or a vector of real non-negative integers not equal to Inf nor NaN";
inline constexpr const char* kRepetitionCount = "be a real non-negative integer, not equal to Inf nor NaN";
inline constexpr const char* kNonEmptyCount = "be non-empty";
inline constexpr const char* kReshapeSizes = "be a vector of real non-negative integers not equal to Inf nor NaN";
inline constexpr const char* kReshapeLength = "be an empty array or real non-negative integer not equal to Inf nor NaN";
inline constexpr const char* kPermutation = "be a permutation of the integers 1:length(order)";
inline constexpr const char* kShiftOfDimensions = "be a real integer not equal to Inf nor NaN";

// Subscripts
inline constexpr const char* kPositiveIntegers = "be an array of real positive integers";
inline constexpr const char* kPositiveIntegerVector = "be a vector of real positive integers";
inline constexpr const char* kTwoElements = "have at least 2 elements";
inline constexpr const char* kSameSubscriptSizes = "have the same sizes";

// Last resorts
inline constexpr const char* kDiagFailed = "Failed to perform diag()";
inline constexpr const char* kTrilFailed = "Failed to perform tril()";
inline constexpr const char* kTriuFailed = "Failed to perform triu()";
inline constexpr const char* kRepetitionFailed = "Error occurred in repeatArray";

// Searching
inline constexpr const char* kFindOutputs = "Function {}() expects no more than 3 output arguments";

// Sorting
inline constexpr const char* kSortInputs = "{}() should have at least one input argument";
inline constexpr const char* kSortFirst = "The first input argument of {}() should be a numeric array";
inline constexpr const char* kSortFirstOfSeveral = "In {}(A, ...), A should be an array of numeric values";
inline constexpr const char* kSortManyBeforePair =
    "Expecting no more than 3 input arguments before the first name-value pair found in the inputs";
inline constexpr const char* kSortMany =
    "Expecting no more than 3 input arguments when no name-value pair is provided in the inputs";
inline constexpr const char* kSortOptionName = "Invalid option name found";
inline constexpr const char* kSortOptionNames = "It expects 'comparisonmethod' or 'missingplacement'";
inline constexpr const char* kSortDimension = "be real positive integer scalar";
inline constexpr const char* kSortDirections = "be either 'ascend' or 'descend'";
inline constexpr const char* kSortNoValue = "In input arguments of sort(), '{}' has no matched value";
inline constexpr const char* kSortInvalid = "Invalid input arguments for {}()";

}  // namespace kelo::text
