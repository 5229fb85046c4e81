// Names and calls: what stands with arguments after it, names alone, built-ins, and handles as
// they are written.
//
// What NAME(ARGS) is, an index or a call, is only known when it runs, but the arguments are lowered
// once. What differs is asked where it matters: what `end` and ":" mean, and what is said when an
// argument fails.
#include <algorithm>

#include "frontend/node_text.h"
#include "grammar/kelo_node.h"
#include "interpreter/function_unit.h"
#include "interpreter/quick_calls.h"
#include "interpreter/visitor.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

// A name that is known not to be assigned here is most likely a function, whose arguments are best
// in a row. Where it turns out to be an array, the call becomes an index as it runs.
int32_t Visitor::visitSubarray_or_func(KeloNode& node, int outputs, int32_t wish) {
  const Name name = node.cache.name;
  const int32_t slot = slotOf(name);
  const int32_t made = newSite(node, name, slot, static_cast<CallDetails&>(*node.cache.details).args, outputs);
  if (assigned_.contains(name.id())) return lowerIndex(made, node, wish);
  const int32_t mark = top_;
  argumentsInRow(made);
  const int32_t result = target(mark, wish);
  emit(Op::call, &node, result, slot, 0, made);
  return result;
}

// An index, or a call through a variable. One or two arguments stay where they are.
int32_t Visitor::lowerIndex(int32_t made, KeloNode& node, int32_t wish) {
  const int32_t mark = top_;
  const int32_t base = site(made).base;
  const int32_t count = site(made).count;
  if (count != 1 && count != 2) {
    argumentsInRow(made);
    const int32_t result = target(mark, wish);
    emit(Op::index, &node, result, base, 0, made);
    return result;
  }
  const int32_t i = argument(made, 0, kNowhere);
  const int32_t j = count == 2 ? argument(made, 1, kNowhere) : 0;
  site(made).first = newTemporary();  // where the arguments go if it is a call
  if (count == 2) newTemporary();
  const int32_t result = target(mark, wish);
  emit(count == 1 ? Op::index1 : Op::index2, &node, result, base, i, made, j);
  return result;
}

// Argument k of a site. `wish` is a register that it must go to, if any.
int32_t Visitor::argument(int32_t made, int32_t k, int32_t wish) {
  const bool isBuiltin = site(made).row != nullptr;
  KeloNode& place = *site(made).node;
  KeloNode& node = *site(made).arguments[static_cast<size_t>(k)];
  const int32_t outerSite = site_, outerArgument = siteArgument_;
  if (!isBuiltin) {
    site_ = made;
    siteArgument_ = k;
  }
  resolved(node);
  int32_t value;
  if (node.cache.kind == NodeKind::colonExpr && !isBuiltin) {
    const int32_t inside = here();
    value = wish == kNowhere ? newTemporary() : wish;
    emit(Op::colon, &node, value, k, 1, made);
    addRegion(Region::Kind::argument, inside, place, nullptr, made);
  } else {
    const bool asksFirst = !isBuiltin && node.cache.containsEnd && !site(made).isTarget;
    if (asksFirst) emit(Op::checkExtent, &place, 0, k, 0, made);
    const int32_t inside = here();
    value = visit(node, kNoOutputs, wish);
    if (wish != kNowhere && value != wish) {
      emit(Op::move, &node, wish, value);
      value = wish;
    }
    if (!isBuiltin) addRegion(Region::Kind::argument, inside, place, nullptr, made);
  }
  site_ = outerSite;
  siteArgument_ = outerArgument;
  bool othersAreSimple = true;
  for (int32_t m = k + 1; m < site(made).count; ++m) {
    othersAreSimple = othersAreSimple && isSimple(*site(made).arguments[static_cast<size_t>(m)]);
  }
  const bool isMany = site(made).count > 2;  // of one or two subscripts, a number is looked at later
  const bool needsNoLook = node.cache.kind == NodeKind::colonExpr || (node.cache.kind == NodeKind::number && !isMany);
  if (!othersAreSimple && !needsNoLook) emit(Op::checkArgument, &place, value, k, isMany, made);
  return value;
}

void Visitor::argumentsInRow(int32_t made) {
  const int32_t mark = top_;
  const int32_t first = newTemporary();
  top_ = mark;
  for (int32_t k = 0; k < site(made).count; ++k) {
    argument(made, k, newTemporary());
    top_ = mark + k + 1;
  }
  site(made).first = first;
}

int32_t Visitor::visitId(KeloNode& node, int outputs, int32_t wish) {
  const int32_t slot = slotOf(node.cache.name);
  if (isKnown(slot)) return slot;
  const int32_t made = newSite(node, node.cache.name, slot, {}, outputs);
  const int32_t mark = top_;
  site(made).first = newTemporary();
  const int32_t result = target(mark, wish);
  emit(Op::loadName, &node, result, slot, 0, made);
  return result;
}

