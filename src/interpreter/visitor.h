// Visitor: the evaluator. One visit per kind of node, in the order of the grammar; this header is the contents page,
// the bodies stand in visit_*.cpp by kind.
//
// A visit gives a NodeValue. `failure` says that the error has been shown already: whoever meets it returns it without
// a further word. Nothing thrown crosses a visit, but for FatalFault, which ends the run.
//
// Speed. The first visit of a node fills its cache (resolve.h); later ones switch on the kind. A double scalar travels
// inline in the NodeValue, and arithmetic on double scalars is computed without one (visit_scalars.cpp).
#pragma once

#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "grammar/node_cache.h"
#include "interpreter/builtin.h"
#include "messages/message.h"
#include "values/argument_list.h"
#include "values/function_bodies.h"
#include "values/node_value.h"

namespace kelo {

class BuiltinTable;
class Environment;
class FieldChain;
class KeloNode;
struct ChainDetails;
struct FieldDetails;
struct Range;

class Visitor {
 public:
  /// How many outputs are asked for: 0 of a statement by itself; kNoOutputs: inside an expression.
  using Outputs = int;
  static constexpr Outputs kNoOutputs = -1;

  /// The evaluator of one run.
  explicit Visitor(Environment& app);

  /// Runs the tree of a program in the top workspace.
  NodeValue runProgram(KeloNode& program, bool mainFunctionRequired = false);
  /// Evaluates one expression given as text, as `input` does; an empty text is a 0 x 0 double.
  NodeValue evaluateText(const std::string& text);

  /// Numbers of inputs and outputs: of a function's declaration, or of a call.
  struct Signature {
    int64_t inputs, outputs;
  };
  /// What a function declares; negative for any number. A name is a built-in, a local function or a file.
  /// throws Problem for a file that cannot be loaded or declares no function
  Signature signatureOf(const FunctionHandle& handle);
  Signature signatureOf(Name function);
  /// What the running function received and was asked for; absent outside a function.
  const std::optional<Signature>& runningCall() const { return frame_.call; }

 private:
  struct Frame {
    Name funName;                   // empty in scripts, handles and the console
    std::optional<Signature> call;  // of the function that is running; a script or a handle sees its caller's
    int64_t extent = -1;            // what `end` means here; -1: not inside an index
  };
  class FrameScope;
  class ExtentScope;
  class CallScope;
  struct Subscripts;
  enum class CallForm { bare, withParentheses };
  enum class ArgumentsOf { user, builtIn };
  using Nodes = std::vector<KeloNode*>;

  // ---- visit_statements.cpp: programs, lists, statements, display, `ans`
  NodeValue visitProg_stat_list(KeloNode& program);
  NodeValue runStatements(KeloNode& list);
  NodeValue runStatement(KeloNode& statement);
  NodeValue visitExpression(KeloNode& statement);
  NodeValue visitAssignment(KeloNode& statement);
  NodeValue setAnswer(NodeValue value, bool shows);
  void show(const NodeValue& value, std::span<const Name> names);
  void showValue(std::optional<Name> name, const Storable& value);
  Ref<LocalFunctionFile> localFunctionsOf(KeloNode& program);

  // ---- visit_control.cpp
  NodeValue visitForLoop(KeloNode& statement);
  template <class SetElement>
  NodeValue loop(KeloNode& statement, int64_t rounds, SetElement&& setElement);
  NodeValue visitWhileLoop(KeloNode& statement);
  NodeValue visitIf(KeloNode& statement);
  NodeValue visitSwitch(KeloNode& statement);
  std::optional<bool> condition(KeloNode& expression, const char* notNumeric);
  std::optional<NumericArray> switchValue(KeloNode& expression, const char* complaint);

  // ---- visit_assignment.cpp
  NodeValue assignVariable(KeloNode& assignment, bool shows);
  NodeValue assignList(KeloNode& assignment, bool shows);
  NodeValue assignElements(KeloNode& assignment, bool shows);
  NodeValue assignChain(KeloNode& assignment, bool shows);
  NodeValue changed(KeloNode& assignment, bool shows);
  std::optional<Storable> assignedValue(KeloNode& assignment);
  bool writeElement(NodeCache& cache, const Nodes& nodes, double value);
  bool writeField(NodeCache& cache, const FieldDetails& field, double value);
  static bool writeNumber(Storable& target, const Subscripts& subscripts, const Storable& value);
  bool buildChain(KeloNode& assignment, const ChainDetails& details, FieldChain& chain);

  // ---- visit_literals.cpp: every expression comes through `visit`
  NodeValue visit(KeloNode& node, Outputs outputs = kNoOutputs);
  NodeValue visitDouble(KeloNode& node);
  NodeValue visitImaginary(KeloNode& node);
  NodeValue visitChar(KeloNode& node);

  // ---- visit_operators.cpp
  NodeValue visitTranspose(KeloNode& node);
  NodeValue visitUnaryOps(KeloNode& node);
  NodeValue visitBinaryOps(KeloNode& node);
  NodeValue combineScalars(KeloNode& node, double a, double b);
  NodeValue combine(KeloNode& node, NodeValue& left, NodeValue& right);
  NodeValue visitMatrix_colon(KeloNode& node);
  std::optional<Range> rangeAt(KeloNode& node);
  NodeValue visitMatrix_cat(KeloNode& node);

