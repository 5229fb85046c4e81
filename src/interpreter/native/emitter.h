// Makes machine code of the nodes of a loop, or of a whole unit.
//
// The code of a loop is one function of one argument, a row of 64-bit words (LaneWords): at the
// entry it reads its lanes from there, at an exit it writes those that have changed back, and gives
// the number of the exit. In between every lane has virtual registers of its own, one for each way
// in which it can be held; the compiler of the library finds machine registers for them. Where a
// node cannot go on it jumps to its exit, having changed nothing: the register code then does the
// instruction in general.
//
// Each jump backwards takes one from a budget; when that is used up the loop is left once, so that
// the register code looks for a request to stop.
//
// The code of a unit is a function of the words' header and its inputs, arrays being the places of
// their words; it gives its first result, and leaves the others in the header.
// Each of its exits says in the header that the call has failed. It looks for a request to stop
// itself, for it may run long.
#pragma once

#include <asmjit/x86.h>

#include <functional>
#include <vector>

#include "interpreter/native/lane_words.h"
#include "interpreter/native/loop_graph.h"
#include "interpreter/quick_calls.h"
#include "platform/vector_math.h"
#include "values/operators.h"

namespace kelo::native {

/// Whether a quotient by x is exactly the product with 1 / x.
bool hasExactReciprocal(double x);

class Emitter {
 public:
  Emitter(const LoopGraph& graph, asmjit::CodeHolder& holder);
  /// Makes the code of all nodes. False when the library refuses.
  bool emit();
  /// The nodes that are exits; the function gives an index into them.
  const std::vector<int32_t>& exits() const { return exits_; }
  /// Of a unit: where its code begins, and where code that calls it with all in the words.
  uint64_t bodyOffset() const { return holder_.labelOffsetFromBase(body_); }
  uint64_t entryOffset() const { return holder_.labelOffsetFromBase(entry_); }

 private:
  using Gp = asmjit::x86::Gp;
  using Xmm = asmjit::x86::Xmm;
  using Mem = asmjit::x86::Mem;
  using Label = asmjit::Label;

  /// A comparison that has set the flags: what is asked of them.
  struct Comparison {
    asmjit::x86::CondCode holds;
    bool isOrdered = false;  ///< besides, that neither number is NaN
    bool isNegated = false;
  };

  // ---- emitter.cpp: nodes, ways and exits
  void orderNodes();
  void enterLanes();
  void emitNode(int32_t which);
  void emitInstruction(const Instruction& i);
  void emitExits();
  Label exitOf(int32_t node);
  Label exit() { return exitOf(node_); }
  void jumpTo(const Instruction& i, const Node& node);
  void jumpWhen(Comparison comparison, bool sense, Label to);
  void jumpOn(const Instruction& i, Comparison comparison, bool sense);

  // ---- emit_functions.cpp: units, and calls of them
  void enterUnit();
  void emitFailure();
  void emitEntry();
  void checkForStop();
  void call(const Instruction& i);
  void giveResults(std::span<const int32_t> operands);
  asmjit::FuncSignatureBuilder signatureOf(const Kinds& inputs, const std::vector<Held>& results) const;
  asmjit::BaseReg newPassed(Held held);
  asmjit::BaseReg passed(int32_t operand);
  void passAll(asmjit::InvokeNode& call, const std::vector<asmjit::BaseReg>& arguments, const asmjit::BaseReg& result);
  void load(const asmjit::BaseReg& to, Held held, int32_t offset);
  void store(Held held, int32_t offset, const asmjit::BaseReg& from);

