// The one guard around all handlers. A Problem becomes a message with the call's place; any other
// error becomes the family's last-resort text. A FatalFault passes.
#include "interpreter/dispatch.h"

#include <fmt/format.h>

#include <algorithm>

#include "interpreter/complaints.h"
#include "interpreter/environment.h"
#include "messages/catalogue/values.h"

namespace kelo {

Message messageAt(const CallSite& site) {
  Message message;
  message.lineNum = site.lineNum;
  message.charPos = site.charPos;
  if (!site.relativePath.isEmpty()) message.relativePath = site.relativePath.text();
  if (!site.funName.isEmpty()) message.funName = site.funName.text();
  return message;
}

namespace {

void checkCounts(const Builtin& row, int inputs, int outputs) {
  const OwnTexts& texts = row.own;
  const auto ownWords = [&](const char* text, int given) {
    return expectation(fmt::format(fmt::runtime(text), row.name, given));
  };
  if (inputs < row.inputs.least || inputs > row.inputs.most) {
    throw texts.inputs ? ownWords(texts.inputs, inputs) : inputCountComplaint(row.name, row.inputs);
  }
  // What gives no value says so where the value is missed, unless the family has its own words for
  // that.
  const int allowed = texts.outputs ? row.outputs : std::max(row.outputs, 1);
  if (outputs > allowed) {
    throw texts.outputs ? ownWords(texts.outputs, outputs) : outputCountComplaint(row.name, row.outputs);
  }
}

std::string lastResort(const Builtin& row) {
  if (row.own.failure) return row.own.failure;
  return row.own.verb ? std::string(text::kUnexpectedError) + " while " + row.own.verb : text::kUnexpectedError;
}

// What the handler has thrown becomes a message.
NodeValue failed(const Builtin& row, const CallSite& site, Environment& environment) {
  Message message = messageAt(site);
  try {
    throw;
  } catch (const Problem& problem) {
    message.reason = problem.reason;
    message.expected = problem.expected;
  } catch (const Message& whole) {
    message = whole;
  } catch (const std::exception&) {
    message.reason = lastResort(row);
  }
  environment.show(message);
  return NodeValue::failure();
}

}  // namespace

NodeValue callBuiltin(const Builtin& row, std::span<Storable> args, int outputs, const CallSite& site,
                      Environment& environment, Machine* machine) {
  try {
    checkCounts(row, static_cast<int>(args.size()), outputs);
    Call call(row, args, outputs < 0 ? std::nullopt : std::optional(outputs), site, environment, machine);
    return row.handler(call);
  } catch (const Problem&) {
    return failed(row, site, environment);
  } catch (const Message&) {
    return failed(row, site, environment);
  } catch (const std::exception&) {
    return failed(row, site, environment);
  }
}

NodeValue Call::outputs(std::vector<Storable> values) const {
  if (outputCount() == 1) return NodeValue(std::move(values.front()));
  values.resize(std::min(values.size(), static_cast<size_t>(outputCount())));
  return NodeValue::listOf(std::move(values));
}

void Call::warn(const std::string& sentence) const {
  Message message = messageAt(site);
  message.type = Message::MsgType::warning;
  message.expected = sentence;
  environment.show(message);
}

}  // namespace kelo
