// What an instruction makes of what the lanes hold. It says false where native code does not do the
// instruction; what it lets pass, emitter.h makes code of.
#pragma once

#include "interpreter/native/loop_graph.h"

namespace kelo::native {

class Typing {
 public:
  Typing(LoopGraph& graph, State& state) : graph_(graph), state_(state) {}

  /// From the state before the instruction to that behind it, where it does not jump.
  bool step(const Instruction& i);
  /// What a jump that is taken changes besides; only the steps of loops change something.
  bool takeJump(const Instruction& i);
  /// Which of the graph's calls the instruction makes; -1: none.
  int32_t call() const { return call_; }
  /// How many instructions have been done: a call may do the assignment behind it.
  int32_t length() const { return length_; }

 private:
  Type of(int32_t operand) const { return graph_.typeOf(state_, operand); }
  bool define(int32_t reg, Type type);
  bool copy(int32_t to, int32_t from);
  bool binary(const Instruction& i);
  bool unary(const Instruction& i);
  bool quickCall(const Instruction& i);
  bool builtin(const Instruction& i);
  bool callUnit(const Instruction& i);
  bool sizeQuery(const Instruction& i);
  bool index(int32_t result, int32_t array, std::initializer_list<int32_t> subscripts);
  bool store(int32_t target, std::initializer_list<int32_t> subscripts, int32_t value);
  bool isSubscript(int32_t operand);
  bool checkArgument(const Instruction& i) const;
  bool isCallee(const Site& site) const;
  bool isShared(int32_t lane) const;
  void setPlain(int32_t operand);

  LoopGraph& graph_;
  State& state_;
  int32_t call_ = -1;
  int32_t length_ = 1;
};

/// Whether there is native code of such an instruction for some kinds of its operands.
bool hasNativeForm(const Code& code, const Instruction& i);

/// Whether two operands meet as real numbers, as integers or as complex numbers, in this order;
/// `other`: not at all.
Held meeting(const Type& a, const Type& b);

/// The extent that `end` stands for: which word of a lane holds it.
enum class Extent : uint8_t { none, one, count, rows, columns };
Extent extentOf(const LoopGraph& graph, const State& state, const Instruction& i);

}  // namespace kelo::native
