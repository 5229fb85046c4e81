// Machine: runs register code (code.h).
//
// Registers lie in a stack of the machine's own. A call gives the called unit the registers from
// its first argument on, so the arguments need not move: they are the first slots of the called
// one. Calls of functions, scripts and handles push a Frame and go on in the same loop; only
// `input`, which evaluates a text inside a built-in, runs the machine inside itself. How deep calls
// may go is counted and does not depend on the stack of the thread.
//
// Names. The variables of a function are its slots; what a script or a text called from it adds
// lies in a table beside (`Frame::more`). A script, or a text of the console, is an overlay: at its
// start the values of the names that it mentions move from the workspace below into its own slots,
// and back at its end, however it ends. So a name that the running unit mentions is always in its
// slot, and any other name is found by walking down (machine_names.cpp).
//
// Failure. An operation that fails shows its message and gives false; what is thrown is caught
// once, around the loop, and shown with the place of the instruction. Then the regions around the
// instruction have their say, the frame goes, and so on up to where the machine was entered.
// Nothing but a FatalFault passes.
//
// The loop itself, with all that is done for scalars on the spot, is machine_run.cpp; the general
// operations stand in machine_*.cpp by kind.
#pragma once

#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "interpreter/code.h"
#include "interpreter/frame.h"
#include "interpreter/native/native.h"
#include "interpreter/register_stack.h"
#include "messages/fatal_fault.h"
#include "messages/message.h"
#include "values/chains.h"
#include "values/function_bodies.h"
#include "values/node_value.h"

namespace kelo {

class Environment;

class Machine {
 public:
  /// The machine of one run. REQUIRES: app.builtins is set
  explicit Machine(Environment& app);
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  /// Runs the tree of a program over the base workspace. False when it failed; that has been shown.
  bool runProgram(KeloNode& program, bool mainFunctionRequired = false);
  /// Evaluates one expression given as text, as `input` does; an empty text is a 0 x 0 double.
  NodeValue evaluateText(const std::string& text);

  /// Numbers of inputs and outputs: of a function's declaration, or of a call.
  struct Signature {
    int64_t inputs, outputs;
  };
  /// What a function declares; negative for any number. A name is a built-in, a local function or a
  /// file.
  /// throws Problem for a file that cannot be loaded or declares no function
  Signature signatureOf(const FunctionHandle& handle);
  Signature signatureOf(Name function);
  /// What the running function received and was asked for; absent outside a function.
  std::optional<Signature> runningCall() const;

  /// The names of the variables of the running workspace, in no particular order.
  std::vector<Name> variables();
  void clearVariable(Name name);

 private:
  enum class CallForm { bare, withParentheses };
  enum class Outcome { goesOn, ended, failed };

  // ---- machine_run.cpp
  bool run();
  Outcome execute();
  void unwind();

  // ---- machine_frames.h: calls and their ends as they mostly are; false, and nothing done, else
  bool meansTheSame(const Storable& base, const Site& site) const;
  bool callAgain(const Site& site, Storable* arguments, int32_t destination);
  bool callAnonymousAgain(const FunctionHandle& handle, const Site& site, Storable* arguments, int32_t destination);
  bool callNatively(const Code& code, const LocalFunctionFile* functions, std::span<const Storable> arguments,
                    std::span<const Storable> captured, int32_t destination);
  native::Context nativeContext(const LocalFunctionFile* functions) const;
  static bool arePlain(const Storable* arguments, int32_t count);
  bool canPushPlain(const Code& code, Storable* arguments) const;
  Frame& pushPlain(const Code& code, Storable* arguments, int32_t count, int32_t destination);
  void enterFunction(Frame& made, FunctionUnit& called, LocalFunctionFile* localFunctions, int32_t given,
                     int32_t wanted);
  void enterHandle(Frame& made, const AnonymousFunction& function, int32_t wanted);
  void handOver(const Site& site);
  bool returnPlainly();
  void returnPlainly(Storable value);
  void popPlain();

  // ---- machine_frames.cpp: frames, and the ends of calls
  Frame& frame() { return frames_.back(); }
  const Frame& frame() const { return frames_.back(); }
  bool push(const Code& code, Storable* arguments, int32_t count, int32_t destination, KeloNode& place);
  void pop();
  bool pushOverlay(const Code& code, int32_t destination, int outputs, KeloNode& place);
  static void takeCallOf(Frame& made, const Frame& caller);
  Outcome returnFunction();
  bool returnSeveral();
  Outcome returnValue(Storable value);
  bool collectOutputs(Storable* result);

