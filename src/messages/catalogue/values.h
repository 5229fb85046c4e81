// Texts of the value model: sizes, conversions, operators, ranges, concatenation.
#pragma once

#include <cstdint>
#include <string>

namespace kelo::text {

inline constexpr const char* kUnexpectedError = "Unexpected error occurred";

inline constexpr const char* kSizeVectorTooShort = "A size vector should have at least two numbers";
inline constexpr const char* kIncompatibleSizes = "Incompatible array sizes";
inline constexpr const char* kDimensionMismatch = "Dimension lengths mismatch";

inline constexpr const char* kCountMismatchDouble =
    "Number of elements is inconsistent with the array size when creating a double array";
inline constexpr const char* kCountMismatchInt =
    "Number of elements is inconsistent with the array size when creating array of integer values";
inline constexpr const char* kCountMismatchLogical =
    "Number of elements is inconsistent with the array size when creating a logical array";
inline constexpr const char* kCountMismatchComplex =
    "Number of elements is inconsistent with the array size when creating a complex array";
inline constexpr const char* kCountMismatchChar =
    "Number of elements is inconsistent with the array size when creating a character array";

inline constexpr const char* kNaNToInteger = "NaN is not convertible to an integer";
inline constexpr const char* kNaNToLogical = "NaN is not convertible to a logical";
inline constexpr const char* kComplexToLogical = "A complex number is not convertible to a logical";
inline constexpr const char* kStructureToChars = "Cannot convert a structure array to characters";
inline constexpr const char* kUnevenColumnsOfText =
    "Attempting to catenate vectors of different lengths when performing data type conversion. "
    "This may be caused by Unicode characters";
std::string functionToChars(const std::string& name);

std::string linearIndexExceeds(int64_t index, int64_t numElements);
std::string subscriptExceeds(int64_t k);

/// "1st", "2nd", "3rd", then "4th" and on.
std::string ordinal(int64_t n);

}  // namespace kelo::text
