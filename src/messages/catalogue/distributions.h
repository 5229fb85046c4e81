// Texts of the error functions and of the distributions. "{}" stands for the function's name.
#pragma once

namespace kelo::text {

inline constexpr const char* kErrorFunctionInputs = "{}() expects exactly one input argument";
inline constexpr const char* kErrorFunctionNumeric = "{}() expects a numeric array as its input argument";
inline constexpr const char* kErrorFunctionReal = "{}() expects a real input argument";

inline constexpr const char* kDistributionReals = "be an array of real numbers";

}  // namespace kelo::text
