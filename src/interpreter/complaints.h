// The standard sentences about arguments. Each gives a Problem with only the expectation set.
#pragma once

#include <string>

#include "interpreter/builtin.h"
#include "messages/catalogue/arguments.h"
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

}  // namespace kelo
