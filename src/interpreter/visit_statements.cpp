// Programs, statement lists, and what becomes of a statement's result: it is shown, and a plain expression sets `ans`.
#include <fmt/format.h>

#include "KeloParser.h"
#include "frontend/node_text.h"
#include "interpreter/environment.h"
#include "interpreter/resolve.h"
#include "interpreter/visit_guard.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

Visitor::Visitor(Environment& app)
    : app_(app), answer_(Name::intern("ans")), imaginaryI_(Name::intern("i")), imaginaryJ_(Name::intern("j")) {}

NodeValue Visitor::runProgram(KeloNode& program, bool mainFunctionRequired) {
  ProgramDetails& details = programDetails(program);
  if (details.form == ProgramDetails::Form::function) return visitProg_function(program, {}, kNoOutputs);
  if (details.form == ProgramDetails::Form::noText) return NodeValue::nothing();
  if (mainFunctionRequired) return fail(program, text::kMainFunctionMissing);
  return visitProg_stat_list(program);
}

// A script runs in the workspace that is on top at that moment. Its functions become variables of that workspace.
NodeValue Visitor::visitProg_stat_list(KeloNode& program) {
  ProgramDetails& details = programDetails(program);
  if (details.problem) return fail(*details.problemNode, *details.problem);
  if (!details.localFunctions.empty()) {
    const Ref<LocalFunctionFile> file = localFunctionsOf(program);
    for (size_t k = 0; k < file->functions.size(); ++k) {
      app_.workspaces.top().set(file->functions[k].funName, LocalFunction(file, static_cast<int64_t>(k)));
    }
  }
  return runStatements(*details.statements);
}

Ref<LocalFunctionFile> Visitor::localFunctionsOf(KeloNode& program) {
  Ref<LocalFunctionFile>& file = localFiles_[&program];
  if (!file) {
    file = makeRef<LocalFunctionFile>();
    file->url = program.relativePath;
    file->functions = programDetails(program).localFunctions;
    file->owner = std::const_pointer_cast<ParsedText>(parseOf(program));
  }
  return file;
}

// The place of an error here is the start of the list, and a request to stop wins over what the statement returned.
NodeValue Visitor::runStatements(KeloNode& list) {
  if (list.cache.kind == NodeKind::unresolved) resolve(list, app_.builtins);
  for (KeloNode* statement : detailsOf<ListDetails>(list).nodes) {
    NodeValue result = assignScalar(*statement) ? NodeValue::nothing() : runStatement(*statement);
    if (app_.takeStopRequest()) return fail(list, text::kTerminatedByUser);
    switch (result.form()) {
      case NodeValue::Form::breakValue:
      case NodeValue::Form::continueValue:
        return list.cache.flag ? std::move(result) : fail(list, text::kBreakOutsideLoop);
      case NodeValue::Form::failure:
      case NodeValue::Form::returnValue: return result;
      default: break;
    }
  }
  return NodeValue::nothing();
}

NodeValue Visitor::runStatement(KeloNode& statement) {
  switch (statement.cache.kind) {
    case NodeKind::assignment: return visitAssignment(statement);
    case NodeKind::expression: return visitExpression(statement);
    case NodeKind::forLoop: return visitForLoop(statement);
    case NodeKind::whileLoop: return visitWhileLoop(statement);
    case NodeKind::if_: return visitIf(statement);
    case NodeKind::switch_: return visitSwitch(statement);
    case NodeKind::break_: return NodeValue::Form::breakValue;
    case NodeKind::continue_: return NodeValue::Form::continueValue;
    case NodeKind::return_: return NodeValue::Form::returnValue;
    case NodeKind::unresolved: resolve(statement, app_.builtins); return runStatement(statement);
    default: return fail(statement, text::kUnexpectedError);
  }
}

// A variable that is named alone is shown under its own name and leaves `ans` as it is. Whether there is one is asked
// after the visit; a local function is called, so it is no variable here.
NodeValue Visitor::visitExpression(KeloNode& statement) {
  NodeCache& cache = statement.cache;
  NodeValue value = visit(*cache.first, 0);
  if (value.isFailure()) return value;
  if (!cache.name.isEmpty() && findVariable(cache.name, &cache.hint) != nullptr) {
    if (cache.flag) show(value, {&cache.name, 1});
    return NodeValue::nothing();
  }
  return setAnswer(std::move(value), cache.flag);
}

NodeValue Visitor::setAnswer(NodeValue value, bool shows) {
  if (value.isStorable()) {
    app_.workspaces.top().set(answer_, value.storable());
    if (shows) show(value, {&answer_, 1});
  } else if (value.isArrayList()) {
    auto& [first, list] = value.arrayList();
    if (first) {
      app_.workspaces.top().set(answer_, *first);
      show(NodeValue::listOf(list), {&answer_, 1});  // NOTE: intended: shown even behind a ";"
    } else if (!list.empty()) {
      app_.workspaces.top().set(answer_, list.front());
      if (shows) showValue(answer_, list.front());
    }
  } else if (!value.isVoid()) {
    return value;
  }
  return NodeValue::nothing();
}

NodeValue Visitor::visitAssignment(KeloNode& statement) {
  KeloNode& assignment = *statement.cache.first;
  switch (assignment.cache.selector) {
    case 0: return assignList(assignment, statement.cache.flag);
    case 1: return assignVariable(assignment, statement.cache.flag);
    case 2: return assignElements(assignment, statement.cache.flag);
    default: return assignChain(assignment, statement.cache.flag);
  }
}

// Value k takes name k, but only if there are exactly as many names as values.
void Visitor::show(const NodeValue& value, std::span<const Name> names) {
  if (value.isStorable()) {
    showValue(names.empty() ? std::nullopt : std::optional(names.front()), value.storable());
  } else if (value.isArrayList()) {
    const auto& list = value.arrayList().list;
    for (size_t k = 0; k < list.size(); ++k) {
      showValue(names.size() == list.size() ? std::optional(names[k]) : std::nullopt, list[k]);
    }
  }
}

void Visitor::showValue(std::optional<Name> name, const Storable& value) {
  if (value.isLocalFunc()) return;
  const auto label = name ? std::optional(name->text()) : std::nullopt;
  app_.show(Display::value(label, value, app_.displayParameters()));
}

}  // namespace kelo
