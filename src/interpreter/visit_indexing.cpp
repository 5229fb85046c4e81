// `end` and ":" inside subscripts, and fields that are read.
//
// What `end` means is found when it is met: the innermost site around it whose base is then an
// array tells; a call keeps the meaning that was there outside of it. A node that was evaluated in
// an index keeps its extent. NOTE: intended: a later use outside of one still sees it.
#include "grammar/kelo_node.h"
#include "interpreter/visitor.h"
#include "messages/catalogue/indexing.h"

namespace kelo {

int32_t Visitor::visitEnd_expr(KeloNode& node, int32_t wish) {
  const int32_t result = target(top_, wish);
  emit(Op::endOf, &node, result, siteArgument_, 0, site_);
  return result;
}

int32_t Visitor::visitColon_expr(KeloNode& node, int32_t wish) {
  const int32_t result = target(top_, wish);
  emit(Op::colon, &node, result, siteArgument_, 0, site_);
  return result;
}

// The value of the e of ".(e)".
int32_t Visitor::fieldNameOperand(const FieldDetails& field, KeloNode& place) {
  const int32_t begin = here();
  const int32_t name = visit(*field.expression);
  addRegion(Region::Kind::message, begin, place, text::kFieldNameEvaluationFailed);
  return name;
}

int32_t Visitor::visitStructure2(KeloNode& node, int outputs, int32_t wish) {
  const auto& chain = static_cast<ChainDetails&>(*node.cache.details);
  const int32_t slot = slotOf(node.cache.name);
  const int32_t mark = top_;
  if (const FieldDetails* only = chain.onlyField(); only && !only->hasArgs) {
    const int32_t result = target(mark, wish);
    emit(Op::fieldOfName, &node, result, slot, fieldIndex(only->name));
    return result;
  }
  const int32_t value = newTemporary();
  int32_t quick = -1;
  if (chain.isPath()) {
    const int32_t made = newSite(node, node.cache.name, slot, {}, kNoOutputs);
    for (const FieldDetails& field : chain.fields) site(made).fields.push_back(field.name);
    quick = emit(Op::fieldPath, &node, wish == kNowhere ? value : wish, slot, 0, made);
  }
  size_t next = 0;  // field to come
  if (chain.hasArgs) {
    const int32_t made = newSite(node, node.cache.name, slot, chain.args, kNoOutputs);
    const bool isOne = chain.args.size() == 1 && !chain.fields[0].expression;
    const bool isPlain = isOne && isSimple(*chain.args[0]) && chain.args[0]->cache.kind != NodeKind::colonExpr;
    if (!isPlain) emit(Op::checkStructure, &node, 0, slot);
    if (isOne) {
      const int32_t i = argument(made, 0, kNowhere);
      site(made).first = newTemporary();
      emit(Op::elementField, &node, value, slot, i, made, fieldIndex(chain.fields[0].name));
      next = 1;
    } else {
      lowerIndex(made, node, value);
    }
  } else if (!chain.fields[0].expression) {
    emit(Op::fieldOfName, &node, value, slot, fieldIndex(chain.fields[0].name));
    next = 1;
  } else {
    emit(Op::checkStructure, &node, 0, slot);
    emit(Op::move, &node, value, slot);
  }
  top_ = mark + 1;
  const auto parentOf = [&](size_t k) { return fieldIndex(k == 0 ? node.cache.name : chain.fields[k - 1].name); };
  for (size_t k = 0; k < chain.fields.size(); ++k) {
    const FieldDetails& field = chain.fields[k];
    if (k >= next && field.expression) {
      emit(Op::checkField, &node, 0, value);
      const int32_t name = fieldNameOperand(field, node);
      emit(Op::namedField, &node, value, value, name, parentOf(k));
    } else if (k >= next) {
      emit(Op::field, &node, value, value, fieldIndex(field.name), parentOf(k));
    }
    top_ = mark + 1;
    if (!field.hasArgs) continue;
    const int32_t made = newSite(node, field.name, value, field.args, outputs);
    site(made).isSlot = false;
    emit(Op::checkField, &node, 0, value);
    lowerIndex(made, node, value);
    top_ = mark + 1;
  }
  if (wish != kNowhere) emit(Op::move, &node, wish, value);
  if (quick >= 0) code_->instructions[static_cast<size_t>(quick)].c = here();
  if (wish == kNowhere) return value;
  top_ = mark;
  return wish;
}

}  // namespace kelo
