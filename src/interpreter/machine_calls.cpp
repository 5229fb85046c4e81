// Calls: of functions by name, of handles, of built-ins.
//
// A name is looked up as a variable, as a local function of the running file, as a file of the run
// directory, and last as the imaginary unit. Names of built-ins never come here: they are words of
// their own. Arguments lie in a row of registers, which become the first slots of what is called.
#include <algorithm>

#include <fmt/format.h>

#include "frontend/node_text.h"
#include "grammar/kelo_node.h"
#include "interpreter/environment.h"
#include "interpreter/builtin_table.h"
#include "interpreter/dispatch.h"
#include "interpreter/function_unit.h"
#include "interpreter/machine.h"
#include "interpreter/machine_frames.h"
#include "interpreter/quick_calls.h"
#include "interpreter/resolve.h"
#include "interpreter/visitor.h"
#include "messages/catalogue/frontend.h"
#include "messages/catalogue/indexing.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

// ---- Arguments

bool Machine::failArgument(const Site& site, int32_t k, KeloNode& place) {
  return fail(place, fmt::format(text::kArgumentWithoutValue, sourceText(*site.arguments[static_cast<size_t>(k)])));
}

// Where some argument is several values or none: all of them in a row of their own.
bool Machine::spreadArguments(const Site& site, Storable* arguments, std::vector<Storable>* spread) {
  for (int32_t k = 0; k < site.count; ++k) {
    Storable& value = arguments[k];
    if (value.isNone()) return failArgument(site, k, *site.node);
    if (value.isPositions()) value = value.positions().asSubscripts();
    if (value.isList()) std::move(value.list().begin(), value.list().end(), std::back_inserter(*spread));
    else spread->push_back(std::move(value));
    value.clear();
  }
  return true;
}

// ---- By name

// A name with arguments, which is no variable as far as the lowering could tell.
bool Machine::call(const Instruction& i, Storable* arguments) {
  Site& site = const_cast<Site&>(siteAt(i.d));
  const Storable& base = reg(i.b);
  if (base.isFuncHandle() && callAnonymousAgain(*base.funcHandle(), site, arguments, i.a)) return true;
  if (site.isSlot && meansTheSame(base, site) && arePlain(arguments, site.count)) {
    if (callAgain(site, arguments, i.a)) return true;
    return callUnit(*site.target, site.targetFunctions, arguments, site.count, i.a, outputsOf(site), *site.node);
  }
  if (base.isArray()) {
    if (i.op == Op::call) becomeIndex(const_cast<Instruction&>(i), site);
    return indexOrCall(i);
  }
  if (!base.isFuncHandle() && !site.isSlot) return fail(*site.node, text::kIndexedNotArrayOrHandle);
  if (arePlain(arguments, site.count)) return callValue(base, site, arguments, site.count, i.a);
  std::vector<Storable> spread;
  if (!spreadArguments(site, arguments, &spread)) return false;
  return callSpread(base, site, spread, i.a);
}

// OPTIMIZATION: the name has turned out to be an array, and is read as one from now on.
void Machine::becomeIndex(Instruction& call, const Site& site) {
  call.op = site.count == 1 ? Op::index1 : site.count == 2 ? Op::index2 : Op::index;
  if (site.count > 2) return;
  call.c = site.first;
  call.e = site.first + 1;
}

// More arguments than registers were laid out for them: they go behind the frame.
bool Machine::callSpread(const Storable& base, Site& site, std::vector<Storable>& arguments, int32_t destination) {
  const auto count = static_cast<int32_t>(arguments.size());
  const int32_t chunk = stack_.chunk();
  const size_t depth = frames_.size();
  Storable* row = stack_.room(frame().base + frame().code->registers, count + 1);
  for (int32_t k = 0; k < count; ++k) row[k] = std::move(arguments[static_cast<size_t>(k)]);
  const bool done = callValue(base, site, row, count, destination);
  if (frames_.size() > depth) frame().chunk = chunk;
  else stack_.setChunk(chunk);
  return done;
}

