// Messages with the place of a node. What library code throws ends here.
#include "frontend/node_text.h"
#include "grammar/kelo_node.h"
#include "interpreter/dispatch.h"
#include "interpreter/environment.h"
#include "interpreter/function_unit.h"
#include "interpreter/machine.h"
#include "messages/catalogue/indexing.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"
#include "messages/fatal_fault.h"

namespace kelo {

// Empty in scripts, handles and the console.
Name Machine::runningFunction() const { return frames_.empty() || !frame().unit ? Name() : frame().unit->funName; }

CallSite Machine::siteOf(KeloNode& place) const {
  NodeCache& cache = place.cache;
  if (cache.line < 0) {
    const TextPosition position = positionOf(place);
    cache.line = position.line;
    cache.charPos = position.charPos;
  }
  return {cache.line, cache.charPos, place.relativePath, runningFunction()};
}

// Behind a recursion that was too deep nothing more is said: each of its levels would add a line.
bool Machine::fail(KeloNode& place, const Problem& problem) { return failIn(runningFunction(), place, problem); }

bool Machine::failIn(Name funName, KeloNode& place, const Problem& problem) {
  if (wasTooDeep_) return false;
  CallSite site = siteOf(place);
  site.funName = funName;
  Message message = messageAt(site);
  message.reason = problem.reason;
  message.expected = problem.expected;
  app_.show(message);
  return false;
}

bool Machine::fail(KeloNode& place, std::string reason) { return fail(place, problem(std::move(reason))); }

void Machine::warn(KeloNode& place, std::string sentence) {
  Message message = messageAt(siteOf(place));
  message.type = Message::MsgType::warning;
  message.expected = std::move(sentence);
  app_.show(message);
}

bool Machine::failWithCurrentException(KeloNode& place, const char* lastResort) {
  try {
    throw;
  } catch (const Problem& problem) {
    return fail(place, problem);
  } catch (const FileError& error) {
    return fail(place, error.message);
  } catch (const std::exception&) {
    return fail(place, lastResort);
  }
}

bool Machine::failTooDeep(KeloNode& place) {
  fail(place, text::kRecursionTooDeep);
  wasTooDeep_ = true;
  return false;
}

// What is said of an error that has no words of its own.
const char* lastResortOf(Op op) {
  switch (op) {
    case Op::transpose: return text::kUnexpectedTranspose;
    case Op::range: case Op::rangeArgument: case Op::forRange: case Op::joinRow: case Op::appendRow: case Op::joinRows:
      return text::kUnexpectedVector;
    case Op::store: case Op::store1: case Op::store2: case Op::erase: return text::kAssignmentFailed;
    case Op::setField: case Op::setPath: case Op::setElementField: case Op::setFieldElement: case Op::chainAssign:
    case Op::chainErase:
      return text::kStructureAssignmentFailed;
    case Op::namedField: case Op::setNamedField: case Op::chainNamedField: return text::kFieldNameEvaluationFailed;
    case Op::chainIndices: case Op::checkArgument: return text::kIndexEvaluationFailed;
    default: return text::kUnexpectedError;
  }
}

}  // namespace kelo
