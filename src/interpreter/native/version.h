// The native code of a loop or a unit for certain kinds of values, and what calls lead to.
#pragma once

#include <memory>
#include <span>

#include "interpreter/native/fields.h"
#include "interpreter/native/words.h"

namespace kelo::native {

struct Version;
using VersionRef = std::shared_ptr<Version>;

/// What a call leads to, as far as native code knows such calls.
struct Target {
  const Code* code = nullptr;  ///< null: something else
  const LocalFunctionFile* functions = nullptr;
  std::span<const Storable> captured;
};

/// registers  of the running frame; null in a unit about to begin, whose slots hold nothing
Target targetOf(const Context& context, const Code& code, const Instruction& i, const Storable* registers);

/// A call of a unit that is native code too.
struct KnownCall {
  int32_t pc = 0;
  Target target;
  std::vector<int32_t> operands;
  Kinds inputs;            ///< of the operands and of what is captured
  VersionRef function;     ///< null: the unit that makes the call
  int32_t firstCaptured = 0;  ///< byte among the words
};

/// A register and what it holds.
struct Place {
  int32_t reg;
  Type type;
};

struct Version {
  uint64_t run = 0;
  const LocalFunctionFile* functions = nullptr;
  std::shared_ptr<const std::byte> block;  ///< executable; null: there can be none
  bool isGivenUp = false;            ///< though others may still call it
  std::vector<Place> entry;          ///< what must be there; of a unit its inputs
  std::vector<KnownCall> calls;
  int64_t done = 0, surprises = 0;   ///< rounds or calls, and how many ended as they should not

  // Of a loop
  struct Exit {
    int32_t pc;
    bool isSurprise;
    std::vector<Place> changed;
  };
  std::vector<Exit> exits;
  std::vector<int32_t> noArrays;  ///< registers
  std::vector<Field> fields;      ///< the registers behind those of the frame

  // Of a unit
  Constants constants;
  Kinds inputs;  ///< what is captured included
  Kinds results;
  uint64_t bodyOffset = 0;   ///< of a function of the words and the inputs
  uint64_t entryOffset = 0;  ///< of one that has its inputs and its first result in the words
  bool isForUnits = false;   ///< the register code would do it as fast, or may not enter it

  bool isUsable() const { return block && !isGivenUp; }
  /// Whether it is good in this run, and for what names mean there.
  bool isGoodIn(const Context& context) const { return run == context.run && functions == context.functions; }
  /// Whether it ends as it should not too often.
  bool isWasteful() const { return surprises >= 32 && done < surprises * 4; }
};

/// The unit's code for inputs of these kinds, translated now if need be; null where there can be
/// none.
VersionRef versionFor(const Context& context, const Code& code, const Kinds& inputs);

}  // namespace kelo::native
