// Calls of users' functions: files, local functions, handles. Each call has a workspace and a frame of its own; both go
// when the call ends, however it ends.
#include <fmt/format.h>

#include "KeloParser.h"
#include "frontend/matlab_parser.h"
#include "interpreter/environment.h"
#include "interpreter/builtin_table.h"
#include "interpreter/resolve.h"
#include "interpreter/visit_guard.h"
#include "messages/catalogue/frontend.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

/// A call in progress: its workspace on the stack and its frame in place.
class Visitor::CallScope {
 public:
  CallScope(Visitor& visitor, Workspace workspace, const Frame& frame) : visitor_(visitor), frame_(visitor, frame) {
    visitor_.app_.workspaces.push(std::move(workspace));
  }
  ~CallScope() { visitor_.app_.workspaces.pop(); }
  CallScope(const CallScope&) = delete;
  CallScope& operator=(const CallScope&) = delete;

 private:
  Visitor& visitor_;
  FrameScope frame_;
};

// ---- What all calls share

Visitor::Frame Visitor::frameOf(Name function, std::span<Storable> args, Outputs outputs) {
  return {function, Signature{static_cast<int64_t>(args.size()), std::max(outputs, 0)}, -1};
}

// Too few arguments are a warning: what is not bound is not found when it is read.
bool Visitor::checkInputCount(const std::string& label, const char* tooMany, size_t declared, size_t given,
                              KeloNode& place) {
  if (given > declared) {
    fail(place, expectation(fmt::format(fmt::runtime(tooMany), label, declared, given)));
    return false;
  }
  if (given < declared) {
    warn(place, fmt::format(text::kTooFewInputs, label, declared, declared >= 2 ? "s" : "", given));
  }
  return true;
}

void Visitor::bindInputs(std::span<const Name> names, std::span<Storable> args) {
  Workspace& top = app_.workspaces.top();
  for (size_t k = 0; k < args.size(); ++k) {
    uint32_t hint = static_cast<uint32_t>(k);
    top.variable(names[k], &hint) = std::move(args[k]);
  }
}

/// All declared outputs, NOTE: intended: whatever the caller wants of them; `missing` is the text for one that was not
/// assigned.
template <class Missing>
NodeValue Visitor::collectOutputs(std::span<const Name> names, Missing&& missing, KeloNode& place) {
  std::vector<Storable> values;
  for (const Name name : names) {
    uint32_t hint = 0;
    const Storable* value = findVariable(name, &hint);
    if (value == nullptr) return fail(place, missing(name));
    if (names.size() == 1) return NodeValue(*value);
    values.push_back(*value);
  }
  return names.empty() ? NodeValue::nothing() : NodeValue::listOf(std::move(values));
}

// ---- Function files

NodeValue Visitor::visitProg_function(KeloNode& program, std::span<Storable> args, Outputs outputs) {
  const ProgramDetails& details = programDetails(program);
  const FunctionDetails& function = details.main;
  const std::string& label = function.funName.text();
  Workspace workspace = details.localFunctions.empty() ? Workspace() : Workspace::over(localFunctionsOf(program));
  const CallScope scope(*this, std::move(workspace), frameOf(function.funName, args, outputs));
  if (details.problem) return fail(*details.problemNode, *details.problem);
  if (!checkInputCount(label, text::kTooManyInputs, function.inputs.size(), args.size(), *function.node)) {
    return NodeValue::failure();
  }
  bindInputs(function.inputs, args);
  if (function.body && runStatements(*function.body).isFailure()) return NodeValue::failure();
  const auto missing = [](Name name) { return fmt::format(text::kOutputUndefined, name.text()); };
  return collectOutputs(function.outputs, missing, *function.node);
}

namespace {

std::string fileOf(Name function, const std::string& directory) {
  return (directory.empty() ? "" : directory + "/") + function.text() + ".m";
}

}  // namespace

