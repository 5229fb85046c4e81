// What is known of the registers while a loop or a unit runs, found before any code is made.
//
// Of each register is known what it holds: a number unboxed, an array, or something else that the
// native code leaves alone. An instruction together with what the registers hold before it is a
// Node: where two ways that hold different kinds meet, the instructions behind have a node for each,
// so that no node asks for a kind when it runs. What is more than a kind (that a number is whole) is
// true of a node when it is true on all ways to it.
//
// A node that the native code cannot do, or that lies outside the loop, is an exit: there the
// register code takes over. In a unit an exit is the end of it: the register code begins anew.
#pragma once

#include <optional>
#include <string>

#include "interpreter/native/liveness.h"
#include "interpreter/native/types.h"
#include "interpreter/native/version.h"

namespace kelo::native {

struct Node {
  int32_t pc = 0;
  State state;             ///< before the instruction
  bool isExit = false;
  bool isSurprise = false;  ///< an exit that does not end the loop
  int32_t next = -1;       ///< the node that follows
  int32_t jump = -1;       ///< the node of the jump, or of the next round
  int32_t call = -1;       ///< of a call: which of calls()
};

/// The operands that a call gives.
std::vector<int32_t> argumentsOf(const Code& code, const Instruction& i);

class Graph {
 public:
  /// The loop that the jump backwards at `back` closes, its body about to begin, with what the
  /// registers hold.
  Graph(const Context& context, const Code& code, const Liveness& liveness, int32_t back, Storable* registers);
  /// A whole unit, its first slots being inputs of these kinds and the others nothing.
  Graph(const Context& context, const Code& code, const Liveness& liveness, const Kinds& inputs);
  virtual ~Graph() = default;

  /// Finds the nodes. Whether a round can be done without an exit, or a call.
  bool explore();
  /// The first instruction that stands in the way; -1: none.
  int32_t obstacle() const { return obstacle_; }

  const Code& code() const { return code_; }
  const Context& context() const { return context_; }
  const std::vector<Node>& nodes() const { return nodes_; }  ///< the first is the entry
  bool isUnit() const { return values_ == nullptr; }
  const Kinds& inputs() const { return inputs_; }   ///< of a unit
  const Kinds& results() const { return results_; }  ///< of a unit
  bool callsItself() const { return callsItself_; }  ///< with inputs of whatever kinds
  const std::vector<KnownCall>& calls() const { return calls_; }
  const std::vector<int32_t>& noArrays() const { return noArrays_; }
  /// Whether some node reads or writes a register.
  bool isTouched(int32_t reg) const { return isTouched_[static_cast<size_t>(reg)]; }
  /// Where captured values lie in the words.
  int32_t firstCaptured() const { return Layout::of(registerCount()); }
  /// The registers of the frame and the fields behind them.
  int32_t registerCount() const { return code_.registers + static_cast<int32_t>(fields_.size()); }
  const std::vector<Field>& fields() const { return fields_; }

 protected:
  /// From the state before the instruction to that behind it, where it does not jump. False where
  /// native code does not do it.
  virtual bool step(const Instruction& i) = 0;
  /// What a jump that is taken changes besides; only the steps of loops change something.
  virtual bool takeJump(const Instruction& i) = 0;

  bool isTemporary(int32_t reg) const { return reg >= code_.slotCount() && !isField(reg); }
  bool isField(int32_t reg) const { return reg >= code_.registers; }
  /// Whether fields of the structure in this slot are registers.
  bool hasFields(int32_t slot) const;
  /// The register of the field that the instruction names; -1: it has none.
  int32_t fieldRegister(const Instruction& i) const;
  const Site& siteOf(const Instruction& i) const { return code_.sites[static_cast<size_t>(i.d)]; }
  const Storable& constantAt(int32_t operand) const { return code_.constants[static_cast<size_t>(~operand)]; }
  /// The constant number that an operand is.
  std::optional<double> numberAt(int32_t operand) const;
  /// What an operand is now, constants included.
  Type of(int32_t operand);
  /// The register of an array, aliases followed.
  int32_t arrayAt(int32_t reg) const;
  /// How many registers stand for the array of this one.
  int64_t aliasesOf(int32_t reg) const;
  /// A register gets a value; false where it may not.
  bool define(int32_t reg, Type type);
  /// Something becomes known of what it holds.
  void learn(int32_t reg, const Type& type);

  /// A unit gives what these operands are. False where it gives values of other kinds elsewhere.
  bool giveResults(std::span<const int32_t> operands);
  /// The call that the instruction makes with arguments of these kinds; false: it is not known.
  bool findCall(const Instruction& i, Kinds kinds);
  const Kinds& resultsOf(const KnownCall& call) const { return call.function ? call.function->results : results_; }
  /// Whether the slot holds no array when the loop is entered, which then is asked each time.
  bool mustNotBeArray(int32_t slot);

  State state_;
  bool emits_ = false;         ///< whether all is known, and code is being made
  bool makesArrays_ = false;   ///< of a unit
  int32_t call_ = -1;          ///< found by the step
  int32_t length_ = 1;         ///< how many instructions the step has done: a call may do the assignment behind it

 private:
  void visit(int32_t node);
  int32_t nodeFor(int32_t pc, State state);
  void resumeDeferred();

  const Context& context_;
  const Code& code_;
  const Liveness& liveness_;
  const Storable* const values_;  // of the registers; null for a unit
  const int32_t begin_, end_;     // first and last instruction
  const std::vector<Field> fields_;
  const Kinds inputs_;
  std::vector<Node> nodes_;
  std::vector<std::vector<int32_t>> nodesAt_;  // by instruction
  std::vector<int32_t> waiting_;
  std::vector<int32_t> deferred_;  // calls of the unit itself, until it is known what it gives
  bool awaitsResult_ = false, callsItself_ = false, closes_ = false;
  Kinds results_;
  std::vector<KnownCall> calls_;
  std::vector<int32_t> noArrays_;
  std::vector<bool> isTouched_;
  int32_t capturedWords_ = 0;
  int32_t obstacle_ = -1;
};

}  // namespace kelo::native
