// Code: what a text is lowered to, once, before it runs.
//
// A unit of code is one function, one script, one text of the console or the body of one handle. It
// is a row of instructions for a machine of registers. The first registers of a unit are its slots:
// one for each name that it mentions as a variable or a function, in the order of mention, those of
// a function's inputs first. The registers behind them are temporaries, which the lowering hands
// out like a stack. An operand is a register, or, when it is negative, a constant: ~k is constant
// k. A temporary that an instruction reads is used up by it; a slot or a constant is only looked
// at.
//
// Beside each instruction stands the node whose place its messages name. What an instruction needs
// beyond five numbers, such as the names and the counts of a call, stands in a Site. Messages that
// enclosing expressions add when one inside them fails, and the question for a stop behind a failed
// statement, are Regions: spans of instructions, the inner ones first, looked at only when a
// failure passes.
//
// Nothing in a unit belongs to a call, but for what an instruction remembers of its last run to be
// faster in its next: where a field stood, what a name was found to mean. `kelo --code` prints the
// code of a text.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "interpreter/builtin.h"
#include "values/function_bodies.h"
#include "values/operators.h"

namespace kelo {

class KeloNode;
struct Code;
struct FunctionUnit;

namespace native {
struct HotUnit;
}

/// a, b, ... are the operands of an instruction.
enum class Op : uint16_t {
  // a = b OP c; in the order of BinaryOp
  plus, minus, dmult, mult, eqeq, neq, le, lt, ge, gt, dpower, power, ldivide, mldivide, mrdivide, rdivide, and_, or_,
  // a = OP b; in the order of UnaryOp
  unaryPlus, unaryMinus, not_,
  transpose,      // a = b'; c: whether conjugates; flag: for a product, which may take b as it is
  range,          // a = range of the c operands from b on
  rangeArgument,  // the same as argument e of site d: positions where an array is indexed
  joinRow,        // a = the c values from b on, side by side
  appendRow,      // slot a = slot a and the c values from b on, side by side
  appendText,     // slot a = strcat of itself and the other arguments of site d; b: a temporary
  joinRows,       // a = the c rows from b on, one below the other
  checkElement,   // b is an array, or several
  checkRange,     // b is numeric

  begin,          // the first of each unit; a call is taken up behind the instruction that made it
  move,           // a = b
  loadName,       // a = what the name in slot b means, which may be the result of a call
  assign,         // slot a = b, or the first of several
  assignList,     // the slots of site d = the values b; flag: shows
  firstOf,        // a = b, or the first of several; c: the complaint (text index) where there is none
  store,          // slot a (subscripts from b on) = c; of site d
  store1,         // slot a (b) = c; site d
  store2,         // slot a (b, c) = e; site d
  checkTarget,    // slot a may be written with subscripts
  erase,          // slot a (subscripts from b on) = []; site d

  index,          // a = register b (arguments of site d), or a call of it
  // Of these two and fieldOfName: an element or field that is there goes at once to the slot that the
  // next instruction would assign it to. flag, d of fieldOfName: 1 more than the slot; 0: none.
  index1,         // a = register b (c), likewise
  index2,         // a = register b (c, e)
  call,           // a = call of the name in slot b, which seems to be no variable; site d
  builtin,        // a = built-in of site d with its arguments
  quickCall,      // a = built-in of site d, of one or two arguments b and c; e: which (quick_calls.h)
  endOf,          // a = `end` in subscript b of site d
  colon,          // a = ":" as argument b of site d
  checkExtent,    // subscript b of site d, which holds `end`, has something to end
  checkArgument,  // a, argument b of site d, can be used; c: also as a number
  makeHandle,     // a = the handle of site d

  checkStructure, // the name in slot b is a structure
  fieldOfName,    // a = field c of the structure in slot b
  fieldPath,      // a = what the fields of site d lead to from slot b, and to c; else further, nothing being done
  field,          // a = field c of b, which was read from d (a name)
  elementField,   // a = field e of slot b (c); site d
  checkField,     // b is one value, to be gone further into
  namedField,     // a = field whose name is in c, of b, which was read from d (a name)
  setField,       // field b of slot a = c
  setNamedField,  // field of slot a whose name is in b = c
  setPath,        // slot a, along the fields of site d, = c
  setElementField,  // field b of slot a (c) = e; site d
  setFieldElement,  // field b of slot a, (c) = e
  setFieldElement2,  // field b of slot a, (c, d) = e
  makeStructure,  // a = structure of the fields of site d with the values from b on
  // The general way; see Machine.
  chainBegin, checkChain, chainIndices, chainField, chainNamedField, chainAssign, chainErase,

