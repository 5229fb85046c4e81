// Texts of the commands that fill figures. "{}" stands for the function's name.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>

#include "messages/catalogue/values.h"

namespace kelo::text {

/// Of the kth input argument.
inline std::string invalidArgument(int64_t k) { return fmt::format("The {} input argument is invalid", ordinal(k)); }

// Data
inline constexpr const char* kPlotInputs = "It is expected to have at least 1 input argument";
inline constexpr const char* kNonCharacterArray = "It should be a numeric (non-character) array";
inline constexpr const char* kNumericOrCharacterArray = "It should be a numeric or character array";
inline constexpr const char* kNumericValues = "It should be an array of numeric values";
inline constexpr const char* kVectorOrMatrix = "It should be a vector or matrix of numeric values";
inline constexpr const char* kSizesOfData = "Data arrays x and y have mismatched sizes";
inline constexpr const char* kSizesOfDataExpected =
    "If x is a vector, it should have length equal to size(y, 1) or size(y, 2). "
    "Otherwise, x and y should have the same sizes";
inline constexpr const char* kTransposeOfPages = "Transpose should be applied to a scalar, vector or matrix";
inline std::string yDataMissing(int64_t k) {
  return fmt::format("Y-data not found after the {} input argument", ordinal(k));
}
inline constexpr const char* kScatterInputs = "Function {}() must have 2 or more input arguments";
inline std::string scatterSizes(int64_t k, int64_t m) {
  return fmt::format("Sizes of {} and {} input arguments do not match", ordinal(k), ordinal(m));
}
inline constexpr const char* kScatterSizesExpected = "They should be vectors having same numbers of elements";

// Specification strings
inline std::string invalidSpecification(const std::string& specification, int64_t k) {
  return fmt::format("'{}' in the {} input argument is not a valid specification string", specification, ordinal(k));
}
inline constexpr const char* kSpecOfPlot =
    "In plot(y, spec_1,...,spec_N), spec_i should be a character vector of specification string";
inline constexpr const char* kSpecOfStem =
    "In stem(y, spec_1,...,spec_N), spec_i should be 'filled' or a character vector of specification string";
inline constexpr const char* kSpecOfStemXY =
    "In stem(x,y,spec_1,...,spec_N), spec_i should be 'filled' or a character vector of specification string";
inline constexpr const char* kSpecOfStairs =
    "In stairs(y, spec_1,...,spec_N), spec_i should be a character vector of specification string";
inline constexpr const char* kSpecOfStairsXY =
    "In stairs(x,y,spec_1,...,spec_N), spec_i should be a character vector of specification string";
inline constexpr const char* kSpecOfScatter =
    "In scatter(x,y,spec_1,...,spec_N), spec_i should be 'filled' or a character vector of specification string";
inline constexpr const char* kArgumentOfScatter =
    "In scatter(x,y,c1,..,cM,Name1,Value1,...,NameN,ValueN), ci should be a real positive scalar (marker size), "
    "a vector of RGB values (marker color) or a character vector (line specification string)";

// Attributes
inline std::string unknownAttribute(int64_t k, const std::string& name) {
  return fmt::format("{}. Unknown attribute name '{}'", invalidArgument(k), name);
}
inline constexpr const char* kValueMissing = "The last input argument is an invalid attribute value";
inline std::string invalidLineWidth(int64_t k) {
  return fmt::format("Invalid line width in {} input argument", ordinal(k));
}
inline std::string invalidMarkerSize(int64_t k) {
  return fmt::format("Invalid marker size in {} input argument", ordinal(k));
}
inline constexpr const char* kPositiveSize = "It should be a positive real scalar";
inline constexpr const char* kInvalidLineStyle = "Invalid line style";
inline constexpr const char* kInvalidMarkerStyle = "Invalid marker style";
inline constexpr const char* kStyleWord = "It should be a character vector";
inline constexpr const char* kInvalidDisplayName = "Invalid input argument";
inline constexpr const char* kDisplayNameExpected = "A character vector is expected";
inline constexpr const char* kInvalidColor = "Invalid color value";
inline constexpr const char* kColorExpected = "It should be an RGB vector or a character vector";
inline constexpr const char* kInvalidRgb = "Invalid RGB vector";
inline constexpr const char* kRgbExpected = "It should have 3 real numbers in [0, 1]";

// hold, grid, legend
inline constexpr const char* kZeroOrOneInput = "Function {}() must have 0 to 1 input argument";
inline constexpr const char* kOnOrOff = "be a character vector equal to on or off";
inline constexpr const char* kLegendNames = "Input arguments of {}() should be character vectors";
inline constexpr const char* kLegendOfSurface = "The function legend() does not work in a surface plot";
inline std::string tooManyNames(int64_t lines) {
  return fmt::format("Number of names exceeds number of lines ({}) in the plot", lines);
}

// Labels
inline constexpr const char* kLabel = "be an array of numbers or characters";

// Limits
inline constexpr const char* kLimitsInputs = "{}() expects 0 or 1 input argument";
inline constexpr const char* kLimitsWord =
    "In {}(c) where c is a character array, c should be auto or manual or mode";
inline constexpr const char* kLimitsReal = "Input argument of {}() should be a vector of real numbers";
inline constexpr const char* kLimitsFinite =
    "Input argument of {}() should be a vector of two real numbers, not equal to NaN nor Inf";
inline constexpr const char* kLimitsOrder = "In {}([a, b]), a should be smaller than b";
inline constexpr const char* kLimitsKind =
    "{}() expects a vector of characters or numeric values as its input argument";
inline constexpr const char* kNoPlot = "No plot being shown";
inline constexpr const char* kNoSurface = "No surface plot being shown";

// Ticks
inline constexpr const char* kTicksWord = "It should be either auto or manual or mode";
inline constexpr const char* kTicksFinite = "be a vector of real numbers not equal to Inf nor NaN";
inline constexpr const char* kTicksKind = "It should be a vector of numbers or characters";
inline std::string ticksWithoutPlot(const std::string& name) {
  return fmt::format("Calling {}() has no effect, since a plot is absent", name);
}

// surf
inline constexpr const char* kSurfInputs = "Function {}() must have 1 or 3 input arguments";
inline constexpr const char* kRealMatrix = "be a matrix (2D) of real numbers";
inline constexpr const char* kSurfSizes = "In {}(x, y, z), all arguments should have the same sizes";

}  // namespace kelo::text
