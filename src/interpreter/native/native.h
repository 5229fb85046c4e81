// Native code for hot loops and for functions: all that the machine knows of it.
//
// The machine counts the rounds of a loop at its jump backwards (Instruction::d goes down) and the
// calls of a unit (Code::callsLeft). When a count is used up it asks here. What is worth it is
// translated for what the registers hold right then, at most a few times for different kinds.
//
// The native code of a loop leaves with all registers as the register code would have them, at any
// instruction. That of a unit cannot be seen from outside before it ends, so a call that meets a
// surprise is given up and done by the register code from its beginning: messages, places, the depth
// of calls and stops are those of the register code.
//
// Where there is no native code (another processor, no executable memory) the register code does
// all.
#pragma once

#include <atomic>
#include <span>

#include "interpreter/code.h"

namespace kelo::native {

inline constexpr int32_t kMostResults = 4;  ///< of a unit

/// What native code must know of the machine that it runs in.
struct Context {
  uint64_t run;                            ///< number of the run, in which a name keeps its meaning
  const LocalFunctionFile* functions;      ///< that the running code can call by name
  const std::atomic<bool>* stopRequest;
  bool mayCall;                            ///< whether calls are not too deeply nested for calls on the thread's stack
};

#if KELO_NATIVE
/// Whether native code can be made of the loop that the jump backwards at `back` closes, for some
/// kinds of what its registers hold.
bool mayBeNative(const Code& code, int32_t back);

/// `back` is a jump backwards that is being taken and whose count is used up. Gives the instruction
/// to go on with.
///
/// registers  of the running frame
const Instruction* enterLoop(const Context& context, const Code& code, Instruction& back, Storable* registers);

/// Calls a unit whose count of calls is used up. False, and nothing is done, where the register
/// code must.
///
/// context    of the caller, but with the functions that the unit can call by name
/// arguments  all inputs
/// captured   what the slots behind the inputs hold
/// results    registers for the first of what it gives; they may be among the arguments
bool callFunction(const Context& context, const Code& code, std::span<const Storable> arguments,
                  std::span<const Storable> captured, std::span<Storable* const> results);
#else
inline bool mayBeNative(const Code&, int32_t) { return false; }
inline const Instruction* enterLoop(const Context&, const Code& code, Instruction& back, Storable*) {
  back.d = INT32_MAX;
  return code.instructions.data() + jumpTarget(back);
}
inline bool callFunction(const Context&, const Code& code, std::span<const Storable>, std::span<const Storable>,
                         std::span<Storable* const>) {
  code.callsLeft = INT32_MAX;
  return false;
}
#endif

}  // namespace kelo::native
