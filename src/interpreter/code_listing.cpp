// A line of the listing is the number of the instruction, its operation and its operands: a
// variable by its name, a temporary as t0, t1 and so on, a constant as it was typed where it is a
// number. Instructions of one line of the text stand below it. Behind the jump that closes a loop
// of which native code may be made stands "~".
#include "interpreter/code_listing.h"

#include <iterator>
#include <vector>

#include <fmt/format.h>

#include "frontend/node_text.h"
#include "grammar/kelo_node.h"
#include "interpreter/function_unit.h"
#include "interpreter/native/native.h"
#include "interpreter/node_details.h"
#include "interpreter/resolve.h"
#include "interpreter/visitor.h"

namespace kelo {
namespace {

// In the order of Op.
constexpr const char* kNames[] = {
    "plus", "minus", "dmult", "mult", "eqeq", "neq", "le", "lt", "ge", "gt", "dpower", "power", "ldivide", "mldivide",
    "mrdivide", "rdivide", "and", "or", "unaryPlus", "unaryMinus", "not", "transpose", "range", "rangeArgument",
    "joinRow", "appendRow", "appendText", "joinRows", "checkElement", "checkRange", "begin", "move", "loadName",
    "assign", "assignList", "firstOf", "store", "store1", "store2", "checkTarget", "erase", "index", "index1", "index2",
    "call", "builtin", "quickCall", "endOf", "colon", "checkExtent", "checkArgument", "makeHandle", "checkStructure",
    "fieldOfName", "fieldPath", "field", "elementField", "checkField", "namedField", "setField", "setNamedField",
    "setPath", "setElementField", "setFieldElement", "setFieldElement2", "makeStructure", "chainBegin", "checkChain", "chainIndices", "chainField",
    "chainNamedField", "chainAssign", "chainErase", "jump", "jumpOnTruth", "jumpOnEqual", "jumpOnUnequal", "jumpOnLe",
    "jumpOnLt", "jumpOnGe", "jumpOnGt", "forRange", "rangeStep", "forArray", "arrayStep", "checkSwitch", "caseJump",
    "answer", "nameStatement", "showName", "poll", "fail", "returnFunction", "returnValue",
};
static_assert(std::size(kNames) == static_cast<size_t>(Op::returnValue) + 1);

std::string operandText(const Code& code, int32_t operand) {
  if (operand >= code.slotCount()) return fmt::format("t{}", operand - code.slotCount());
  if (operand >= 0) return code.slots[static_cast<size_t>(operand)].text();
  const Storable& constant = code.constants[static_cast<size_t>(~operand)];
  if (constant.isDoubleScalar()) return fmt::format("{:g}", constant.doubleScalar());
  return fmt::format("<{}>", constant.kindLabel());
}

// What the five numbers mean: r a register or constant, j a jump, n a number, f a field, s a site,
// - nothing.
const char* formOf(Op op) {
  if (op <= Op::or_) return "rrr--";
  if (op <= Op::not_) return "rr---";
  if (op >= Op::jumpOnEqual && op <= Op::jumpOnGt) return "jrr--";
  switch (op) {
    case Op::move: case Op::assign: case Op::loadName: case Op::firstOf: case Op::nameStatement: case Op::answer:
      return "rr---";
    case Op::transpose: case Op::range: case Op::rangeArgument: case Op::joinRow: case Op::appendRow: case Op::joinRows:
    case Op::forRange:
      return "rrn--";
    case Op::store1: return "rrr--";
    case Op::store2: return "rrr-r";
    case Op::store: return "rrrs-";
    case Op::erase: return "rr-s-";
    case Op::index: case Op::call: return "rr-s-";
    case Op::builtin: case Op::appendText: return "r--s-";
    case Op::index1: return "rrr--";
    case Op::index2: return "rrr-r";
    case Op::quickCall: return "rrrs-";
    case Op::fieldOfName: case Op::field: return "rrf--";
    case Op::elementField: return "rrr-f";
    case Op::namedField: case Op::setNamedField: return "rrr--";
    case Op::setField: return "rfr--";
    case Op::setPath: return "r-r--";
    case Op::setElementField: case Op::setFieldElement: return "rfr-r";
    case Op::setFieldElement2: return "rfrrr";
    case Op::makeStructure: return "rr---";
    case Op::endOf: case Op::makeHandle: return "r----";
    case Op::fieldPath: case Op::rangeStep: case Op::arrayStep: return "rrj--";
    case Op::forArray: return "rr---";
    case Op::jump: return "j----";
    case Op::jumpOnTruth: return "jr---";
    case Op::caseJump: return "jrr--";
    case Op::showName: return "r----";
    case Op::chainAssign: return "rr---";
    case Op::chainField: return "-f---";
    case Op::returnValue: case Op::checkField: case Op::checkElement: case Op::checkRange: case Op::checkSwitch:
    case Op::checkStructure: return "-r---";
    default: return "-----";
  }
}

std::string instructionText(const Code& code, const Instruction& i) {
  std::string text = fmt::format("{:<15}", operationName(i.op));
  const int32_t numbers[] = {i.a, i.b, i.c, i.d, i.e};
  const char* form = formOf(i.op);
  for (size_t k = 0; k < std::size(numbers); ++k) {
    const auto index = static_cast<size_t>(numbers[k]);
    switch (form[k]) {
      case 'r': text += " " + operandText(code, numbers[k]); break;
      case 'j': text += fmt::format(" ->{}", numbers[k]); break;
      case 'n': text += fmt::format(" {}", numbers[k]); break;
      case 'f': text += " ." + code.names[index].text(); break;
      case 's': text += " " + code.sites[index].name.text(); break;
      default: break;
    }
  }
  return text;
}

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  for (size_t begin = 0; begin <= text.size();) {
    const size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

void append(std::string& out, const Code& code, const std::vector<std::string_view>& lines) {
  int shown = 0;
  for (size_t k = 0; k < code.instructions.size(); ++k) {
    KeloNode* place = code.places[k];
    const int line = place ? positionOf(*place).line : 0;
    if (line != shown && line > 0 && static_cast<size_t>(line) <= lines.size()) {
      out += fmt::format("{:>5} | {}\n", line, lines[static_cast<size_t>(line) - 1]);
      shown = line;
    }
    const int32_t target = jumpTarget(code.instructions[k]);
    const auto at = static_cast<int32_t>(k);
    const bool isMarked = target >= 0 && target <= at && native::mayBeNative(code, at);
    out += fmt::format("{:>12}  {}{}\n", k, instructionText(code, code.instructions[k]), isMarked ? "  ~" : "");
  }
}

}  // namespace

const char* operationName(Op op) { return kNames[static_cast<size_t>(op)]; }

std::string listing(KeloNode& program, std::string_view source, const BuiltinTable& builtins) {
  std::string out;
  const auto lines = linesOf(source);
  const ProgramDetails& details = programDetails(program);
  if (details.statements) append(out, *Visitor::lowerStatements(details.statements, {}, {}, false, builtins), lines);
  const auto appendFunction = [&](FunctionUnit& unit) {
    out += fmt::format("\n{}:\n", unit.funName.text());
    append(out, unit.code(true, builtins), lines);
  };
  if (details.main) appendFunction(*details.main);
  for (const LocalFunctionBody& function : details.localFunctions) appendFunction(functionUnit(*function.declaration));
  return out;
}

}  // namespace kelo
