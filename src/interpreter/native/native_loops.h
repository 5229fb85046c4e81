// Native code for hot loops of numbers: the one thing that the machine knows of it.
//
// The machine counts the rounds of a loop at its jump backwards (Instruction::d goes down). When
// the count is used up it asks here. A loop that is worth it is translated for what its registers
// hold right then, at most a few times for different kinds, and from then on entered where the jump
// leads, as long as the registers hold those kinds. The native code leaves with all registers as
// the register code would have them.
//
// Where there is no native code (another processor, no executable memory) the answer is always the
// jump's own target.
#pragma once

#include "interpreter/native/context.h"

namespace kelo::native {

#if KELO_NATIVE
/// Whether native code can be made of the loop that the jump backwards at `back` closes, for some
/// kinds of what its registers hold.
bool mayBeNative(const Code& code, int32_t back);

/// `back` is a jump backwards that is being taken and whose count is used up. Gives the instruction
/// to go on with.
///
/// registers  of the running frame
const Instruction* enterLoop(const Context& context, const Code& code, Instruction& back, Storable* registers);
#else
inline bool mayBeNative(const Code&, int32_t) { return false; }
inline const Instruction* enterLoop(const Context&, const Code& code, Instruction& back, Storable*) {
  back.d = INT32_MAX;
  return code.instructions.data() + (back.op == Op::rangeStep || back.op == Op::arrayStep ? back.c : back.a);
}
#endif

}  // namespace kelo::native