  // ---- visit_scalars.cpp: expressions of double scalars, without a NodeValue; false where the general visit is needed
  bool assignScalar(KeloNode& statement);
  bool scalar(KeloNode& node, double* result);
  bool scalar(KeloNode& node, int depth, double* result);
  bool compound(KeloNode& node, int depth, double* result);
  bool elementOf(const NumericArray& array, const Nodes& subscripts, double* result);
  bool elementOf(const NumericArray& array, const Nodes& subscripts, int depth, double* result);
  bool subscriptNumbers(const SizeVector& size, const Nodes& nodes, double* i, double* j);
  bool subscriptNumbers(const SizeVector& size, const Nodes& nodes, int depth, double* i, double* j);
  bool subscriptNumber(KeloNode& node, int64_t extent, int depth, double* result);

  // ---- visit_calls.cpp
  NodeValue visitId(KeloNode& node, Outputs outputs);
  NodeValue visitSubarray_or_func(KeloNode& node, Outputs outputs);
  NodeValue visitBuilt_in_func(KeloNode& node, Outputs outputs);
  NodeValue visitFuncHandle(KeloNode& node);
  NodeValue anonymousFunction(KeloNode& node);
  NodeValue callWithArguments(const FunctionHandle& handle, const Nodes& argNodes, Outputs outputs, KeloNode& place);
  NodeValue runBuiltin(const Builtin& row, std::span<Storable> args, Outputs outputs, KeloNode& place);
  bool evaluateArguments(const Nodes& nodes, ArgumentList& arguments, KeloNode& place, ArgumentsOf callee);
  const Storable* findVariable(Name name, uint32_t* hint) const;
  std::optional<LocalFunction> findLocalFunction(Name name) const;
  bool isAccessible(const LocalFunction& function, KeloNode& caller) const;

  // ---- visit_functions.cpp: calls of users' functions
  NodeValue visitProg_function(KeloNode& program, std::span<Storable> args, Outputs outputs);
  NodeValue callFile(Name name, std::span<Storable> args, Outputs outputs, KeloNode& place, CallForm form);
  NodeValue callLocal(const LocalFunction& function, std::span<Storable> args, Outputs outputs, KeloNode& place);
  NodeValue callHandle(const FunctionHandle& handle, std::span<Storable> args, Outputs outputs, KeloNode& place);
  NodeValue callAnonymous(const FunctionHandle& handle, std::span<Storable> args, Outputs outputs, KeloNode& place);
  KeloNode* programOf(Name name, KeloNode& place, CallForm form, bool* failed);
  KeloNode& loadProgram(Name name);
  Signature signatureOfFile(Name name);
  KeloNode* bodyOf(AnonymousFunction& function, KeloNode& place);
  static Frame frameOf(Name function, std::span<Storable> args, Outputs outputs);
  bool checkInputCount(const std::string& label, const char* tooMany, size_t declared, size_t given, KeloNode& place);
  void bindInputs(std::span<const Name> names, std::span<Storable> args);
  template <class Missing>
  NodeValue collectOutputs(std::span<const Name> names, Missing&& missing, KeloNode& place);

  // ---- visit_indexing.cpp
  NodeValue index(const Storable& array, const Nodes& subscripts, KeloNode& place);
  bool evaluateSubscripts(const SizeVector& size, const Nodes& nodes, Subscripts& result, KeloNode& place);
  bool addSubscript(KeloNode& node, int64_t extent, int k, Subscripts& result, KeloNode& place);
  NodeValue visitStructure2(KeloNode& node, Outputs outputs);
  NodeValue fieldOf(const NodeValue& value, const FieldDetails& field, Name parent, Outputs outputs, KeloNode& place);
  std::optional<Name> fieldName(const FieldDetails& field, KeloNode& place);
  NodeValue visitEnd_expr(KeloNode& node);
  NodeValue visitColon_expr(KeloNode& node);

  // ---- visit_errors.cpp: messages with the place of a node
  NodeValue fail(KeloNode& place, std::string reason);
  NodeValue fail(KeloNode& place, const Problem& problem);
  NodeValue failWithCurrentException(KeloNode& place, const char* lastResort);
  void warn(KeloNode& place, std::string sentence);
  Message messageAt(KeloNode& place) const;
  CallSite siteOf(KeloNode& place) const;
  bool stackHasRoom(KeloNode& place);
  /// Runs `body`; a Problem that it throws is shown with the place, any other error as `lastResort`.
  template <class Body>
  NodeValue guarded(KeloNode& place, const char* lastResort, Body&& body);

  Environment& app_;
  Frame frame_;
  bool recursionWasTooDeep_ = false;
  const Name answer_;
  const Name imaginaryI_, imaginaryJ_;
  std::unordered_map<uint32_t, KeloNode*> programs_;  // of the run directory, by name; null: there is no such file
  std::unordered_map<const KeloNode*, Ref<LocalFunctionFile>> localFiles_;  // by program
};

}  // namespace kelo
