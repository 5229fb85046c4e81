// What is wrong with a coded text, or why a value has none.
#pragma once

#include <stdexcept>

namespace kelo::figures {

struct CodingError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace kelo::figures