// The program of a name, null when there is none. A file that cannot be loaded has been reported, and so has one that
// is missing where parentheses ask for a function.
KeloNode* Visitor::programOf(Name name, KeloNode& place, CallForm form, bool* failed) {
  const auto found = programs_.find(name.id());
  if (found != programs_.end() && (found->second || form == CallForm::bare)) return found->second;
  if (form == CallForm::bare && !app_.files.isRegularFile(fileOf(name, app_.runInDir))) {
    return programs_[name.id()] = nullptr;
  }
  const NodeValue loaded = guarded(place, text::kUnexpectedError, [&] {
    loadProgram(name);
    return NodeValue::nothing();
  });
  *failed = loaded.isFailure();
  return *failed ? nullptr : programs_[name.id()];
}

// From the buffer or the disk. Throws a Problem for what cannot be loaded.
KeloNode& Visitor::loadProgram(Name name) {
  return *(programs_[name.id()] = parseFile(app_.parserSetting(), fileOf(name, app_.runInDir)).get());
}

NodeValue Visitor::callFile(Name name, std::span<Storable> args, Outputs outputs, KeloNode& place, CallForm form) {
  if (!stackHasRoom(place)) return NodeValue::failure();
  bool failed = false;
  KeloNode* program = programOf(name, place, form, &failed);
  if (failed) return NodeValue::failure();
  if (program == nullptr) {
    if (name == imaginaryI_ || name == imaginaryJ_) return NodeValue(ComplexDouble{0, 1});
    return fail(place, fmt::format(text::kNameNotFound, name.text()));
  }
  if (programDetails(*program).form == ProgramDetails::Form::function) {
    return visitProg_function(*program, args, outputs);
  }
  if (form == CallForm::withParentheses) {
    return fail(place, text::noFunctionDeclaration(name.text() + ".m"));
  }
  const FrameScope scope(*this, {Name(), frame_.call, -1});
  return runProgram(*program);
}

// ---- Local functions

NodeValue Visitor::callLocal(const LocalFunction& function, std::span<Storable> args, Outputs outputs,
                             KeloNode& place) {
  if (!stackHasRoom(place)) return NodeValue::failure();
  const LocalFunctionBody& body = function.body();
  const std::string& label = body.funName.text();
  if (!isAccessible(function, place)) return fail(place, expectation(fmt::format(text::kLocalNotAccessible, label)));
  if (!checkInputCount(label, text::kTooManyInputsLocal, body.inputArgs.size(), args.size(), place)) {
    return NodeValue::failure();
  }
  // The workspace that it was found in may change.
  const LocalFunction held = function;  // NOLINT(performance-unnecessary-copy-initialization)
  const CallScope scope(*this, Workspace::over(function.file()), frameOf(body.funName, args, outputs));
  bindInputs(body.inputArgs, args);
  if (body.parseTree && runStatements(*body.parseTree).isFailure()) return NodeValue::failure();
  const auto missing = [&](Name name) { return fmt::format(text::kLocalOutputUndefined, name.text(), label); };
  return collectOutputs(body.outputArgs, missing, body.parseTree ? *body.parseTree : place);
}

// ---- Handles

NodeValue Visitor::callHandle(const FunctionHandle& handle, std::span<Storable> args, Outputs outputs,
                              KeloNode& place) {
  switch (handle.form()) {
    case FunctionHandle::Form::anonymous: return callAnonymous(handle, args, outputs, place);
    case FunctionHandle::Form::local: return callLocal(handle.localFunction(), args, outputs, place);
    case FunctionHandle::Form::userDefined:
      return callFile(handle.name(), args, outputs, place, CallForm::withParentheses);
    case FunctionHandle::Form::builtIn: break;
  }
  return runBuiltin(*app_.builtins.find(handle.name()), args, outputs, place);
}

