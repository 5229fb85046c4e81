// Programs: the text that is run, files and what they declare, texts that are evaluated.
#include "KeloParser.h"
#include "frontend/matlab_parser.h"
#include "frontend/node_text.h"
#include "interpreter/environment.h"
#include "interpreter/builtin_table.h"
#include "interpreter/function_unit.h"
#include "interpreter/machine.h"
#include "interpreter/resolve.h"
#include "interpreter/visitor.h"
#include "messages/catalogue/frontend.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"
#include "platform/stack_guard.h"

namespace kelo {
namespace {

std::string fileOf(Name function, const std::string& directory) {
  return (directory.empty() ? "" : directory + "/") + function.text() + ".m";
}

uint64_t nextRun() {
  static uint64_t runs = 0;
  return ++runs;
}

}  // namespace

Machine::Machine(Environment& app)
    : app_(app), run_(nextRun()), imaginaryI_(Name::intern("i")), imaginaryJ_(Name::intern("j")) {}

// A fault may have come before the machine ran: the names go back all the same.
Machine::~Machine() {
  while (!frames_.empty()) pop();
}

// ---- The program of a run

bool Machine::runProgram(KeloNode& program, bool mainFunctionRequired) {
  const ProgramDetails& details = programDetails(program);
  if (details.form == ProgramDetails::Form::noText) return true;
  if (details.form == ProgramDetails::Form::function) {
    if (!callMain(program, stack_.start(), 0, 0, Visitor::kNoOutputs, program)) return false;
  } else if (!enterScript(program, mainFunctionRequired, 0, Visitor::kNoOutputs, program)) {
    return false;
  }
  frame().isEntry = true;
  return run();
}

bool Machine::callMain(KeloNode& program, Storable* arguments, int32_t count, int32_t destination, int outputs,
                       KeloNode& place) {
  const ProgramDetails& details = programDetails(program);
  LocalFunctionFile* functions = details.localFunctions.empty() ? nullptr : localFunctionsOf(program).get();
  if (details.problem) return failIn(details.main->funName, *details.problemNode, problem(*details.problem));
  return callUnit(*details.main, functions, arguments, count, destination, outputs, place);
}

// A script runs in the workspace that is on top at that moment. Its functions become variables of
// that workspace.
bool Machine::enterScript(KeloNode& program, bool mainFunctionRequired, int32_t destination, int outputs,
                          KeloNode& place) {
  const ProgramDetails& details = programDetails(program);
  if (details.form == ProgramDetails::Form::noText) {
    if (!frames_.empty()) reg(destination) = Storable::none();
    return true;
  }
  if (mainFunctionRequired) return fail(program, text::kMainFunctionMissing);
  if (details.problem) return failIn(Name(), *details.problemNode, problem(*details.problem));
  const Code*& code = scripts_[&program];
  if (code == nullptr) {
    texts_.push_back(Visitor::lowerStatements(details.statements, {}, {}, false, app_.builtins));
    code = texts_.back().get();
  }
  if (!pushOverlay(*code, destination, outputs, place)) return false;
  if (details.localFunctions.empty()) return true;
  const Ref<LocalFunctionFile> file = localFunctionsOf(program);
  for (size_t k = 0; k < file->functions.size(); ++k) {
    set(frames_.size() - 1, file->functions[k].funName, LocalFunction(file, static_cast<int64_t>(k)));
  }
  return true;
}

Ref<LocalFunctionFile> Machine::localFunctionsOf(KeloNode& program) {
  Ref<LocalFunctionFile>& file = localFiles_[&program];
  if (!file) {
    file = makeRef<LocalFunctionFile>();
    file->url = program.relativePath;
    file->functions = programDetails(program).localFunctions;
    file->owner = std::const_pointer_cast<ParsedText>(parseOf(program));
  }
  return file;
}

// ---- Files

// The program of a name, null when there is none. A file that cannot be loaded has been reported,
// and so has one that is missing where parentheses ask for a function.
KeloNode* Machine::programOf(Name name, KeloNode& place, CallForm form, bool* failed) {
  const auto found = programs_.find(name.id());
  if (found != programs_.end() && (found->second || form == CallForm::bare)) return found->second;
  if (form == CallForm::bare && !hasFile(name)) return programs_[name.id()] = nullptr;
  *failed = !guarded(place, text::kUnexpectedError, [&] {
    loadProgram(name);
    return true;
  });
  return *failed ? nullptr : programs_[name.id()];
}

bool Machine::hasFile(Name name) const {
  return app_.files.isRegularFile(fileOf(name, app_.runInDir));
}

// The imaginary units are asked for by their names alone, and seldom are there scripts of such
// names.
bool Machine::mayBeScript(Name name) const {
  return (name != imaginaryI_ && name != imaginaryJ_) || hasFile(name);
}

// From the buffer or the disk. Throws a Problem for what cannot be loaded.
KeloNode& Machine::loadProgram(Name name) {
  return *(programs_[name.id()] = parseFile(app_.parserSetting(), fileOf(name, app_.runInDir)).get());
}

// ---- Bodies of handles

// The body is parsed at the first call. Its text stands where it was written, so errors in it name
// that place.
const Code* Machine::codeOf(HandleBody& body, bool isWhole, KeloNode& place) {
  if (!body.code) {
    const ParsedText::Origin origin{body.relativePath, static_cast<size_t>(body.exprLineNum.value_or(1)),
                                    static_cast<size_t>(body.exprCharPos.value_or(0))};
    const ExprOnlyTree tree = parseExpression(app_.parserSetting(), body.expression, origin);
    if (!tree) {
      fail(place, text::kUnexpectedHandle);
      return nullptr;
    }
    auto made = std::make_shared<HandleCode>();
    made->parsed = tree;
    made->expression = expressionOf(*tree);
    body.code = made;
  }
  auto& made = *static_cast<HandleCode*>(body.code.get());
  std::unique_ptr<Code>& code = isWhole ? made.given : made.cautious;
  if (!code) {
    std::vector<Name> names = body.inputArgs;
    names.insert(names.end(), body.captured.begin(), body.captured.end());
    code = Visitor::lowerExpression(*made.expression, names, isWhole, Visitor::kOutputsOfCall, app_.builtins);
  }
  return code.get();
}

// ---- Texts

// The tree and the code live to the end of the run: a site may be asked for its place later.
NodeValue Machine::evaluateText(const std::string& text) {
  if (text.find_first_not_of(" \t\r\n") == std::string::npos) return DoubleArray();
  const ExprOnlyTree tree = parseExpression(app_.parserSetting(), text);
  if (!tree) return NodeValue::failure();
  KeloNode& expression = *expressionOf(*tree);
  if (platform::stackIsLow()) {
    failTooDeep(expression);
    return NodeValue::failure();
  }
  const auto code = Visitor::lowerExpression(expression, {}, false, Visitor::kNoOutputs, app_.builtins);
  FunctionUnit* const unit = frames_.empty() ? nullptr : frame().unit;
  if (!pushOverlay(*code, 0, Visitor::kNoOutputs, expression)) return NodeValue::failure();
  frame().isEntry = true;
  frame().unit = unit;
  if (!run()) return NodeValue::failure();
  return std::move(*entryResult_);
}

// ---- Questions of built-ins

namespace {

// What takes any number of arguments counts them below zero, the last one standing for all the
// rest.
Machine::Signature declaredBy(const Builtin& row) {
  const int64_t inputs = row.inputs.most == kAny ? -(int64_t{row.inputs.least} + 1) : row.inputs.most;
  return {inputs, row.outputs == kAny ? -1 : row.outputs};
}

Machine::Signature declaredBy(const LocalFunction& function) {
  const LocalFunctionBody& body = function.body();
  return {static_cast<int64_t>(body.inputArgs.size()), static_cast<int64_t>(body.outputArgs.size())};
}

}  // namespace

Machine::Signature Machine::signatureOf(const FunctionHandle& handle) {
  switch (handle.form()) {
    case FunctionHandle::Form::anonymous:
      return {static_cast<int64_t>(handle.anonymousFunction().body->inputArgs.size()), 1};
    case FunctionHandle::Form::local: return declaredBy(handle.localFunction());
    case FunctionHandle::Form::builtIn: return declaredBy(*app_.builtins.find(handle.name()));
    case FunctionHandle::Form::userDefined: break;
  }
  return signatureOfFile(handle.name());
}

Machine::Signature Machine::signatureOf(Name function) {
  if (const Builtin* row = app_.builtins.find(function)) return declaredBy(*row);
  if (const auto local = findLocalFunction(function)) return declaredBy(*local);
  return signatureOfFile(function);
}

Machine::Signature Machine::signatureOfFile(Name name) {
  const ProgramDetails& details = programDetails(loadProgram(name));
  if (details.form != ProgramDetails::Form::function) {
    throw problem(text::noFunctionDeclaration(name.text() + ".m"));
  }
  return {static_cast<int64_t>(details.main->inputs.size()), static_cast<int64_t>(details.main->outputs.size())};
}

}  // namespace kelo
