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

std::string linearIndexExceeds(int64_t index, int64_t numElements);
std::string subscriptExceeds(int64_t k);

/// "1st", "2nd", "3rd", then "4th" and on.
std::string ordinal(int64_t n);

}  // namespace kelo::text