// The body is parsed at the first call. Its text stands where it was written, so errors in it name that place.
KeloNode* Visitor::bodyOf(AnonymousFunction& function, KeloNode& place) {
  if (function.tree) return function.tree;
  const ParsedText::Origin origin{function.relativePath, static_cast<size_t>(function.exprLineNum.value_or(1)),
                                  static_cast<size_t>(function.exprCharPos.value_or(0))};
  const ExprOnlyTree tree = parseExpression(app_.parserSetting(), function.expression, origin);
  if (!tree) {
    fail(place, text::kUnexpectedHandle);
    return nullptr;
  }
  function.parsed = tree;
  return function.tree = expressionOf(*tree);
}

NodeValue Visitor::callAnonymous(const FunctionHandle& handle, std::span<Storable> args, Outputs outputs,
                                 KeloNode& place) {
  if (!stackHasRoom(place)) return NodeValue::failure();
  AnonymousFunction& function = handle.anonymousFunction();
  if (!checkInputCount(function.displayText, text::kTooManyInputsLocal, function.inputArgs.size(), args.size(),
                       place)) {
    return NodeValue::failure();
  }
  KeloNode* body = bodyOf(function, place);
  if (body == nullptr) return NodeValue::failure();
  // The variable that it was found in may change.
  const FunctionHandle held = handle;  // NOLINT(performance-unnecessary-copy-initialization)
  const CallScope scope(*this, Workspace::over(function.workspace), {Name(), frame_.call, -1});
  bindInputs(function.inputArgs, args);
  return visit(*body, outputs);
}

// ---- Questions of built-ins

namespace {

// What takes any number of arguments counts them below zero, the last one standing for all the rest.
Visitor::Signature signatureOf(const Builtin& row) {
  const int64_t inputs = row.inputs.most == kAny ? -(int64_t{row.inputs.least} + 1) : row.inputs.most;
  return {inputs, row.outputs == kAny ? -1 : row.outputs};
}

Visitor::Signature signatureOf(const LocalFunction& function) {
  const LocalFunctionBody& body = function.body();
  return {static_cast<int64_t>(body.inputArgs.size()), static_cast<int64_t>(body.outputArgs.size())};
}

}  // namespace

Visitor::Signature Visitor::signatureOf(const FunctionHandle& handle) {
  switch (handle.form()) {
    case FunctionHandle::Form::anonymous:
      return Signature{static_cast<int64_t>(handle.anonymousFunction().inputArgs.size()), 1};
    case FunctionHandle::Form::local: return kelo::signatureOf(handle.localFunction());
    case FunctionHandle::Form::builtIn: return kelo::signatureOf(*app_.builtins.find(handle.name()));
    case FunctionHandle::Form::userDefined: break;
  }
  return signatureOfFile(handle.name());
}

Visitor::Signature Visitor::signatureOf(Name function) {
  if (const Builtin* row = app_.builtins.find(function)) return kelo::signatureOf(*row);
  if (const auto local = findLocalFunction(function)) return kelo::signatureOf(*local);
  return signatureOfFile(function);
}

Visitor::Signature Visitor::signatureOfFile(Name name) {
  const ProgramDetails& details = programDetails(loadProgram(name));
  if (details.form != ProgramDetails::Form::function) {
    throw problem(text::noFunctionDeclaration(name.text() + ".m"));
  }
  return {static_cast<int64_t>(details.main.inputs.size()), static_cast<int64_t>(details.main.outputs.size())};
}

// The tree lives as long as its evaluation: a handle that is made in it keeps its own text.
NodeValue Visitor::evaluateText(const std::string& text) {
  if (text.find_first_not_of(" \t\r\n") == std::string::npos) return DoubleArray();
  const ExprOnlyTree tree = parseExpression(app_.parserSetting(), text);
  if (!tree) return NodeValue::failure();
  const FrameScope scope(*this, {frame_.funName, frame_.call, -1});
  return visit(*expressionOf(*tree));
}

}  // namespace kelo