bool Machine::callValue(const Storable& base, Site& site, Storable* arguments, int32_t count, int32_t destination) {
  KeloNode& place = *site.node;
  const int outputs = outputsOf(site);
  if (base.isFuncHandle()) {
    const FunctionHandle handle = *base.funcHandle();  // the register may be that of the result
    if (!callHandle(handle, arguments, count, destination, outputs, place)) return false;
    if (site.isSlot && handle.form() == FunctionHandle::Form::local) rememberLocal(site, handle.localFunction());
    return true;
  }
  const LocalFunction* held = base.localFunc();
  const auto found = held ? std::nullopt : findLocalFunction(site.name);
  if (const LocalFunction* local = held ? held : found ? &*found : nullptr) {
    if (!isAccessible(*local, place)) {
      return fail(place, expectation(fmt::format(text::kLocalNotAccessible, site.name.text())));
    }
    if (held) rememberLocal(site, *local);
    else if (base.isNone()) remember(site, functionUnit(*local->body().declaration), local->file().get());
    return callLocal(*local, arguments, count, destination, outputs, place);
  }
  FunctionUnit* unit = nullptr;
  const bool done =
      callFile(site.name, arguments, count, destination, outputs, place, CallForm::withParentheses, &unit);
  if (done && unit && base.isNone()) remember(site, *unit, frames_.back().functions);
  return done;
}

// What a site found, for its next call in this run.
void Machine::remember(Site& site, FunctionUnit& unit, LocalFunctionFile* functions, int64_t index) {
  site.run = run_;
  site.target = &unit;
  site.targetCode = static_cast<size_t>(site.count) == unit.inputs.size() ? &unit.code(true, app_.builtins) : nullptr;
  site.targetFunctions = functions;
  site.targetIndex = index;
  site.functions = unit.isMain ? frames_.caller().functions : frame().functions;
}

void Machine::rememberLocal(Site& site, const LocalFunction& function) {
  remember(site, functionUnit(*function.body().declaration), function.file().get(), function.index());
}

// A name without arguments that is no variable; a local function of another file is passed over.
bool Machine::loadName(const Instruction& i) {
  const Site& site = siteAt(i.d);
  KeloNode& place = *site.node;
  Storable* arguments = frame().base + site.first;
  const int outputs = outputsOf(site);
  if (const auto local = findLocalFunction(site.name); local && isAccessible(*local, place)) {
    return callLocal(*local, arguments, 0, i.a, outputs, place);
  }
  FunctionUnit* unit = nullptr;
  return callFile(site.name, arguments, 0, i.a, outputs, place, CallForm::bare, &unit);
}

// ---- Users' functions

// Too few arguments are a warning: what is not bound is not found when it is read.
bool Machine::checkInputCount(const std::string& label, const char* tooMany, size_t declared, size_t given,
                              KeloNode& place) {
  if (given > declared) return fail(place, expectation(fmt::format(fmt::runtime(tooMany), label, declared, given)));
  if (given < declared) {
    warn(place, fmt::format(text::kTooFewInputs, label, declared, declared >= 2 ? "s" : "", given));
  }
  return true;
}

bool Machine::callUnit(FunctionUnit& unit, LocalFunctionFile* functions, Storable* arguments, int32_t count,
                       int32_t destination, int outputs, KeloNode& place) {
  const auto given = static_cast<size_t>(count);
  const bool isWhole = given == unit.inputs.size();
  if (!isWhole && !unit.isMain &&
      !checkInputCount(unit.funName.text(), text::kTooManyInputsLocal, unit.inputs.size(), given, place)) {
    return false;
  }
  if (!push(unit.code(isWhole, app_.builtins), arguments, std::min(count, int32_t(unit.inputs.size())), destination,
            place)) {
    return false;
  }
  enterFunction(frame(), unit, functions, count, outputs);
  if (isWhole || !unit.isMain) return true;
  return checkInputCount(unit.funName.text(), text::kTooManyInputs, unit.inputs.size(), given, *unit.node);
}

