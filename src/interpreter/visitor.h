// Visitor: lowers parse trees to register code. One visit per kind of node, in the order of the
// grammar; this header is the contents page, the bodies stand in visit_*.cpp by kind. What code is,
// code.h tells; the machine that runs it is machine.h.
//
// A visit of an expression emits the instructions that compute it and gives the operand that holds
// their value: a constant, the slot of a variable, or a temporary. `wish` is the register
// that the result would best stand in; a visit may ignore it. Temporaries are a stack: a visit
// leaves at most one of them taken, the one it gives.
//
// Variables. An operand may only be a slot where the variable is known to be there; otherwise
// `loadName` finds out what the name means, which may be a call. A variable is known after an
// assignment to it in the same list or a list around it, and so are a function's inputs in the code
// for calls that give all of them. Within one expression a variable does not change: what could
// change one, a script or `clear`, has no value to go on with.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "grammar/node_cache.h"
#include "interpreter/code.h"
#include "interpreter/node_details.h"

namespace kelo {

class BuiltinTable;
class KeloNode;

/// Thrown where the stack has no room for a deeper expression; the statement then says so when it
/// is run.
struct NestedTooDeeply {
  KeloNode* node;
};

class Visitor {
 public:
  /// How many outputs are asked for: 0 of a statement by itself; kNoOutputs: inside an expression;
  /// kOutputsOfCall: as many as of the handle whose body this is.
  static constexpr int kNoOutputs = -1;
  static constexpr int kOutputsOfCall = -2;

  /// The code of a statement list, null for none; of a function with these inputs, or of a script.
  ///
  /// inputs       take the first slots, `outputs` the next
  /// areGiven     whether a call gives all inputs
  static std::unique_ptr<Code> lowerStatements(KeloNode* list, std::span<const Name> inputs,
                                               std::span<const Name> outputs, bool areGiven,
                                               const BuiltinTable& builtins);
  /// The code of one expression, whose value is the result: of a handle, whose captured variables
  /// stand after its inputs, or of a text.
  static std::unique_ptr<Code> lowerExpression(KeloNode& expression, std::span<const Name> names, bool areGiven,
                                               int outputs, const BuiltinTable& builtins);

 private:
  using Nodes = std::vector<KeloNode*>;
  static constexpr int32_t kNowhere = INT32_MIN;  // no wish for a register

  explicit Visitor(const BuiltinTable& builtins) : builtins_(builtins), code_(std::make_unique<Code>()) {}
  std::unique_ptr<Code> finished();

  // ---- visit_statements.cpp: lists, statements, and what becomes of a statement's result
  void visitStat_list(KeloNode& list);
  void visitStatement(KeloNode& statement, KeloNode& list);
  void visitExpression(KeloNode& statement);
  void visitAssignment(KeloNode& statement);

  // ---- visit_control.cpp
  void visitForLoop(KeloNode& statement);
  void visitWhileLoop(KeloNode& statement);
  void visitBreak(KeloNode& list);
  void visitContinue(KeloNode& list);
  void visitReturn(KeloNode& list);
  void visitIf(KeloNode& statement);
  void visitSwitch(KeloNode& statement);
  int32_t jumpWhere(bool isTrue, KeloNode& condition, const char* notNumeric);
  int32_t visitSwitchValue(KeloNode& expression, const char* complaint);

  // ---- visit_assignment.cpp
  void visitVar_list_assignment(KeloNode& assignment, bool shows);
  void visitVar_assignment(KeloNode& assignment, bool shows);
  void visitSubarray_assignment(KeloNode& assignment, bool shows);
  void visitStructure_assignment2(KeloNode& assignment, bool shows);
  void lowerChain(KeloNode& assignment, const ChainDetails& chain, int32_t value);
  void lowerChainIndices(KeloNode& assignment, const Nodes& arguments);
  int32_t rightSide(KeloNode& assignment, const char* withoutValue);
  void handOver(std::span<const int32_t> targets);
  bool arePlain(const Nodes& arguments);
  void emitAssign(KeloNode& assignment, int32_t slot, int32_t value);

  // ---- visit_literals.cpp: every expression comes through `visit`
  int32_t visit(KeloNode& node, int outputs = kNoOutputs, int32_t wish = kNowhere);
  int32_t visitDouble(KeloNode& node);
  int32_t visitChar(KeloNode& node);
  int32_t visitImaginary(KeloNode& node);
  int32_t visitEmpty_mat();
  int32_t visitParenthesis(KeloNode& node, int32_t wish);

