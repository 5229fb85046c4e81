// Texts of indexing: reading and writing elements, deletion, structure chains and fields.
#pragma once

#include <cstdint>
#include <string>

namespace kelo::text {

// Index values.
inline constexpr const char* kNoIndex = "No index is provided in an attempt to access array elements";
inline constexpr const char* kIndexEvaluationFailed = "Failed to evaluate an index array";
inline constexpr const char* kIndexNotNumeric = "Array indices are expected to be integer arrays";
inline constexpr const char* kIndexNotPositiveWhole =
    "Array indices are expected to be real positive integers equal to neither Inf nor NaN";
inline constexpr const char* kEndOfEmptyArray = "The operator \"end\" should not be used for an empty array";
inline constexpr const char* kEndOutsideIndex = "Invalid use of the keyword 'end'";

// Reading.
inline constexpr const char* kIndexExceedsArray = "Index exceeds array dimension";
inline constexpr const char* kIndexExceedsArrayExpected =
    "In the expression a(ind), where ind is an array of indexes, the maximum element of ind should be <= numel(a)";
inline constexpr const char* kIndexedNotArray = "In the statement A(I) or A(I1, I2, ...), A should be an array";
inline constexpr const char* kIndexedNotArrayOrHandle =
    "In the statement A(I) or A(I1, I2, ...), A should be an array or a function handle";
std::string indexExceedsDimension(int64_t k);

// Writing.
inline constexpr const char* kAssignedNotArray = "In the assignment A(I) = B, B should be an array";
inline constexpr const char* kAssignedEvaluationFailed = "Failed to evaluate B in the assignment A(I) = B";
inline constexpr const char* kAssignedInvalidType = "In the assignment A(I) = B, B has an invalid data type";
inline constexpr const char* kAssignmentTargetNotArray =
    "In the sub-array assignment A(I) = B, A and B must be an array";
inline constexpr const char* kDataTypesMismatch = "Data types mismatch";
inline constexpr const char* kDataTypesMismatchExpected = "In assignment A(I) = B, A and B should have same data types";
inline constexpr const char* kArraySizesMismatch = "Array sizes mismatch";
inline constexpr const char* kSameCountExpected =
    "In the assignment A(I) = B, where B is non-scalar, I and B are expected to have number of elements";
inline constexpr const char* kSameCountExpectedOfStructures =
    "In the assignment of the form A(I) = B, where B is non-scalar, I and B are expected have number of elements";
inline constexpr const char* kSameLengthsExpected = "In assignment A(I) = B, I and B should have same lengths";
inline constexpr const char* kScalarExpected = "In the assignment A(I1, I2, ...) = B, B is expected to be scalar";
inline constexpr const char* kIndexExceedsTotal = "Index exceeds total number of array elements";
inline constexpr const char* kSameFieldsExpected =
    "In the assignment A(I) = B, where both A and B are structure arrays, they should have the same fields";
inline constexpr const char* kAssignmentFailed = "Unexpected error occurred while performing array assignment";
std::string subscriptLengthExpected(int64_t k);
std::string vectorOfElementsExpected(int64_t n);

// Deletion.
inline constexpr const char* kDeletionExceedsArray =
    "In the assignment A(I) = [], I exceeds the number of elements in A";
inline constexpr const char* kOnePartialDimension =
    "At most one partially indexed dimension is expected in a null assignment";
std::string deletionExceedsDimension(int64_t k);

// Structure chains and fields.
inline constexpr const char* kStructureScalarExpected = "In the assignment a.b = c, a should be a structure scalar";
inline constexpr const char* kStructureAssignmentFailed =
    "Unexpected error occurred while performing structure assignment";
inline constexpr const char* kEmptyStructureHasNoField = "An empty structure array has no field";
inline constexpr const char* kFieldOfMultipleOutputs =
    "Accessing a field of multiple outputs simultaneously is not permitted";
inline constexpr const char* kFieldNameNotText =
    "In an expression of the form s.(a), a should be a vector of characters";
inline constexpr const char* kFieldNameEvaluationFailed = "Failed to evaluate the given field name";
std::string shouldBeArray(const std::string& name);
std::string shouldBeStructure(const std::string& name);
std::string notAStructure(const std::string& field);
std::string fieldNotFound(const std::string& field);

}  // namespace kelo::text
