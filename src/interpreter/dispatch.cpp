// The one guard around all handlers. A Problem becomes a message with the call's place; any other error becomes the family's
// last-resort text. A FatalFault passes.
#include "interpreter/dispatch.h"

#include "interpreter/app_controller.h"
#include "interpreter/complaints.h"
#include "messages/catalogue/values.h"

namespace kelo {
namespace {

Message messageAt(const CallSite& site) {
  Message message;
  message.lineNum = site.lineNum;
  message.charPos = site.charPos;
  if (!site.relativePath.isEmpty()) message.relativePath = site.relativePath.text();
  if (!site.funName.isEmpty()) message.funName = site.funName.text();
  return message;
}

Problem countComplaint(const char* text, const Builtin& row, Problem (*standard)(const Builtin&)) {
  if (text == nullptr) return standard(row);
  return Wording::sentence(text).complaint(row.name);
}

void checkCounts(const Builtin& row, int inputs, std::optional<int> outputs) {
  const CountTexts texts = row.countTexts ? *row.countTexts : CountTexts{};
  if (inputs < row.inputs.least || inputs > row.inputs.most) {
    throw countComplaint(texts.inputs, row, [](const Builtin& r) { return inputCountComplaint(r.name, r.inputs); });
  }
  if (outputs && *outputs > row.outputs && *outputs > 1) {
    throw countComplaint(texts.outputs, row, [](const Builtin& r) { return outputCountComplaint(r.name, r.outputs); });
  }
}

}  // namespace

NodeValue callBuiltin(const Builtin& row, std::span<Storable> args, std::optional<int> lhsVariableCount,
                      const CallSite& site, AppController& app, Visitor* visitor) {
  Message message;
  try {
    if (row.handler != nullptr) {
      checkCounts(row, static_cast<int>(args.size()), lhsVariableCount);
      Call call(row, args, lhsVariableCount, site, app, visitor);
      return row.handler(call);
    }
    message = messageAt(site);
    message.functionNotSupportedYet = std::string(row.name) + "()";
  } catch (const Problem& problem) {
    message = messageAt(site);
    message.reason = problem.reason;
    message.expected = problem.expected;
  } catch (const Message& whole) {
    message = whole;
  } catch (const std::exception&) {
    message = messageAt(site);
    message.reason = row.verb ? std::string(text::kUnexpectedError) + " while " + row.verb : text::kUnexpectedError;
  }
  app.show(message);
  return NodeValue::failure();
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
  app.show(message);
}

}  // namespace kelo
