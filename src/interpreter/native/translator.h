// What each instruction makes of what the registers hold, and its machine code.
//
// A method of an instruction is run many times: while nodes are found it says what the registers
// hold behind it, or that native code does not do it; when all is known `make` emits its code for
// what the registers hold at a node. What an instruction does to scalars is said in machine_run.cpp,
// machine_fast.cpp and quick_calls.cpp; here it must come out the same to the last bit, or be left
// to them.
//
// The code of a loop is one function of one argument, a row of 64-bit words (Layout): at the entry
// it reads its registers from there, at an exit it writes those that have changed back, and gives
// the number of the exit. In between every register has virtual registers of its own, one for each
// way in which it can be held; the compiler of the library finds machine registers for them. Where a
// node cannot go on it jumps to its exit, having changed nothing: the register code then does the
// instruction in general. Each jump backwards takes one from a budget; when that is used up the loop
// is left once, so that the register code looks for a request to stop.
//
// The code of a unit is a function of the words' header and its inputs; it gives its first result,
// and leaves the others in the header. Arrays come and go as the places of their words. Those that a
// unit makes lie in memory that is its own until it ends, so an array that it was given to look at
// is copied before it is written. Each exit says in the header that the call has failed. The unit
// looks for a request to stop itself, for it may run long.
#pragma once

#include <asmjit/x86.h>

#include <functional>

#include "interpreter/native/graph.h"
#include "interpreter/quick_calls.h"
#include "values/operators.h"

namespace kelo::native {

class Translator : public Graph {
 public:
  using Graph::Graph;

  /// Whether there is native code of an instruction in a loop, for some kinds of its operands.
  static bool mayBeNative(const Code& code, const Instruction& i);

  /// Makes the code of all nodes. False when the library refuses.
  bool emit(asmjit::CodeHolder& holder);
  /// The nodes that are exits; the function gives an index into them.
  const std::vector<int32_t>& exits() const { return exits_; }
  /// The words of arrays at which the code looks.
  Constants takeConstants() { return std::move(constants_); }
  /// Of a unit: where its code begins, and where code that calls it with all in the words.
  asmjit::Label body() const { return body_; }
  asmjit::Label entry() const { return entry_; }

 private:
  using Gp = asmjit::x86::Gp;
  using Xmm = asmjit::x86::Xmm;
  using Mem = asmjit::x86::Mem;
  using Label = asmjit::Label;
  using BaseReg = asmjit::BaseReg;
  using Condition = asmjit::x86::CondCode;
  using Extent = std::optional<int32_t>;  ///< that `end` stands for: a word of an array, or kOne
  static constexpr int32_t kOne = -1;

  struct Virtuals {  // of a register
    Xmm real, imaginary;
    Gp whole, data, words;
  };

  using Handler = bool (Translator::*)(const Instruction& i);
  static Handler handlerOf(const Code& code, const Instruction& i);  // null: there is none
  static bool isIntrinsic(const Site& site);
  bool step(const Instruction& i) override;
  bool takeJump(const Instruction& i) override;
  template <class Code>
  bool make(Code&& code) {
    if (emits_) code();
    return true;
  }

  // ---- translator.cpp: nodes, ways and exits; values in their virtual registers
  void orderNodes();
  void enterLoop();
  void emitNode(size_t position);
  void emitExits();
  Label exit();
  Label exitOf(int32_t node);
  const Node& node() const { return nodes()[static_cast<size_t>(node_)]; }
  void jumpTo(const Instruction& i);
  void jumpOn(const Instruction& i, Condition condition);
  void load(int32_t reg, const Type& type);
  void save(int32_t reg, const Type& type);
  template <class Register>
  Register& made(Register& value, asmjit::TypeId type) {
    if (!value.isValid()) cc_._newReg(&value, type);
    return value;
  }
  Virtuals& virtualsOf(int32_t reg) { return virtuals_[static_cast<size_t>(reg)]; }
  Xmm real(int32_t reg, bool isImaginary = false) {
    return made(isImaginary ? virtualsOf(reg).imaginary : virtualsOf(reg).real, asmjit::TypeId::kFloat64x1);
  }
  Gp whole(int32_t reg) { return made(virtualsOf(reg).whole, asmjit::TypeId::kInt64); }    // all other scalars
  Gp data(int32_t reg) { return made(virtualsOf(reg).data, asmjit::TypeId::kUIntPtr); }    // of an array's elements
  Gp words(int32_t reg) { return made(virtualsOf(reg).words, asmjit::TypeId::kUIntPtr); }  // of a unit's array
  Mem wordAt(int32_t offset) const { return asmjit::x86::ptr_64(cells_, offset); }
  Mem arrayWord(int32_t reg, int32_t word);
  Xmm newReal() { return cc_.newXmmSd(); }
  Gp newWhole() { return cc_.newInt64(); }

