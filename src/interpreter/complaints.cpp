#include "interpreter/complaints.h"

#include <fmt/format.h>

namespace kelo {

Problem argumentComplaint(const std::string& name, const std::string& signature, const std::string& argument,
                          const std::string& predicate) {
  return expectation(fmt::format(text::kArgumentShould, name, signature, argument, predicate));
}

Problem inputCountComplaint(const std::string& name, Arity arity) {
  const auto [a, b] = arity;
  if (b >= kAny) return expectation(fmt::format(text::kInputsOrMore, name, a));
  if (a != b) return expectation(fmt::format(text::kInputsFromTo, name, a, b));
  return expectation(fmt::format(text::kInputs, name, a, a >= 2 ? "s" : ""));
}

Problem outputCountComplaint(const std::string& name, int most) {
  return expectation(fmt::format(text::kOutputsAtMost, name, most, most >= 2 ? "s" : ""));
}

Problem Wording::complaint(const char* functionName) const {
  if (signature != nullptr) return argumentComplaint(functionName, signature, argument, predicate);
  return expectation(fmt::format(fmt::runtime(argument), functionName));
}

}  // namespace kelo