  // ---- Lanes
  const Node& node() const { return graph_.nodes()[static_cast<size_t>(node_)]; }
  Type typeOf(int32_t operand) const { return graph_.typeOf(node().state, operand); }
  const Storable& constantAt(int32_t operand) const { return graph_.code().constants[static_cast<size_t>(~operand)]; }
  Xmm realLane(int32_t lane, bool isImaginary = false);
  Gp wordLane(int32_t lane);   // logicals and characters
  Gp wholeLane(int32_t lane);  // integers
  Gp dataLane(int32_t lane);
  asmjit::BaseReg scalarLane(int32_t lane, Held held);  // of what functions take and give
  Mem arrayWord(int32_t lane, int32_t word) const;
  Mem wordAt(int32_t offset) const { return asmjit::x86::ptr_64(cells_, offset); }
  Xmm newReal(const char* name = "x") { return cc_.newXmmSd("%s", name); }

  // ---- emit_numbers.cpp: operands, arithmetic, comparisons, functions
  Xmm asReal(int32_t operand);
  asmjit::Operand asRealOrMemory(int32_t operand);
  Gp asWord(int32_t operand);
  Gp asWhole(int32_t operand);
  Gp asTruth(int32_t operand);
  void asComplex(int32_t operand, Xmm* re, Xmm* im);
  Xmm constant(double x);
  Mem constantMemory(double x) { return cc_.newDoubleConst(asmjit::ConstPoolScope::kLocal, x); }
  void checkPlain(int32_t operand, const Gp& word);
  void setReal(int32_t reg, const Xmm& x) { cc_.vmovapd(realOf(reg), x); }
  Xmm realOf(int32_t reg) { return realLane(graph_.laneOf(reg)); }
  Gp wordOf(int32_t reg) { return wordLane(graph_.laneOf(reg)); }
  void move(int32_t to, int32_t from);
  void binary(const Instruction& i);
  void arithmetic(BinaryOp op, const Instruction& i);
  void complexArithmetic(BinaryOp op, const Instruction& i);
  void integerSum(BinaryOp op, const Instruction& i);
  void power(const Instruction& i);
  void logic(BinaryOp op, const Instruction& i);
  void unary(const Instruction& i);
  Comparison compare(BinaryOp op, int32_t left, int32_t right);
  void setTruth(int32_t reg, Comparison comparison);

  // ---- emit_calls.cpp: built-ins
  void quickCall(const Instruction& i);
  void sizeQuery(const Instruction& i);
  void remainder(const Instruction& i, bool isMod);
  void choice(const Instruction& i, bool isMax);
  void builtin(const Instruction& i);
  void checkDomain(QuickCall function, const Xmm& x);
  void vectorRoutine(const Instruction& i, platform::VectorFunction function);
  Xmm round(const Xmm& x, int mode);
  Xmm magnitude(const Xmm& x);

  // ---- emit_elements.cpp: elements, `end`, loops
  Gp position(int32_t subscript, const Mem& extent, Label missed);
  Gp position(const Instruction& i, int32_t lane, int32_t first, int32_t second, Label missed);
  Mem elementAt(int32_t lane, Kind kind, Gp& position);
  void read(const Instruction& i, int32_t second);
  void write(const Instruction& i, int32_t second, int32_t value);
  void append(int32_t reg, int32_t value, bool isRow);
  void appendRow(const Instruction& i);
  void loadElement(int32_t reg, Kind kind, const Mem& element);
  void endOf(const Instruction& i);
  void forRange(const Instruction& i);
  void rangeStep(const Instruction& i);
  void arrayStep(const Instruction& i);

  struct LaneRegisters {
    Xmm real, imaginary;
    Gp word, whole, data, words;
  };

  const LoopGraph& graph_;
  asmjit::x86::Compiler cc_;
  asmjit::CodeHolder& holder_;
  Gp cells_, budget_, result_;
  Label done_, body_, entry_, failure_;
  std::vector<LaneRegisters> lanes_;
  std::vector<int32_t> order_;
  std::vector<Label> labels_, exitLabels_;
  std::vector<int32_t> exits_;
  std::vector<std::function<void()>> aside_;  // code for behind the nodes
  int32_t node_ = 0;                          // being made
  int32_t following_ = -1;
};

}  // namespace kelo::native