// struct('a', x, 'b', y): the names of its fields; none where more than the values must be known.
std::vector<Name> Visitor::writtenFields(KeloNode& node) {
  const auto& arguments = static_cast<CallDetails&>(*node.cache.details).args;
  if (node.cache.name.text() != "struct" || arguments.size() % 2 != 0) return {};
  std::vector<Name> fields;
  for (size_t k = 0; k < arguments.size(); k += 2) {
    KeloNode &name = *arguments[k], &value = *arguments[k + 1];
    resolved(name);
    if (name.cache.kind != NodeKind::charText || mayBeMany(value)) return {};
    if (value.cache.kind == NodeKind::colonExpr || value.cache.containsEnd) return {};
    const std::string text = toUtf8(static_cast<LiteralDetails&>(*name.cache.details).value.numeric()->asChar());
    if (!followsNameRule(text) || std::ranges::find(fields, Name::intern(text)) != fields.end()) return {};
    fields.push_back(Name::intern(text));
  }
  return fields;
}

int32_t Visitor::lowerStructure(KeloNode& node, std::vector<Name> fields, int32_t wish) {
  const auto& arguments = static_cast<CallDetails&>(*node.cache.details).args;
  const int32_t mark = top_;
  const int32_t first = newTemporary();
  top_ = mark;
  for (size_t k = 1; k < arguments.size(); k += 2) {
    const int32_t value = newTemporary();
    into(*arguments[k], value);
    top_ = value - kTemporaries + 1;
  }
  const int32_t made = newSite(node, node.cache.name, 0, {}, 1);
  site(made).fields = std::move(fields);
  const int32_t result = target(mark, wish);
  emit(Op::makeStructure, &node, result, first, 0, made);
  return result;
}

int32_t Visitor::visitBuilt_in_func(KeloNode& node, int outputs, int32_t wish) {
  const auto& details = static_cast<CallDetails&>(*node.cache.details);
  if (details.isCommand || details.builtin == nullptr) {
    emit(Op::fail, &node, textIndex(details.isCommand ? text::kCommandSyntax : text::kUnexpectedError));
    return newTemporary();
  }
  const bool isOne = outputs <= 1 && outputs != kOutputsOfCall;
  if (isOne && details.args.empty()) {
    if (const auto value = quickConstantOf(node.cache.name)) return constant(*value);
  } else if (isOne) {
    if (auto fields = writtenFields(node); !fields.empty()) return lowerStructure(node, std::move(fields), wish);
  }
  const int32_t made = newSite(node, node.cache.name, 0, details.args, outputs);
  site(made).row = details.builtin;
  const int32_t mark = top_;
  const int32_t function = isOne ? quickCallOf(node.cache.name, site(made).count) : -1;
  if (function < 0) {
    argumentsInRow(made);
    const int32_t result = target(mark, wish);
    emit(Op::builtin, &node, result, 0, 0, made);
    return result;
  }
  const int32_t x = argument(made, 0, kNowhere);
  const int32_t y = site(made).count == 2 ? argument(made, 1, kNowhere) : x;
  site(made).first = newTemporary();
  if (site(made).count == 2) newTemporary();
  const int32_t result = target(mark, wish);
  emit(Op::quickCall, &node, result, x, y, made, function);
  return result;
}

// x = strcat(x, ...): the first argument stays where it is. False for any other right side.
bool Visitor::lowerAppendText(KeloNode& node, int32_t slot) {
  if (node.cache.kind != NodeKind::builtInFunc || !isKnown(slot)) return false;
  const auto& details = static_cast<CallDetails&>(*node.cache.details);
  if (details.isCommand || details.args.size() < 2 || node.cache.name.text() != "strcat") return false;
  resolved(*details.args[0]);
  const NodeCache& first = details.args[0]->cache;
  if (first.kind != NodeKind::id || slotOf(first.name) != slot) return false;
  const int32_t made = newSite(node, node.cache.name, 0, details.args, 1);
  site(made).row = details.builtin;
  const int32_t mark = top_;
  const int32_t row = newTemporary();
  for (int32_t k = 1; k < site(made).count; ++k) {
    argument(made, k, newTemporary());
    top_ = mark + k + 1;
  }
  site(made).first = row;
  emit(Op::appendText, &node, slot, row, 0, made);
  top_ = mark;
  return true;
}

int32_t Visitor::visitFuncHandle(KeloNode& node, int32_t wish) {
  const int32_t result = target(top_, wish);
  const auto& details = static_cast<HandleDetails&>(*node.cache.details);
  const int32_t slot = node.cache.name.isEmpty() ? 0 : slotOf(node.cache.name);
  const int32_t made = newSite(node, node.cache.name, slot, {}, kNoOutputs);
  if (details.form == HandleDetails::Form::anonymous) site(made).handle = details.body;
  if (site(made).handle) {
    const HandleBody& body = *site(made).handle;
    for (const Name name : body.captured) site(made).slots.push_back(slotOf(name));
    for (const Name name : body.inputArgs) site(made).slots.push_back(slotOf(name));
  }
  emit(Op::makeHandle, &node, result, slot, 0, made);
  return result;
}

}  // namespace kelo
