// Names and calls: what a name stands for, the arguments of a call, built-ins, and handles as they are written.
//
// A name is looked up as a variable of the top workspace, as a local function of the running file, as a file of the run
// directory, and last as the imaginary unit. Names of built-ins never come here: they are words of their own.
#include <fmt/format.h>

#include "frontend/node_text.h"
#include "interpreter/environment.h"
#include "interpreter/builtin_table.h"
#include "interpreter/dispatch.h"
#include "interpreter/resolve.h"
#include "interpreter/visit_guard.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

// A variable that is no local function.
const Storable* Visitor::findVariable(Name name, uint32_t* hint) const {
  const Storable* value = app_.workspaces.top().find(name, hint);
  return value && !value->isLocalFunc() ? value : nullptr;
}

std::optional<LocalFunction> Visitor::findLocalFunction(Name name) const {
  const Workspace& top = app_.workspaces.top();
  if (const Storable* value = top.find(name); value && value->isLocalFunc()) return *value->localFunc();
  if (!top.functions()) return std::nullopt;
  const int64_t index = top.functions()->indexOf(name);
  if (index < 0) return std::nullopt;
  return LocalFunction(top.functions(), index);
}

bool Visitor::isAccessible(const LocalFunction& function, KeloNode& caller) const {
  return function.file()->url == caller.relativePath;
}

NodeValue Visitor::visitId(KeloNode& node, Outputs outputs) {
  const NodeCache& cache = node.cache;
  if (const Storable* value = findVariable(cache.name, &cache.hint)) return NodeValue(*value);
  if (const auto local = findLocalFunction(cache.name); local && isAccessible(*local, node)) {
    return callLocal(*local, {}, outputs, node);
  }
  return callFile(cache.name, {}, outputs, node, CallForm::bare);
}

NodeValue Visitor::visitSubarray_or_func(KeloNode& node, Outputs outputs) {
  const NodeCache& cache = node.cache;
  const auto& argNodes = detailsOf<CallDetails>(node).args;
  if (const Storable* value = findVariable(cache.name, &cache.hint)) {
    if (value->isNumeric()) {
      double element;
      if (elementOf(*value->numeric(), argNodes, &element)) return NodeValue(element);
    }
    const Storable held = *value;  // the arguments may change the variable
    return held.isFuncHandle() ? callWithArguments(*held.funcHandle(), argNodes, outputs, node)
                               : index(held, argNodes, node);
  }
  if (!stackHasRoom(node)) return NodeValue::failure();
  const auto local = findLocalFunction(cache.name);
  if (local && !isAccessible(*local, node)) {
    return fail(node, expectation(fmt::format(text::kLocalNotAccessible, cache.name.text())));
  }
  ArgumentList arguments;
  if (!evaluateArguments(argNodes, arguments, node, ArgumentsOf::user)) return NodeValue::failure();
  if (local) return callLocal(*local, arguments.values(), outputs, node);
  return callFile(cache.name, arguments.values(), outputs, node, CallForm::withParentheses);
}

NodeValue Visitor::callWithArguments(const FunctionHandle& handle, const std::vector<KeloNode*>& argNodes,
                                     Outputs outputs, KeloNode& place) {
  if (!stackHasRoom(place)) return NodeValue::failure();
  ArgumentList arguments;
  if (!evaluateArguments(argNodes, arguments, place, ArgumentsOf::user)) return NodeValue::failure();
  return callHandle(handle, arguments.values(), outputs, place);
}

// A comma list expands into arguments. What fails has been reported; beside a user's function a second line says where.
bool Visitor::evaluateArguments(const std::vector<KeloNode*>& nodes, ArgumentList& arguments, KeloNode& place,
                                ArgumentsOf callee) {
  for (KeloNode* node : nodes) {
    NodeValue value = visit(*node);
    if (value.isStorable()) {
      arguments.push(std::move(value.storable()));
    } else if (value.isArrayList()) {
      auto& [first, list] = value.arrayList();
      if (first) arguments.push(std::move(*first));
      for (Storable& each : list) arguments.push(std::move(each));
    } else if (value.isVoid()) {
      fail(place, fmt::format(text::kArgumentWithoutValue, sourceText(*node)));
      return false;
    } else {
      if (callee == ArgumentsOf::user) fail(place, text::kArgumentFailed);
      return false;
    }
  }
  return true;
}

NodeValue Visitor::visitBuilt_in_func(KeloNode& node, Outputs outputs) {
  const auto& details = detailsOf<CallDetails>(node);
  if (details.isCommand) return fail(node, text::kCommandSyntax);
  if (details.builtin == nullptr) return fail(node, text::kUnexpectedError);
  if (!stackHasRoom(node)) return NodeValue::failure();
  ArgumentList arguments;
  if (!evaluateArguments(details.args, arguments, node, ArgumentsOf::builtIn)) return NodeValue::failure();
  return runBuiltin(*details.builtin, arguments.values(), outputs, node);
}

NodeValue Visitor::runBuiltin(const Builtin& row, std::span<Storable> args, Outputs outputs, KeloNode& place) {
  const CallSite site = siteOf(place);
  const auto wanted = outputs == kNoOutputs ? std::nullopt : std::optional<int>(outputs);
  return callBuiltin(row, args, wanted, site, app_, this);
}

// Nothing of a body is evaluated when a handle is made, and no name in it is checked.
NodeValue Visitor::visitFuncHandle(KeloNode& node) {
  const Name name = node.cache.name;
  if (node.cache.selector == 1) return anonymousFunction(node);
  if (node.cache.selector == 4) return NodeValue(FunctionHandle::builtIn(name));
  if (const Storable* value = findVariable(name, &node.cache.hint)) {
    const char* what = value->isFuncHandle() ? "a function handle" : "an array";
    return fail(node, expectation(fmt::format(text::kHandleOfValue, name.text(), what)));
  }
  if (const auto local = findLocalFunction(name)) return NodeValue(FunctionHandle::local(*local));
  return NodeValue(FunctionHandle::userDefined(name));
}

NodeValue Visitor::anonymousFunction(KeloNode& node) {
  const auto& details = detailsOf<HandleDetails>(node);
  if (details.problem) return fail(node, *details.problem);
  auto function = makeRef<AnonymousFunction>();
  const TextPosition body = positionOf(*node.cache.first);
  function->workspace = app_.workspaces.top();
  function->expression = details.expression;
  function->displayText = details.displayText;
  function->inputArgs = details.inputArgs;
  function->exprLineNum = body.line;
  function->exprCharPos = body.charPos;
  function->relativePath = node.relativePath;
  return NodeValue(FunctionHandle::anonymous(std::move(function)));
}

}  // namespace kelo
