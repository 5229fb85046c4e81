// Messages with the place of a node. What library code throws ends here.
#include "frontend/node_text.h"
#include "interpreter/environment.h"
#include "interpreter/dispatch.h"
#include "interpreter/visit_guard.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"
#include "platform/stack_guard.h"

namespace kelo {

CallSite Visitor::siteOf(KeloNode& place) const {
  NodeCache& cache = place.cache;
  if (cache.line < 0) {
    const TextPosition position = positionOf(place);
    cache.line = position.line;
    cache.charPos = position.charPos;
  }
  return {cache.line, cache.charPos, place.relativePath, frame_.funName};
}

Message Visitor::messageAt(KeloNode& place) const { return kelo::messageAt(siteOf(place)); }

// Behind a recursion that was too deep nothing more is said: each of its levels would add a line.
NodeValue Visitor::fail(KeloNode& place, const Problem& problem) {
  if (recursionWasTooDeep_) return NodeValue::failure();
  Message message = messageAt(place);
  message.reason = problem.reason;
  message.expected = problem.expected;
  app_.show(message);
  return NodeValue::failure();
}

NodeValue Visitor::fail(KeloNode& place, std::string reason) { return fail(place, problem(std::move(reason))); }

void Visitor::warn(KeloNode& place, std::string sentence) {
  Message message = messageAt(place);
  message.type = Message::MsgType::warning;
  message.expected = std::move(sentence);
  app_.show(message);
}

NodeValue Visitor::failWithCurrentException(KeloNode& place, const char* lastResort) {
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

bool Visitor::stackHasRoom(KeloNode& place) {
  if (!platform::stackIsLow()) return true;
  fail(place, text::kRecursionTooDeep);
  recursionWasTooDeep_ = true;
  return false;
}

}  // namespace kelo
