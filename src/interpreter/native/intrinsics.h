// Built-in functions that native code computes without a call of their row, beside those of
// quick_calls.h. Each gives what the built-in gives for scalars of these kinds.
#pragma once

#include "interpreter/code.h"
#include "interpreter/native/types.h"

namespace kelo::native {

struct Intrinsic {
  enum class Form : uint8_t { constant, complex, realPart, imaginaryPart, isNaN };

  const char* name;
  int32_t arguments;
  Form form;
  Held result;
  double value = 0;
};

/// Null: it is none.
const Intrinsic* intrinsicOf(const Site& site);

}  // namespace kelo::native