  jump,           // to a
  jumpOnTruth,    // to a if "all of b is true" is the flag; c: the complaint
  jumpOnEqual, jumpOnUnequal, jumpOnLe, jumpOnLt, jumpOnGe, jumpOnGt,  // to a if "b OP c" is the flag
  forRange,       // registers from a on = the range of the c operands from b on
  rangeStep,      // slot b = next of the range at a, and to c; else further
  forArray,       // registers from a on = the array b
  arrayStep,      // slot b = next element of the array at a, and to c; else further
  checkSwitch,    // b can be compared by a switch; c: the complaint
  caseJump,       // to a unless b equals c

  answer,         // slot a, that of `ans`, = b; flag: shows
  nameStatement,  // b is what the name in slot a, alone in a statement, gave; c: slot of `ans`; flag: shows
  showName,       // shows slot a
  poll,           // asks for a stop
  fail,           // shows text a; flag: and nothing more, the nesting being too deep
  returnFunction, // the end of a function or a script
  returnValue,    // b is the result of a handle
};
inline constexpr Op operator+(Op op, int n) { return static_cast<Op>(static_cast<int>(op) + n); }

struct Instruction {
  Op op;
  uint16_t flag = 0;  ///< what the operation says; of the field operations: where the field stood
  /// Of a jump backwards d is how many rounds are left until the loop is looked at, e its number
  /// (native.h).
  int32_t a = 0, b = 0, c = 0, d = 0, e = 0;
};

/// The operand that says where an instruction may go on other than at the next; null: it never
/// jumps.
int32_t* jumpOperand(Instruction& i);
/// What it says; -1: nowhere.
int32_t jumpTarget(const Instruction& i);

/// NAME(ARGS) or a value with parentheses behind it: a call, an index, or the target of an
/// assignment.
struct Site {
  KeloNode* node = nullptr;
  Name name;
  int32_t base = 0;         ///< register of what is indexed or called
  bool isSlot = true;       ///< of a name; otherwise a temporary with a value
  bool isTarget = false;    ///< of an assignment: `end` of nothing is 0
  bool isChain = false;     ///< of an assignment along fields: `end` asks how far it has come
  int32_t first = 0;        ///< temporaries for the arguments
  int32_t count = 0;        ///< of the arguments
  int outputs = 0;
  int32_t outer = -1;       ///< the site in whose argument this one stands, and which argument: `end` looks there
  int32_t outerArgument = 0;
  std::vector<bool> hasEnd;           ///< of each argument: whether it holds the keyword `end`
  std::vector<KeloNode*> arguments;
  const Builtin* row = nullptr;       ///< of a built-in
  std::vector<int32_t> slots;         ///< of an assignment to several names, of what a handle captures
  std::vector<Name> fields;           ///< of a path of fields
  Ref<HandleBody> handle;             ///< of a handle as it is written
  std::vector<int32_t> handedOver;    ///< slots among the arguments that the statement overwrites with the outputs

  // What the last call found, good for one run. The code is that of a call that gives all inputs,
  // else null.
  uint64_t run = 0;
  const LocalFunctionFile* functions = nullptr;  // of the caller
  FunctionUnit* target = nullptr;
  const Code* targetCode = nullptr;
  LocalFunctionFile* targetFunctions = nullptr;
  int64_t targetIndex = -1;  // of the local function that the name held as a variable; -1: the name held nothing
};

/// What a failure adds on its way out of a span of instructions.
struct Region {
  enum class Kind : uint8_t {
    list,      ///< a stop is looked for, at `node`
    message,   ///< `text` is shown, at `node`
    argument,  ///< an argument or a subscript could not be evaluated, as what slot `site.base` holds decides
  };
  Kind kind;
  int32_t begin, end;  ///< first instruction, and one behind the last
  KeloNode* node;
  const char* text = nullptr;
  int32_t site = -1;
};

struct Code {
  std::vector<Instruction> instructions;
  std::vector<KeloNode*> places;      ///< of each instruction
  std::vector<Storable> constants;
  std::vector<Name> slots;            ///< the names of the first registers
  std::vector<Name> names;            ///< of fields
  std::vector<std::string> texts;     ///< of complaints
  std::vector<Site> sites;
  std::vector<Region> regions;
  int32_t registers = 0;              ///< slots and temporaries
  std::vector<int32_t> outputs;       ///< slots of a function's outputs
  int32_t onlyOutput = -1;            ///< the slot, where there is one output
  mutable std::shared_ptr<native::HotUnit> native;  ///< what has become of its loops and calls
  mutable int32_t callsLeft = 0;      ///< until native code is asked (native.h)

  int32_t slotCount() const { return static_cast<int32_t>(slots.size()); }
  /// The slot of a name; -1 when it has none.
  int32_t slotOf(Name name) const;
};

/// The slots to which the instruction behind a call assigns what the call leaves in `result`,
/// showing none; null: it does something else.
const std::vector<int32_t>* slotsBehind(const Code& code, const Instruction& call, int32_t result);

}  // namespace kelo
