// Texts of the functions on text and on structures. "{}" is a slot: the function's name in a
// sentence of a reader, else a word or a count.
#pragma once

namespace kelo::text {

inline constexpr const char* kNumberToTextCount = "{}() expects 1 or 2 input arguments";
inline constexpr const char* kStrcatShapes =
    "In {}(), an input argument should be either a row vector or a matrix, "
    "and all matrix inputs should have the same heights";
inline constexpr const char* kStrcatKinds =
    "In {}(), the input arguments should be arrays containing numerical values or characters";
inline constexpr const char* kCharacterArray = "be a character array";
inline constexpr const char* kNoInputOfNewline = "Function {}() expects no input argument";
inline constexpr const char* kCountOfCharacters = "be real integer, not equal to NaN";

inline constexpr const char* kFieldNameExpected = "The {} input argument should be a field name (character vector)";
inline constexpr const char* kFieldWithoutValue = "No value was assigned to the field \"{}\"";
inline constexpr const char* kDuplicatedField = "Duplicated field name \"{}\"";
inline constexpr const char* kStructureArray = "be a structure array";
inline constexpr const char* kFieldNotFound = "Field named \"{}\" not found";

}  // namespace kelo::text
