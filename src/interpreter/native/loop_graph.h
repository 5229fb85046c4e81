// What is known of the registers while a loop runs, found before any code is made.
//
// The registers that a loop touches are its lanes. Of each lane is known what it holds: a number
// unboxed, an array that is only indexed, or something else that the native code leaves alone. An
// instruction together with what the lanes hold before it is a Node: where two ways that hold
// different kinds meet, the instructions behind have a node for each, so that no node asks for a
// kind when it runs. What is more than a kind (that a number is whole, that an array is nobody
// else's) is true of a node when it is true on all ways to it.
//
// A node that the native code cannot do, or that lies outside the loop, is an exit: there the
// register code takes over.
#pragma once

#include <string>
#include <vector>

#include "interpreter/code.h"
#include "interpreter/native/function_code.h"
#include "interpreter/native/operands.h"
#include "interpreter/native/types.h"

namespace kelo::native {

struct Node {
  int32_t pc = 0;
  State state;             ///< before the instruction
  bool isExit = false;
  bool isSurprise = false;  ///< an exit that does not end the loop
  int32_t next = -1;       ///< the node that follows
  int32_t jump = -1;       ///< the node of the jump, or of the next round
  int32_t call = -1;       ///< of a call: which of the graph's
};

/// A call of a unit that is native code too.
struct KnownCall {
  int32_t pc = 0;
  Target target;
  std::vector<int32_t> operands;
  std::vector<int32_t> targets;  ///< registers for the results
  Kinds inputs;             ///< of the operands and of what is captured
  FunctionRef function;     ///< null: the function whose graph this is
  int32_t firstCaptured = 0;  ///< word, behind those of the lanes, for the first captured value
};

class LoopGraph {
 public:
  /// The loop that the jump backwards at `back` closes, its body about to begin, with what the
  /// registers hold.
  LoopGraph(const Code& code, const Liveness& liveness, int32_t back, const Storable* registers,
            const Context& context);
  /// A whole unit, its first slots being inputs of these kinds and the others nothing. An exit is
  /// the end of it: the register code begins anew.
  LoopGraph(const Code& code, const Liveness& liveness, const Kinds& inputs, const Context& context);

  /// Whether a round can be done without an exit, or a call, and the graph is not too large.
  bool isWorthwhile() const { return closes_ && !isTooLarge_ && (!isFunction() || !results_.empty()); }
  /// The first instruction that stands in the way; -1: none.
  int32_t obstacle() const { return obstacle_; }

  int32_t laneOf(int32_t reg) const { return laneOf_[static_cast<size_t>(reg)]; }
  const std::vector<int32_t>& registers() const { return registers_; }  ///< of the lanes
  const std::vector<Node>& nodes() const { return nodes_; }             ///< the first is the entry
  const Code& code() const { return code_; }
  bool isFunction() const { return values_ == nullptr; }
  const Kinds& inputs() const { return inputs_; }              ///< of a function
  const std::vector<Held>& results() const { return results_; }  ///< of a function
  const std::vector<KnownCall>& calls() const { return calls_; }
  const std::vector<Held>& resultsOf(const KnownCall& call) const {
    return call.function ? call.function->results : results_;
  }
  int32_t capturedWords() const { return capturedWords_; }
  /// What an operand is in a state, constants included.
  Type typeOf(const State& state, int32_t operand) const;
  /// The lane of an array, aliases followed.
  int32_t arrayLane(const State& state, int32_t reg) const;

  // ---- For the typing of instructions
  /// The call that the instruction makes with arguments of these kinds; -1: it is not known.
  int32_t callOf(const Instruction& i, Kinds kinds);
  /// Whether the slot holds no array when the loop is entered, which then is asked each time.
  bool mustNotBeArray(int32_t slot);
  const std::vector<int32_t>& noArrays() const { return noArrays_; }
  /// A function gives what these operands are. False where it gives values of other kinds elsewhere.
  bool giveResults(const State& state, std::span<const int32_t> operands);

 private:
  void build();
  void findLanes();
  void visit(int32_t node);
  int32_t nodeFor(int32_t pc, const State& state);
  void forgetUnneeded(int32_t pc, State& state) const;

  const Code& code_;
  const Liveness& liveness_;
  const Context& context_;
  const Storable* const values_;  // of the registers; null for a function
  const int32_t begin_, end_;  // first and last instruction
  std::vector<int32_t> laneOf_, registers_;
  std::vector<Node> nodes_;
  std::vector<std::vector<int32_t>> nodesAt_;  // by instruction from begin_ on; behind them those outside
  std::vector<int32_t> waiting_;
  std::vector<int32_t> deferred_;  // calls of the function itself, until the kind of its result is known
  bool awaitsResult_ = false;
  Kinds inputs_;
  std::vector<Held> results_;
  std::vector<KnownCall> calls_;
  std::vector<int32_t> noArrays_;
  int32_t capturedWords_ = 0;
  bool closes_ = false, isTooLarge_ = false;
  int32_t obstacle_ = -1;
};

}  // namespace kelo::native
