// Texts of the reductions and statistics. "{}" stands for the function's name.
#pragma once

namespace kelo::text {

inline constexpr const char* kNumericalArrayAsInput = "{}() expects a numerical array as its input argument";
inline constexpr const char* kSecondOutputUndefined = "The second output argument is not defined";
// NOTE: intended capital
inline constexpr const char* kModeFailed = "Attempting to find the mode of a vector";

inline constexpr const char* kCumulativeInputs = "Function {}() expects 1 to 4 input arguments";
inline constexpr const char* kDirectionOption = "An option for {}() must be either 'forward' or 'reverse'";
inline constexpr const char* kNaNOption = "An option for {}() must be either 'includenan' or 'omitnan'";
inline constexpr const char* kInvalidOptions = "Invalid options";

inline constexpr const char* kRmsDimensions =
    "In rms(_,arg2,_), arg2 must be 'all', a dimension number, or a vector of dimension numbers";
inline constexpr const char* kRmsSecondInput =
    "For rms(), the second input should be 'all', dimension number, vector of dimension numbers, or nanFlag";

inline constexpr const char* kPercentilesOfComplex = "prctile(A, p) and quantile(A, q) do not work for complex A";
inline constexpr const char* kPercentileDimensions =
    "{}(), the third input should be 'all', a dimension number, or a vector of dimension numbers";

inline constexpr const char* kCorrcoefOutputs = "Function {}() should have at most 4 output arguments";
inline constexpr const char* kCorrcoefComplexOutputs =
    "Function corrcoef() has only 1 output argument if some of the correlation coefficients are complex";
inline constexpr const char* kCorrcoefName = "Parameter name should be either 'alpha' or 'rows'";
inline constexpr const char* kCorrcoefRows = "Parameter 'row' expects 'all', 'complete' or 'pairwise' as its value";
inline constexpr const char* kCorrcoefAlpha = "Parameter 'alpha' expects a real number 0 < alpha < 1 as its value";
inline constexpr const char* kCorrcoefDimensions = "The input argument A should have ndim <= 2";

inline constexpr const char* kBetaiShape = "Bad a or b in routine betai";
inline constexpr const char* kBetaiArgument = "Bad x in routine betai";

// Predicates that only these functions use.
inline constexpr const char* kDimensionNumber = "be a real integer scalar >= 1";
inline constexpr const char* kPositiveDimension = "be a positive integer";
inline constexpr const char* kSizesGoTogether = "have compatible sizes";
inline constexpr const char* kEmptySecondInput = "be an empty array";
inline constexpr const char* kZeroOrOne = "be equal to either 0 or 1";
inline constexpr const char* kEitherNaNFlag = "be either 'includenan' or 'omitnan'";
inline constexpr const char* kArrayOfRealNumbers = "be an array of real numbers";
inline constexpr const char* kUpToHundred = "be a scalar or vector of numbers in [0, 100]";
inline constexpr const char* kUpToOne = "be a scalar or vector of numbers in [0, 1]";
inline constexpr const char* kNonCharacterArrays = "be non-character arrays";
inline constexpr const char* kArrayOfRealOrComplex = "be array containing real or complex numbers only";
inline constexpr const char* kContainRealOrComplex = "contain real or complex numbers only";
inline constexpr const char* kTwoDimensionsAtMost = "have ndim <= 2";
inline constexpr const char* kSameNumbersOfElements = "have the same numbers of elements";
inline constexpr const char* kEitherRowFlag = "be either 'includenan', 'omitrows' or 'partialrows'";
inline constexpr const char* kRowsOrAlphaValue = "be a value for 'rows' or 'alpha'";

}  // namespace kelo::text
