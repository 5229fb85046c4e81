// Texts of the element-wise mathematics and of the questions about kind and shape. "{}" stands for
// the function's name.
#pragma once

namespace kelo::text {

inline constexpr const char* kOneInputExactly = "{}() expects exactly 1 input argument";
inline constexpr const char* kNoInput = "{} takes no input argument";

inline constexpr const char* kNumericForExponentials = "{}() expects a numeric array as input argument";
inline constexpr const char* kRealInput = "{}() expects a real input";
inline constexpr const char* kNonNegativeInputs = "{}() expects non-negative inputs";
inline constexpr const char* kNumericForRounding = "{}() expects numeric array as its input argument";
inline constexpr const char* kRealResults = "{}() expects inputs that give real results";

// Predicates that only these functions use.
inline constexpr const char* kNumericArrayOfReals = "be a numeric array of real numbers";
inline constexpr const char* kRealNumericArrays = "be real numeric arrays";
inline constexpr const char* kCompatibleSizes = "have compatible sizes";
inline constexpr const char* kNonNegativeIntegers =
    "be an array of non-negative real integers, not equal to Inf nor NaN";
inline constexpr const char* kNumericalArray = "be a numerical array";

}  // namespace kelo::text
