// The standard sentences about arguments. Each gives a Problem with only the expectation set.
#pragma once

#include <string>

#include "interpreter/builtin.h"
#include "messages/message.h"

namespace kelo {

/// "In NAME(SIGNATURE), ARGUMENT should PREDICATE"
Problem argumentComplaint(const std::string& name, const std::string& signature, const std::string& argument,
                          const std::string& predicate);
/// "Function NAME() must have N input argument(s)", "... A to B input arguments", "... N or more
/// input arguments"
Problem inputCountComplaint(const std::string& name, Arity arity);
/// "Function NAME() must have at most B output argument(s)"
Problem outputCountComplaint(const std::string& name, int most);

/// The words of one complaint about one argument, kept as they are until they are needed.
///
/// With a signature: "In NAME(SIGNATURE), ARGUMENT should PREDICATE". Without (sentence()):
/// `argument` is the whole sentence, in which "{}" stands for the function's name.
struct Wording {
  const char* signature;
  const char* argument;
  const char* predicate;

  static constexpr Wording sentence(const char* text) { return {nullptr, text, nullptr}; }
  Problem complaint(const Call& call) const { return complaint(call.builtin.name); }
  Problem complaint(const char* functionName) const;
};

/// The predicates in use, so that a complaint reads the same everywhere.
namespace predicate {
inline constexpr const char* kNumericArray = "be a numeric array";
inline constexpr const char* kArray = "be an array";
inline constexpr const char* kArrayOfNumbers = "be an array of numbers";
inline constexpr const char* kMatrixOfNumbers = "be a matrix of real or complex numbers";
inline constexpr const char* kSquareNumericMatrix = "be a square numeric matrix";
inline constexpr const char* kNumericMatrix = "be a numeric matrix";
inline constexpr const char* kNumericMatrix2D = "be a numeric matrix (2D)";
inline constexpr const char* kVectorOfNumbers = "be a vector of numbers";
inline constexpr const char* kVectorOfNumericValues = "be a vector of numeric values";
inline constexpr const char* kVectorOfComplexOrReal = "be a vector of complex or real numbers";
inline constexpr const char* kVectorOfTwoOrMore = "be a vector of at least 2 elements";
inline constexpr const char* kVectorOfTwoNumbers = "be a vector of 2 numbers";
inline constexpr const char* kNonNegativeScalar = "be a non-negative real scalar";
inline constexpr const char* kNonNegativeInteger = "be a non-negative real integer scalar";
inline constexpr const char* kPositiveInteger = "be a real positive integer scalar";
inline constexpr const char* kInteger = "be a real integer scalar";
inline constexpr const char* kFiniteInteger = "be a real integer scalar not equal to Inf nor NaN";
inline constexpr const char* kNumericScalar = "be a numeric scalar";
inline constexpr const char* kCharacterVector = "be a character vector";
inline constexpr const char* kCharacterVectorEqualTo = "be a character vector equal to";
inline constexpr const char* kEmptyOrStructure = "be an empty array or a structure";
}  // namespace predicate

}  // namespace kelo
