// The standard sentences about the arguments of built-in functions. "{}" is a slot.
#pragma once

namespace kelo::text {

inline constexpr const char* kArgumentShould = "In {}({}), {} should {}";
inline constexpr const char* kInputsOrMore = "Function {}() must have {} or more input arguments";
inline constexpr const char* kInputsFromTo = "Function {}() must have {} to {} input arguments";
inline constexpr const char* kInputs = "Function {}() must have {} input argument{}";
inline constexpr const char* kOutputsAtMost = "Function {}() must have at most {} output argument{}";

}  // namespace kelo::text