  // ---- visit_operators.cpp
  int32_t visitTranspose(KeloNode& node, int32_t wish);
  int32_t visitMatrix_cat(KeloNode& node, int32_t wish);
  bool lowerAppend(KeloNode& node, int32_t slot);
  bool lowerAppendText(KeloNode& node, int32_t slot);
  int32_t visitUnaryOps(KeloNode& node, int32_t wish);
  int32_t visitBinaryOps(KeloNode& node, int32_t wish);
  int32_t visitMatrix_colon(KeloNode& node, int32_t wish);
  int32_t rangeOperands(KeloNode& node);

  // ---- visit_calls.cpp
  int32_t visitSubarray_or_func(KeloNode& node, int outputs, int32_t wish);
  int32_t visitId(KeloNode& node, int outputs, int32_t wish);
  int32_t visitFuncHandle(KeloNode& node, int32_t wish);
  int32_t visitBuilt_in_func(KeloNode& node, int outputs, int32_t wish);
  int32_t lowerIndex(int32_t site, KeloNode& node, int32_t wish);
  int32_t argument(int32_t site, int32_t k, int32_t wish);
  void argumentsInRow(int32_t site);

  // ---- visit_indexing.cpp
  int32_t visitStructure2(KeloNode& node, int outputs, int32_t wish);
  int32_t visitEnd_expr(KeloNode& node, int32_t wish);
  int32_t visitColon_expr(KeloNode& node, int32_t wish);
  int32_t fieldNameOperand(const FieldDetails& field, KeloNode& place);

  // ---- visit_emit.cpp: instructions, registers, names
  int32_t emit(Op op, KeloNode* place, int32_t a = 0, int32_t b = 0, int32_t c = 0, int32_t d = 0, int32_t e = 0,
               uint16_t flag = 0);
  void dropPolls();
  int32_t here() const { return static_cast<int32_t>(code_->instructions.size()); }
  void jumpHere(int32_t instruction) { code_->instructions[static_cast<size_t>(instruction)].a = here(); }
  void into(KeloNode& node, int32_t target, int outputs = kNoOutputs);  // the value in exactly this register
  static constexpr int32_t kTemporaries = 1 << 28;  // the first, until all slots are known
  static bool isTemporary(int32_t operand) { return operand >= kTemporaries; }
  int32_t newTemporary();
  // The register of a result, once the operands from `mark` on are done with.
  int32_t target(int32_t mark, int32_t wish);
  int32_t constant(Storable value);
  int32_t slotOf(Name name);
  int32_t fieldIndex(Name name);
  int32_t textIndex(const char* text);
  int32_t newSite(KeloNode& node, Name name, int32_t base, const Nodes& arguments, int outputs);
  Site& site(int32_t index) { return code_->sites[static_cast<size_t>(index)]; }
  void addRegion(Region::Kind kind, int32_t begin, KeloNode& node, const char* text = nullptr, int32_t site = -1);
  bool isKnown(int32_t slot) const { return slot < static_cast<int32_t>(known_.size()) && known_[size_t(slot)]; }
  void setKnown(int32_t slot);
  void forgetSince(size_t mark);
  void forgetAll() { forgetSince(0); }
  void findAssigned(KeloNode& tree);
  bool isSimple(KeloNode& node);
  bool isLiteral(KeloNode& node);
  std::vector<Name> writtenFields(KeloNode& node);
  int32_t lowerStructure(KeloNode& node, std::vector<Name> fields, int32_t wish);
  std::optional<double> writtenNumber(KeloNode& node);
  std::optional<Storable> writtenMatrix(const CatDetails& matrix);
  bool isQuick(KeloNode& node);
  bool mayBeMany(KeloNode& node);
  void resolved(KeloNode& node);

  // The loops around what is being lowered.
  struct Loop {
    bool isWhile;
    std::vector<int32_t> breaks, continues;  // jumps to be aimed
  };

  const BuiltinTable& builtins_;
  std::unique_ptr<Code> code_;
  std::unordered_map<uint32_t, int32_t> slots_, fields_;
  std::vector<bool> known_;
  std::vector<int32_t> knownTrail_;       // the known slots in the order in which they became so
  std::unordered_map<uint32_t, bool> assigned_;  // names that some statement of the unit assigns to
  bool isCautious_ = false;               // something in the unit may take variables away: none is known
  std::vector<Loop> loops_;
  std::vector<int32_t> returns_;
  int32_t top_ = 0, most_ = 0;            // temporaries taken, and at most so far
  int32_t site_ = -1, siteArgument_ = 0;  // of the argument that is being lowered
};

}  // namespace kelo
