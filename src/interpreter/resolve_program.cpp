// Whole texts: the main function or the statements, and the local functions, whose names may not
// meet.
#include <algorithm>

#include <fmt/format.h>

#include "interpreter/function_unit.h"
#include "interpreter/node_parts.h"
#include "interpreter/resolve.h"
#include "messages/catalogue/interpreter.h"

namespace kelo {
namespace {

using antlr4::tree::ParseTree;
using P = KeloParser;

std::string stemOf(const std::string& path) {
  const std::string file = path.substr(path.find_last_of('/') + 1);
  return file.substr(0, file.find_last_of('.'));
}

// What forbids a further local function beside those of the program so far.
std::optional<std::string> problemWith(const ProgramDetails& program, const FunctionUnit& function, Name path) {
  const bool isScript = program.form == ProgramDetails::Form::statList;
  if (isScript && !path.isEmpty() && stemOf(path.text()) == function.funName.text()) {
    return fmt::format(text::kLocalNamedLikeScript, function.funName.text());
  }
  const auto& others = program.localFunctions;
  const auto sameName = [&](const LocalFunctionBody& other) { return other.funName == function.funName; };
  if (std::any_of(others.begin(), others.end(), sameName)) {
    return fmt::format(text::kLocalAlreadyDefined, function.funName.text());
  }
  if (!isScript && program.main->funName == function.funName) {
    return fmt::format(text::kMainAlreadyDefined, function.funName.text());
  }
  return std::nullopt;
}

void addLocalFunction(ProgramDetails& program, const FunctionUnit& function, Name path) {
  if (!program.problem) {
    program.problem = problemWith(program, function, path);
    if (program.problem) program.problemNode = function.node;
  }
  program.localFunctions.push_back({function.funName, function.inputs, function.outputs, function.node});
}

}  // namespace

FunctionUnit& functionUnit(KeloNode& declaration) {
  if (declaration.cache.details) return static_cast<FunctionUnit&>(*declaration.cache.details);
  auto& unit = makeDetails<FunctionUnit>(declaration);
  auto& inputs = *static_cast<P::Function_inputsContext*>(childOf<P::Function_inputsContext>(declaration));
  auto& outputs = *static_cast<P::Function_outputsContext*>(childOf<P::Function_outputsContext>(inputs));
  unit.node = &declaration;
  unit.inputs = namesOf(inputs);
  unit.funName = unit.inputs.front();
  unit.inputs.erase(unit.inputs.begin());
  unit.outputs = namesOf(outputs);
  unit.body = childOf<P::Stat_listContext>(declaration);
  return unit;
}

ProgramDetails& programDetails(KeloNode& node) {
  if (node.cache.details) return static_cast<ProgramDetails&>(*node.cache.details);
  auto& program = makeDetails<ProgramDetails>(node);
  if (is<P::Prog_functionContext>(node)) program.form = ProgramDetails::Form::function;
  if (is<P::Prog_stat_listContext>(node)) program.form = ProgramDetails::Form::statList;
  program.statements = childOf<P::Stat_listContext>(node);
  bool isMain = program.form == ProgramDetails::Form::function;
  for (ParseTree* child : node.children) {
    if (!isOfRule(child, P::RuleFunction_declare)) continue;
    FunctionUnit& function = functionUnit(*ruleNode(child));
    function.isMain = isMain;
    if (isMain) {
      program.main = &function;
      function.program = &node;
    } else {
      addLocalFunction(program, function, node.relativePath);
    }
    isMain = false;
  }
  return program;
}

KeloNode* expressionOf(KeloNode& exprOnly) { return expressionsOf(exprOnly).at(0); }

}  // namespace kelo
