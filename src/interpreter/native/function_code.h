// The native code of a unit for certain kinds of its inputs, and what calls in loops and functions
// lead to.
#pragma once

#include <span>

#include "interpreter/native/code_block.h"
#include "interpreter/native/context.h"
#include "interpreter/native/lane_words.h"
#include "interpreter/native/types.h"

namespace kelo::native {

struct FunctionCode;
using FunctionRef = std::shared_ptr<FunctionCode>;

using Kinds = std::vector<Type>;  ///< of what is passed; see kindOf

struct FunctionCode {
  Kinds inputs;  ///< what is captured included
  std::vector<Held> results;
  uint64_t run = 0;
  const LocalFunctionFile* functions = nullptr;
  std::unique_ptr<CodeBlock> block;
  uint64_t bodyOffset = 0;            ///< of a function of the words' header and the inputs
  uint64_t entryOffset = 0;           ///< of one that has its inputs and its result in the words
  std::vector<FunctionRef> callees;   ///< which it calls
  int64_t calls = 0, failures = 0;    ///< of the register code's calls
  bool isGivenUp = false;             ///< or could not be made
  bool isShort = false;               ///< no loop, no call: the register code is as fast as the way in

  /// Whether it is good in this run, and for what names mean there.
  bool isGoodIn(const Context& context) const {
    return !isGivenUp && run == context.run && functions == context.functions;
  }
  void enter(Word* words) const { block->at<void(Word*)>(entryOffset)(words); }
};

/// What a call leads to, as far as native code knows such calls.
struct Target {
  const Code* code = nullptr;  ///< null: something else
  const LocalFunctionFile* functions = nullptr;
  std::span<const Storable> captured;

  bool isSame(const Target& other) const { return code == other.code && functions == other.functions; }
};

/// registers  of the running frame; null in a function about to begin, whose slots hold nothing
Target targetOf(const Context& context, const Code& code, const Instruction& i, const Storable* registers);

/// The operands that a call gives.
std::vector<int32_t> argumentsOf(const Code& code, const Instruction& i);
/// The registers that get its results: its own, or those of the assignment to several names behind
/// it.
std::vector<int32_t> targetsOf(const Code& code, const Instruction& i);

/// The code for these kinds, translated now if need be; null where there can be none.
FunctionRef functionFor(const Context& context, const Code& code, const Kinds& inputs);

/// A value that is passed, as it lies in words. REQUIRES: it is of this kind
inline void pass(const Storable& value, const Type& kind, Word* words) {
  switch (kind.held) {
    case Held::logical: words->word = value.numeric()->asLogical().scalar() ? 1u : 0u; return;
    case Held::character: words->word = value.numeric()->asChar().scalar().word(); return;
    case Held::integer: words->whole = value.numeric()->asInt().scalar(); return;
    case Held::array: return describe(*value.numeric(), words);
    default: words->number = value.doubleScalar();
  }
}

/// Fills in what native code looks at while it runs.
void fillHeader(const Context& context, Word* words);

}  // namespace kelo::native
