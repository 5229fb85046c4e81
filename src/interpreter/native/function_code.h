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

using Kinds = std::vector<Held>;

struct FunctionCode {
  Kinds inputs;  ///< what is captured included
  Held result = Held::other;
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

/// The code for these kinds, translated now if need be; null where there can be none.
FunctionRef functionFor(const Context& context, const Code& code, const Kinds& inputs);

/// A scalar that is passed.
inline Word wordOf(const Storable& value, Held held) {
  switch (held) {
    case Held::logical: return {.word = value.numeric()->asLogical().scalar() ? 1u : 0u};
    case Held::integer: return {.whole = value.numeric()->asInt().scalar()};
    default: return {.number = value.doubleScalar()};
  }
}

/// Fills in what native code looks at while it runs.
void fillHeader(const Context& context, Word* words);

}  // namespace kelo::native