  // ---- machine_names.cpp: names and where their values are
  static constexpr size_t kBelowAll = SIZE_MAX;  // in place of a frame: the base workspace
  Workspace* tableOf(size_t frame);
  Storable* find(size_t frame, Name name);
  Storable* find(Name name) { return find(frames_.size() - 1, name); }
  void set(size_t frame, Name name, Storable value);
  void takeNames();
  void giveNamesBack();
  void makeRoom(size_t frame, size_t names);
  std::vector<Name> names();
  std::unique_ptr<Workspace> copyOfVariables();
  std::optional<LocalFunction> findLocalFunction(Name name);
  bool isAccessible(const LocalFunction& function, const KeloNode& caller) const;

  // ---- machine_calls.cpp; `arguments`: a row of `count` registers, `destination`: the caller's
  bool loadName(const Instruction& i);
  bool call(const Instruction& i, Storable* arguments);
  static void becomeIndex(Instruction& call, const Site& site);
  bool callSpread(const Storable& base, Site& site, std::vector<Storable>& arguments, int32_t destination);
  bool callValue(const Storable& base, Site& site, Storable* arguments, int32_t count, int32_t destination);
  bool callUnit(FunctionUnit& unit, LocalFunctionFile* functions, Storable* arguments, int32_t count,
                int32_t destination, int outputs, KeloNode& place);
  bool callLocal(const LocalFunction& function, Storable* arguments, int32_t count, int32_t destination, int outputs,
                 KeloNode& place);
  bool callFile(Name name, Storable* arguments, int32_t count, int32_t destination, int outputs, KeloNode& place,
                CallForm form, FunctionUnit** unit);
  bool callHandle(const FunctionHandle& handle, Storable* arguments, int32_t count, int32_t destination, int outputs,
                  KeloNode& place);
  bool callAnonymous(AnonymousFunction& function, Storable* arguments, int32_t count, int32_t destination, int outputs,
                     KeloNode& place);
  bool callBuiltin(const Builtin& row, Storable* arguments, int32_t count, int32_t destination, int outputs,
                   KeloNode& place);
  bool callRow(const Site& site, int32_t destination);
  bool callQuickRow(const Instruction& i);
  bool checkInputCount(const std::string& label, const char* tooMany, size_t declared, size_t given, KeloNode& place);
  bool spreadArguments(const Site& site, Storable* arguments, std::vector<Storable>* spread);
  bool failArgument(const Site& site, int32_t k, KeloNode& place);
  void remember(Site& site, FunctionUnit& unit, LocalFunctionFile* functions, int64_t index = -1);
  void rememberLocal(Site& site, const LocalFunction& function);
  bool makeHandle(const Instruction& i);
  void makeAnonymous(const Site& site, Storable* result);
  int outputsOf(const Site& site) const;

  // ---- machine_programs.cpp: the program of a run, files, bodies of handles
  bool callMain(KeloNode& program, Storable* arguments, int32_t count, int32_t destination, int outputs,
                KeloNode& place);
  bool enterScript(KeloNode& program, bool mainFunctionRequired, int32_t destination, int outputs, KeloNode& place);
  KeloNode* programOf(Name name, KeloNode& place, CallForm form, bool* failed);
  KeloNode& loadProgram(Name name);
  bool hasFile(Name name) const;
  bool mayBeScript(Name name) const;
  Signature signatureOfFile(Name name);
  Ref<LocalFunctionFile> localFunctionsOf(KeloNode& program);
  const Code* codeOf(HandleBody& body, bool isWhole, KeloNode& place);

  // ---- machine_operators.cpp
  bool binary(const Instruction& i, BinaryOp op, Storable* result);
  bool productOfTransposed(const Instruction& i, Storable* result);
  bool unary(const Instruction& i, UnaryOp op);
  bool transpose(const Instruction& i);
  bool range(const Instruction& i);
  bool rangeArgument(const Instruction& i);
  bool checkRange(const Instruction& i);
  bool rangeFrom(const Instruction& i, Range* range);
  bool joinRow(const Instruction& i);
  bool appendRow(const Instruction& i);
  bool appendText(const Instruction& i);
  bool joinRows(const Instruction& i);
  bool checkElement(const Storable& value, KeloNode& place);
  bool compare(const Instruction& i, BinaryOp op, bool* answer);
  bool truth(const Instruction& i, bool* answer);
  bool isTrue(const Storable& value, const char* notNumeric, KeloNode& place, bool* answer);
  bool forRange(const Instruction& i);
  bool forArray(const Instruction& i);
  bool arrayStep(const Instruction& i);
  bool checkSwitch(const Instruction& i);
  bool caseMatches(const Instruction& i, bool* matches);

