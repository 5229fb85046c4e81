// Native code for functions and handles: the one thing that the machine knows of it.
//
// A unit that has been called some thousand times, or by a hot loop, is translated whole, for the
// kinds of its inputs, if all that it does is to compute scalars from scalars, from elements of
// arrays and from other such functions. What it does can then not be seen from outside, so a call
// that meets a surprise is given up and done by the register code from its beginning: messages,
// places, the depth of calls and stops are those of the register code.
#pragma once

#include <span>

#include "interpreter/native/context.h"

namespace kelo::native {

/// Calls a unit whose count of calls is used up (Code::callsLeft). False, and nothing is done,
/// where the register code must.
///
/// context    of the caller, but with the functions that the unit can call by name
/// arguments  all inputs
/// captured   what the slots behind the inputs hold
/// results    registers for the first of what it gives; they may be among the arguments
#if KELO_NATIVE
bool callFunction(const Context& context, const Code& code, std::span<const Storable> arguments,
                  std::span<const Storable> captured, std::span<Storable* const> results);
#else
inline bool callFunction(const Context&, const Code& code, std::span<const Storable>, std::span<const Storable>,
                         std::span<Storable* const>) {
  code.callsLeft = INT32_MAX;
  return false;
}
#endif

}  // namespace kelo::native