bool Machine::callLocal(const LocalFunction& function, Storable* arguments, int32_t count, int32_t destination,
                        int outputs, KeloNode& place) {
  const LocalFunctionBody& body = function.body();
  if (!isAccessible(function, place)) {
    return fail(place, expectation(fmt::format(text::kLocalNotAccessible, body.funName.text())));
  }
  return callUnit(functionUnit(*body.declaration), function.file().get(), arguments, count, destination, outputs,
                  place);
}

bool Machine::callFile(Name name, Storable* arguments, int32_t count, int32_t destination, int outputs, KeloNode& place,
                       CallForm form, FunctionUnit** unit) {
  bool failed = false;
  KeloNode* program = programOf(name, place, form, &failed);
  if (failed) return false;
  if (program == nullptr) {
    if (name != imaginaryI_ && name != imaginaryJ_) return fail(place, fmt::format(text::kNameNotFound, name.text()));
    reg(destination) = ComplexDoubleArray(ComplexDouble{0, 1});
    return true;
  }
  ProgramDetails& details = programDetails(*program);
  if (details.form == ProgramDetails::Form::function) {
    if (!details.problem) *unit = details.main;
    return callMain(*program, arguments, count, destination, outputs, place);
  }
  if (form == CallForm::withParentheses) return fail(place, text::noFunctionDeclaration(name.text() + ".m"));
  return enterScript(*program, false, destination, outputs, place);
}

// ---- Handles

bool Machine::callHandle(const FunctionHandle& handle, Storable* arguments, int32_t count, int32_t destination,
                         int outputs, KeloNode& place) {
  FunctionUnit* unit = nullptr;
  switch (handle.form()) {
    case FunctionHandle::Form::anonymous:
      return callAnonymous(handle.anonymousFunction(), arguments, count, destination, outputs, place);
    case FunctionHandle::Form::local:
      return callLocal(handle.localFunction(), arguments, count, destination, outputs, place);
    case FunctionHandle::Form::userDefined:
      return callFile(handle.name(), arguments, count, destination, outputs, place, CallForm::withParentheses, &unit);
    case FunctionHandle::Form::builtIn: break;
  }
  return callBuiltin(*app_.builtins.find(handle.name()), arguments, count, destination, outputs, place);
}

bool Machine::callAnonymous(AnonymousFunction& function, Storable* arguments, int32_t count, int32_t destination,
                            int outputs, KeloNode& place) {
  HandleBody& body = *function.body;
  const size_t inputs = body.inputArgs.size();
  if (static_cast<size_t>(count) != inputs &&
      !checkInputCount(body.displayText, text::kTooManyInputsLocal, inputs, static_cast<size_t>(count), place)) {
    return false;
  }
  const bool isWhole = static_cast<size_t>(count) == inputs && function.isWhole;
  const Code* code = codeOf(body, isWhole, place);
  if (code == nullptr) return false;
  if (!push(*code, arguments, count, destination, place)) return false;
  Frame& made = frame();
  enterHandle(made, function, outputs);
  for (size_t k = static_cast<size_t>(count); k < function.inputValues.size(); ++k) {
    made.base[k] = function.inputValues[k];
  }
  if (function.all) made.more = std::make_unique<Workspace>(*function.all);
  return true;
}

// ---- Built-ins

bool Machine::callBuiltin(const Builtin& row, Storable* arguments, int32_t count, int32_t destination, int outputs,
                          KeloNode& place) {
  NodeValue value =
      kelo::callBuiltin(row, {arguments, static_cast<size_t>(count)}, outputs, siteOf(place), app_, this);
  for (int32_t k = 0; k < count; ++k) {
    if (!arguments[k].isPlainScalar()) arguments[k].clear();
  }
  if (value.isFailure()) return false;
  reg(destination) = std::move(value.storable());
  return true;
}