  // ---- machine_elements.cpp: elements read and written, `end` and ":"
  bool readElements(const Storable& array, const Site& site, const Storable* const* arguments, int32_t count,
                    Storable* result);
  bool indexOrCall(const Instruction& i);
  std::vector<Index> indicesOf(const SizeVector& size, const Storable* const* arguments, int32_t count);
  bool storeRow(const Instruction& i);
  bool store(const Instruction& i, const Storable* const* arguments, int32_t count, const Storable* value);
  int64_t extentAt(const Site& site, int32_t argument) const;
  int64_t extentFor(int32_t site, int32_t argument) const;
  bool endOf(const Instruction& i);
  bool colon(const Instruction& i);
  bool checkExtent(const Instruction& i);
  bool checkArgument(const Instruction& i);

  // ---- machine_fields.cpp
  const Storable* structureIn(int32_t slot, KeloNode& place);
  bool fieldOfName(const Instruction& i);
  bool field(const Instruction& i, Name name, Name parent);
  bool namedField(const Instruction& i);
  bool elementField(const Instruction& i);
  bool setField(const Instruction& i);
  bool setNamedField(const Instruction& i);
  bool putField(const Instruction& i, const HeldName& name);
  bool setPath(const Instruction& i);
  bool setElementField(const Instruction& i);
  bool setFieldElement(const Instruction& i, std::span<const Storable> subscripts);
  bool makeStructure(const Instruction& i);
  bool reachedSize(int32_t slot, KeloNode& place, SizeVector* size);
  bool chainIndices(const Instruction& i);
  bool chainNamedField(const Instruction& i);
  bool chainEnd(const Instruction& i, bool erases);
  bool finishChain(const FieldChain& chain, int32_t slot, std::optional<Storable> value, KeloNode& place);

  // ---- machine_statements.cpp: assignments to names, `ans`, display
  bool assign(Storable& target, int32_t operand, const char* withoutValue, KeloNode& place);
  bool assignList(const Instruction& i);
  bool nameStatement(const Instruction& i);
  bool answer(int32_t slot, int32_t operand, bool shows);
  void show(const Storable& value, std::span<const Name> names);
  void showValue(std::optional<Name> name, const Storable& value);

  // ---- machine_errors.cpp: messages with the place of a node; all give false
  Name runningFunction() const;
  bool fail(KeloNode& place, std::string reason);
  bool fail(KeloNode& place, const Problem& problem);
  bool failIn(Name funName, KeloNode& place, const Problem& problem);
  bool failWithCurrentException(KeloNode& place, const char* lastResort);
  bool failTooDeep(KeloNode& place);
  void warn(KeloNode& place, std::string sentence);
  CallSite siteOf(KeloNode& place) const;
  template <class Body>
  bool guarded(KeloNode& place, const char* lastResort, Body&& body);

  // ---- Operands of the running frame
  Storable& reg(int32_t r) { return frame().base[r]; }
  const Storable& at(int32_t operand) const {
    return operand >= 0 ? frame().base[operand] : frame().code->constants[static_cast<size_t>(~operand)];
  }
  /// The value of an operand, which is used up if it is a temporary.
  Storable take(int32_t operand) {
    if (operand < frame().code->slotCount()) return at(operand);
    return std::move(reg(operand));
  }
  KeloNode& placeOf(const Instruction& i) const {
    return *frame().code->places[static_cast<size_t>(&i - frame().code->instructions.data())];
  }
  const Site& siteAt(int32_t index) const { return frame().code->sites[static_cast<size_t>(index)]; }
  Name nameAt(int32_t index) const { return frame().code->names[static_cast<size_t>(index)]; }
  const char* textAt(int32_t index) const { return frame().code->texts[static_cast<size_t>(index)].c_str(); }

  Environment& app_;
  const uint64_t run_;  // number of this run, for what instructions remember
  RegisterStack stack_;
  FrameStack frames_;
  std::vector<FieldChain> chains_;  // under construction
  bool wasTooDeep_ = false;
  std::optional<Storable> entryResult_;  // what the entry frame gave
  std::vector<std::unique_ptr<Code>> texts_;  // of the programs and texts of this run
  const Name imaginaryI_, imaginaryJ_;
  std::unordered_map<uint32_t, KeloNode*> programs_;  // of the run directory, by name; null: there is no such file
  std::unordered_map<const KeloNode*, Ref<LocalFunctionFile>> localFiles_;  // by program
  std::unordered_map<const KeloNode*, const Code*> scripts_;                // by program
};

template <class Body>
bool Machine::guarded(KeloNode& place, const char* lastResort, Body&& body) {
  try {
    return body();
  } catch (const FatalFault&) {
    throw;
  } catch (...) {
    return failWithCurrentException(place, lastResort);
  }
}

/// What is said of an error in an operation that has no words of its own.
const char* lastResortOf(Op op);

}  // namespace kelo
