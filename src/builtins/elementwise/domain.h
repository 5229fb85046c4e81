// Where functions of real numbers give real results.
#pragma once

#include <cstdint>

namespace kelo::builtins {

/// NaN counts as inside, but not in unitInterval. NOTE: intended.
enum class Domain : uint8_t { everywhere, fromZero, withinOne, fromOne, beyondOne, unitInterval };

/// Whether some of n numbers lie outside.
bool anyOutside(Domain domain, const double* x, int64_t n);

}  // namespace kelo::builtins
