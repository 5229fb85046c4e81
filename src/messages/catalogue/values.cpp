#include "messages/catalogue/values.h"

#include <fmt/format.h>

namespace kelo::text {

std::string ordinal(int64_t n) {
  const char* ending = n == 1 ? "st" : n == 2 ? "nd" : n == 3 ? "rd" : "th";
  return std::to_string(n) + ending;
}

std::string functionToChars(const std::string& name) {
  return "Cannot convert a function to characters. Did you mean the function handle @" + name;
}

std::string linearIndexExceeds(int64_t index, int64_t numElements) {
  return fmt::format("A given linear index ({}) exceeds the total number of elements ({})", index, numElements);
}

std::string subscriptExceeds(int64_t k) {
  return fmt::format(
      "When converting subscript indexes to linear index, the {} subscript index exceeds the dimension length",
      ordinal(k));
}

}  // namespace kelo::text
