// What all visits work with: instructions, registers, names, and what is known of variables.
//
// How many slots a unit has is known only when all of it has been lowered. Until then temporaries
// are numbered from kTemporaries on; `finished` moves them after the slots.
#include <algorithm>

#include "interpreter/builtin_table.h"
#include "interpreter/quick_calls.h"
#include "interpreter/resolve.h"
#include "interpreter/tree_classes.h"
#include "interpreter/visitor.h"

namespace kelo {
namespace {

bool mayTakeAway(const std::string& builtin) { return builtin == "clear" || builtin == "input"; }

}  // namespace

std::unique_ptr<Code> Visitor::finished() {
  dropPolls();
  const int32_t slots = code_->slotCount();
  const auto moved = [&](int32_t& operand) {
    if (operand >= kTemporaries) operand += slots - kTemporaries;
  };
  for (Instruction& i : code_->instructions) {
    for (int32_t* operand : {&i.a, &i.b, &i.c, &i.d, &i.e}) moved(*operand);
  }
  for (Site& each : code_->sites) {
    moved(each.base);
    moved(each.first);
  }
  code_->registers = slots + most_;
  return std::move(code_);
}

// A question for a stop that is followed by another one, with nothing but jumps between, goes.
void Visitor::dropPolls() {
  auto& code = code_->instructions;
  std::vector<int32_t> moved(code.size() + 1);  // where each instruction comes to stand
  int32_t kept = 0;
  for (size_t k = 0; k < code.size(); ++k) {
    moved[k] = kept;
    size_t next = k + 1;
    for (int jumps = 0; code[k].op == Op::poll && code[next].op == Op::jump && jumps < 8; ++jumps) {
      next = static_cast<size_t>(code[next].a);
    }
    if (code[k].op == Op::poll && code[next].op == Op::poll) continue;
    code_->places[static_cast<size_t>(kept)] = code_->places[k];
    code[static_cast<size_t>(kept++)] = code[k];
  }
  moved[code.size()] = kept;
  code.resize(static_cast<size_t>(kept));
  code_->places.resize(static_cast<size_t>(kept));
  for (Instruction& i : code) {
    if (int32_t* to = jumpOperand(i)) *to = moved[static_cast<size_t>(*to)];
  }
  for (Region& region : code_->regions) {
    region.begin = moved[static_cast<size_t>(region.begin)];
    region.end = moved[static_cast<size_t>(region.end)];
  }
}

int32_t Visitor::emit(Op op, KeloNode* place, int32_t a, int32_t b, int32_t c, int32_t d, int32_t e, uint16_t flag) {
  code_->instructions.push_back({op, flag, a, b, c, d, e});
  code_->places.push_back(place);
  return here() - 1;
}

void Visitor::resolved(KeloNode& node) {
  if (node.cache.kind == NodeKind::unresolved) resolve(node, builtins_);
}

// ---- Registers

int32_t Visitor::newTemporary() {
  most_ = std::max(most_, top_ + 1);
  return kTemporaries + top_++;
}

int32_t Visitor::target(int32_t mark, int32_t wish) {
  top_ = mark;
  return wish == kNowhere ? newTemporary() : wish;
}

void Visitor::into(KeloNode& node, int32_t target, int outputs) {
  const int32_t value = visit(node, outputs, target);
  if (value != target) emit(Op::move, &node, target, value);
}

int32_t Visitor::constant(Storable value) {
  code_->constants.push_back(std::move(value));
  return ~static_cast<int32_t>(code_->constants.size() - 1);
}

// ---- Names

int32_t Visitor::slotOf(Name name) {
  const auto [found, isNew] = slots_.try_emplace(name.id(), code_->slotCount());
  if (isNew) {
    code_->slots.push_back(name);
    known_.push_back(false);
  }
  return found->second;
}

int32_t Visitor::fieldIndex(Name name) {
  const auto [found, isNew] = fields_.try_emplace(name.id(), static_cast<int32_t>(code_->names.size()));
  if (isNew) code_->names.push_back(name);
  return found->second;
}

int32_t Visitor::textIndex(const char* text) {
  auto& texts = code_->texts;
  for (size_t k = 0; k < texts.size(); ++k) {
    if (texts[k] == text) return static_cast<int32_t>(k);
  }
  texts.emplace_back(text);
  return static_cast<int32_t>(texts.size() - 1);
}

void Visitor::setKnown(int32_t slot) {
  if (isCautious_ || isKnown(slot)) return;
  known_[static_cast<size_t>(slot)] = true;
  knownTrail_.push_back(slot);
}

void Visitor::forgetSince(size_t mark) {
  while (knownTrail_.size() > mark) {
    known_[static_cast<size_t>(knownTrail_.back())] = false;
    knownTrail_.pop_back();
  }
}

// The names that some statement below assigns to, and whether something there may take variables
// away: `clear`, the answer of `input`, or a script, which is a name alone that is never assigned
// to.
void Visitor::findAssigned(KeloNode& tree) {
  using P = KeloParser;
  std::vector<antlr4::tree::ParseTree*> waiting{&tree};
  std::vector<Name> alone;
  const auto assigns = [&](antlr4::ParserRuleContext& names) {
    assigned_[Name::intern(names.getStart()->getText()).id()] = true;
  };
  while (!waiting.empty()) {
    auto* node = waiting.back();
    waiting.pop_back();
    for (auto* child : node->children) waiting.push_back(child);
    if (auto* target = exactly<P::Id_namesContext>(node)) {
      if (isOfRule(target->parent, P::RuleVar_assign) || exactly<P::ForLoopContext>(target->parent)) {
        assigns(*target);
      }
    } else if (auto* call = exactly<P::Built_in_funContext>(node)) {
      isCautious_ = isCautious_ || mayTakeAway(call->getStart()->getText());
    } else if (auto* statement = exactly<P::ExpressionContext>(node)) {
      if (auto* id = exactly<P::IdContext>(statement->children[0])) {
        alone.push_back(Name::intern(id->getStart()->getText()));
      }
    }
  }
  for (const Name name : alone) isCautious_ = isCautious_ || !assigned_.contains(name.id());
}

// ---- Sites and regions

int32_t Visitor::newSite(KeloNode& node, Name name, int32_t base, const Nodes& arguments, int outputs) {
  Site made;
  made.node = &node;
  made.name = name;
  made.base = base;
  made.arguments = arguments;
  made.count = static_cast<int32_t>(arguments.size());
  made.outputs = outputs;
  made.outer = site_;
  made.outerArgument = siteArgument_;
  for (KeloNode* each : arguments) made.hasEnd.push_back(each->cache.containsEnd);
  code_->sites.push_back(std::move(made));
  return static_cast<int32_t>(code_->sites.size()) - 1;
}

void Visitor::addRegion(Region::Kind kind, int32_t begin, KeloNode& node, const char* text, int32_t site) {
  if (here() > begin) code_->regions.push_back({kind, begin, here(), &node, text, site});
}

// ---- Questions about expressions

/// Whether evaluating it can neither fail nor do anything.
bool Visitor::isSimple(KeloNode& node) {
  resolved(node);
  switch (node.cache.kind) {
    case NodeKind::number: return node.cache.isValid;
    case NodeKind::charText: case NodeKind::emptyMat: case NodeKind::colonExpr: return true;
    case NodeKind::id: return isKnown(slotOf(node.cache.name));
    default: return false;
  }
}

/// Whether it is a number or a text, as far as can be seen.
bool Visitor::isLiteral(KeloNode& node) {
  resolved(node);
  const NodeKind kind = node.cache.kind;
  return kind == NodeKind::number || kind == NodeKind::charText || kind == NodeKind::emptyMat;
}

/// Whether it is a built-in that gives one value and is computed without a call where it can be.
bool Visitor::isQuick(KeloNode& node) {
  const auto& details = static_cast<const CallDetails&>(*node.cache.details);
  if (details.isCommand || details.builtin == nullptr) return false;
  const auto count = static_cast<int32_t>(details.args.size());
  return count == 0 ? quickConstantOf(node.cache.name).has_value() : quickCallOf(node.cache.name, count) >= 0;
}

/// Whether it may give nothing or several values.
bool Visitor::mayBeMany(KeloNode& node) {
  resolved(node);
  switch (node.cache.kind) {
    case NodeKind::subarrayOrFunc: case NodeKind::structure2: case NodeKind::parenthesis: return true;
    case NodeKind::builtInFunc: return !isQuick(node);
    case NodeKind::matrixCat: return static_cast<CatDetails&>(*node.cache.details).elements.size() == 1;
    case NodeKind::id: return !isKnown(slotOf(node.cache.name));
    default: return false;
  }
}

}  // namespace kelo