  // ---- translate_numbers.cpp: operands, operators, comparisons, jumps
  bool nothing(const Instruction&) { return true; }
  bool refuse(const Instruction&) { return false; }
  bool binary(const Instruction& i);
  bool unary(const Instruction& i);
  bool copy(const Instruction& i) { return copy(i.a, i.b); }
  bool copy(int32_t to, int32_t from);
  bool copyConstant(int32_t to, const Storable& array);
  bool check(const Instruction& i) { return of(i.op == Op::checkTarget ? i.a : i.b).held != Held::other; }
  bool checkSwitch(const Instruction& i) { return of(i.b).isScalar(); }
  bool jump(const Instruction& i);
  bool jumpOnTruth(const Instruction& i);
  bool jumpOnComparison(const Instruction& i);
  void move(int32_t to, int32_t from);
  void moveArray(int32_t to, const Gp& from);
  Xmm asReal(int32_t operand);
  asmjit::Operand asRealOrMemory(int32_t operand);
  Gp asWhole(int32_t operand);
  Gp asTruth(int32_t operand);
  void asComplex(int32_t operand, Xmm* re, Xmm* im);
  void setReal(int32_t reg, const Xmm& x) { cc_.vmovapd(real(reg), x); }
  Mem memory(double x) { return cc_.newDoubleConst(asmjit::ConstPoolScope::kLocal, x); }
  Mem mask(uint64_t bits);
  Xmm constant(double x);
  Gp isEqual(const Xmm& x, const asmjit::Operand& y);
  Condition compare(BinaryOp op, int32_t left, int32_t right);
  void setTruth(int32_t reg, Condition condition);
  void arithmetic(BinaryOp op, const Instruction& i);
  void quotient(const Xmm& result, const Xmm& x, int32_t divisor);
  void power(const Instruction& i);
  void complexArithmetic(BinaryOp op, const Instruction& i);
  void onWholes(asmjit::x86::Inst::Id instruction, int32_t reg, const Gp& a, const asmjit::Operand& b);

  // ---- translate_builtins.cpp
  bool quickCall(const Instruction& i);
  bool builtin(const Instruction& i);
  bool sizeQuery(const Instruction& i, QuickCall function);
  bool filled(const Instruction& i);
  void realFunction(const Instruction& i, QuickCall function);
  void changeCase(const Instruction& i, bool toUpper);
  void lengthOf(int32_t array, QuickCall function, bool isRows, const Gp& length);
  void remainder(const Instruction& i, bool isMod);
  void routine(const Instruction& i, QuickCall function);
  Xmm magnitude(const Xmm& x);

  // ---- translate_elements.cpp: elements, `end`, loops
  bool index(const Instruction& i);
  bool read(const Instruction& i, std::initializer_list<int32_t> subscripts);
  bool store(const Instruction& i);
  bool store(int32_t array, std::initializer_list<int32_t> subscripts, int32_t value);
  bool append(const Instruction& i);
  bool endOf(const Instruction& i);
  bool checkArgument(const Instruction& i);
  bool forRange(const Instruction& i);
  bool rangeStep(const Instruction& i);
  bool arrayStep(const Instruction& i);
  bool areSubscripts(std::initializer_list<int32_t> operands);
  Extent extentOf(const Instruction& i);
  Gp position(int32_t subscript, const Mem& extent, Label missed);
  Gp position(int32_t array, std::initializer_list<int32_t> subscripts, Label missed);
  Mem elementAt(int32_t array, Kind kind, Gp& position);
  void write(int32_t array, int32_t value, Gp& position);
  void appendScalar(int32_t reg, int32_t value, bool isRow);

  // ---- translate_fields.cpp
  bool checkStructure(const Instruction& i) { return hasFields(i.b); }
  bool readField(const Instruction& i);
  bool writeField(const Instruction& i);
  bool writeFieldElement(const Instruction& i);
  bool readElementField(const Instruction& i);
  bool writeElementField(const Instruction& i);
  Mem numberOfElement(int32_t field, int32_t subscript);

  // ---- translate_calls.cpp: units, and calls of them
  bool callUnit(const Instruction& i);
  bool returnResults(const Instruction& i);
  bool isHandedOver(const Instruction& i, int32_t operand);
  void emitCall(const KnownCall& known, std::span<const int32_t> targets);
  void enterUnit();
  void emitFailure();
  void emitEntry();
  void checkForStop();
  void makeOwn(int32_t array);
  BaseReg passed(int32_t operand);
  BaseReg newPassed(Held held);
  BaseReg loaded(Held held, int32_t offset);
  void saveAt(int32_t offset, const BaseReg& value);
  bool findUnit(const Instruction& i);
  bool freesArrays() const;
  BaseReg invoke(const Version* unit, const Kinds& inputs, const Kinds& results, std::span<const BaseReg> arguments);

  /// A call of a function of C++.
  template <class Result, class... Parameters, class... Arguments>
  void callCpp(Result (*function)(Parameters...) noexcept, const BaseReg& result, const Arguments&... arguments) {
    const Gp address = cc_.newIntPtr();
    cc_.mov(address, reinterpret_cast<uint64_t>(function));
    asmjit::InvokeNode* call;
    cc_.invoke(&call, address, asmjit::FuncSignatureT<Result, Parameters...>());
    uint32_t k = 0;
    (call->setArg(k++, arguments), ...);
    call->setRet(0, result);
  }

  asmjit::x86::Compiler cc_;
  Gp cells_, budget_, result_, memoryBefore_;
  Label done_, body_, entry_, failure_;
  std::vector<Virtuals> virtuals_;
  Constants constants_;
  std::vector<int32_t> order_;
  std::vector<Label> labels_, exitLabels_;
  std::vector<int32_t> exits_;
  std::vector<std::function<void()>> aside_;  // code for behind the nodes
  int32_t node_ = 0;                          // being made
  int32_t following_ = -1;
};

}  // namespace kelo::native
