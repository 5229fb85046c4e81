#include "messages/catalogue/indexing.h"

#include <fmt/format.h>

#include "messages/catalogue/values.h"

namespace kelo::text {

std::string indexExceedsDimension(int64_t k) {
  return fmt::format("Index exceeds the {} dimension's length", ordinal(k));
}

std::string subscriptLengthExpected(int64_t k) {
  return fmt::format("In the assignment of A(I1, I2, ...) = B, length(I{}) == size(B, {}) is expected", k, k);
}

std::string vectorOfElementsExpected(int64_t n) {
  return fmt::format("In the assignment of A(I1, I2, ...) = B, B is expected to be a vector of {} element{}", n,
                     n > 1 ? "s" : "");
}

std::string deletionExceedsDimension(int64_t k) {
  return fmt::format("In A(s1,s2,...,sN) = [], s{} should not exceed size(A, {})", k, k);
}

std::string shouldBeArray(const std::string& name) { return fmt::format("\"{}\" should be an array", name); }

std::string shouldBeStructure(const std::string& name) {
  return fmt::format("\"{}\" should be a structure array", name);
}

std::string notAStructure(const std::string& field) {
  return fmt::format("Dot operator after the field \"{}\" is not allowed since it is not a struct", field);
}

std::string fieldNotFound(const std::string& field) {
  return fmt::format("Field \"{}\" not found in the structure", field);
}

}  // namespace kelo::text