bool Machine::callRow(const Site& site, int32_t destination) {
  Storable* arguments = frame().base + site.first;
  if (arePlain(arguments, site.count)) {
    return callBuiltin(*site.row, arguments, site.count, destination, outputsOf(site), *site.node);
  }
  std::vector<Storable> spread;
  if (!spreadArguments(site, arguments, &spread)) return false;
  return callBuiltin(*site.row, spread.data(), static_cast<int32_t>(spread.size()), destination, outputsOf(site),
                     *site.node);
}

// A built-in that could not be computed without a call: the operands go where arguments lie.
bool Machine::callQuickRow(const Instruction& i) {
  const Site& site = siteAt(i.d);
  Storable second = site.count == 2 ? take(i.c) : Storable(0.0);
  Storable first = take(i.b);
  Storable* arguments = frame().base + site.first;
  arguments[0] = std::move(first);
  if (site.count == 2) arguments[1] = std::move(second);
  return callRow(site, i.a);
}

// s = strcat(s, ...): in place where it may.
bool Machine::appendText(const Instruction& i) {
  const Site& site = siteAt(i.d);
  Storable* arguments = frame().base + site.first;
  if (appendTexts(reg(i.a), {arguments + 1, static_cast<size_t>(site.count) - 1})) return true;
  arguments[0] = reg(i.a);
  return callRow(site, i.b) && assign(reg(i.a), i.b, text::kNoValueToAssign, placeOf(i));
}

// ---- Handles as they are written

// Nothing of a body is evaluated when a handle is made, and no name in it is checked.
bool Machine::makeHandle(const Instruction& i) {
  const Site& site = siteAt(i.d);
  KeloNode& place = *site.node;
  const auto& details = static_cast<HandleDetails&>(*place.cache.details);
  if (details.form == HandleDetails::Form::anonymous) {
    if (details.problem) return fail(place, *details.problem);
    makeAnonymous(site, &reg(i.a));
    return true;
  }
  if (details.form == HandleDetails::Form::builtIn) {
    reg(i.a) = FunctionHandle::builtIn(site.name);
    return true;
  }
  const Storable& value = reg(i.b);
  if (value.isArray() || value.isFuncHandle()) {
    const char* what = value.isFuncHandle() ? "a function handle" : "an array";
    return fail(place, expectation(fmt::format(text::kHandleOfValue, site.name.text(), what)));
  }
  if (const auto local = findLocalFunction(site.name)) reg(i.a) = FunctionHandle::local(*local);
  else reg(i.a) = FunctionHandle::userDefined(site.name);
  return true;
}

// The names that the body mentions are captured; all there are where a script that it may call
// could ask for others.
void Machine::makeAnonymous(const Site& site, Storable* result) {
  auto function = makeRef<AnonymousFunction>();
  HandleBody& body = *site.handle;
  bool asksForAll = body.capturesAll;
  function->body = site.handle;
  function->values.reserve(body.captured.size());
  for (size_t k = 0; k < body.captured.size(); ++k) {
    const Storable& value = reg(site.slots[k]);
    const bool isVariable = !value.isNone() && !value.isLocalFunc();
    function->values.push_back(value);
    function->isWhole = function->isWhole && isVariable;
    asksForAll = asksForAll || (body.mayBeScript[k] && !isVariable && mayBeScript(body.captured[k]));
  }
  const size_t captured = body.captured.size();
  for (size_t k = body.inputArgs.size(); k-- > 0;) {
    const Storable& value = reg(site.slots[captured + k]);
    if (value.isNone()) continue;  // and so for what stands behind the last one
    function->inputValues.resize(std::max(function->inputValues.size(), k + 1), Storable::none());
    function->inputValues[k] = value;
  }
  if (asksForAll) function->all = copyOfVariables();
  if (LocalFunctionFile* functions = frame().functions) {
    functions->retain();
    function->functions = Ref<LocalFunctionFile>::adopt(functions);
  }
  *result = FunctionHandle::anonymous(std::move(function));
}

}  // namespace kelo
