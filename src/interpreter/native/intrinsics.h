// Built-in functions that native code computes without a call of their row, and what it calls of
// C++ besides. Each gives what the built-in gives for scalars of the kinds that typing.cpp lets
// pass.
#pragma once

#include <cstdint>

#include "interpreter/code.h"
#include "interpreter/native/lane_words.h"

namespace kelo::native {

struct Intrinsic {
  enum class Form : uint8_t {
    real,     ///< the number `value`
    logical,  ///< true or false
    complex, realPart, imaginaryPart, conjugate,
    isNaN,
  };

  const char* name;
  int32_t arguments;
  Form form;
  double value = 0;
};

/// Null: it is none.
const Intrinsic* intrinsicOf(const Site& site);

/// How many elements first:step:last has; negative where the machine must say something about it.
double rangeCount(double first, double step, double last) noexcept;

/// x(end + 1) = value on a vector, and x = [x, value] on a row, of doubles that nobody else holds;
/// `words` then tell where the array lies. 0, and nothing is done, where that is not so simple.
int64_t appendToVector(Storable* variable, Word* words, double value) noexcept;
int64_t appendToRow(Storable* variable, Word* words, double value) noexcept;

}  // namespace kelo::native
