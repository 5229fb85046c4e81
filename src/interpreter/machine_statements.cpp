// Values given to names, `ans`, and display.
#include "grammar/kelo_node.h"
#include "interpreter/environment.h"
#include "interpreter/machine.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

// The value of an operand, or the first of several.
bool Machine::assign(Storable& target, int32_t operand, const char* withoutValue, KeloNode& place) {
  Storable value = take(operand);
  if (value.isList() && !value.list().empty()) value = Storable(std::move(value.list().front()));
  if (!value.isValue()) return fail(place, withoutValue);
  target = std::move(value);
  return true;
}

bool Machine::assignList(const Instruction& i) {
  const Site& site = siteAt(i.d);
  KeloNode& place = placeOf(i);
  Storable value = take(i.b);
  if (value.isNone()) return fail(place, text::kNoValuesToAssign);
  std::vector<Storable> values;
  if (value.isList()) values = std::move(value.list());
  else values.push_back(std::move(value));
  if (values.size() < site.slots.size()) return fail(place, text::kTooManyOutputs);
  std::vector<Name> names;
  for (size_t k = 0; k < site.slots.size(); ++k) {
    names.push_back(frame().code->slots[static_cast<size_t>(site.slots[k])]);
    reg(site.slots[k]) = values[k];
  }
  values.resize(site.slots.size());
  if (i.flag) show(Storable::listOf(std::move(values)), names);
  return true;
}

bool Machine::answer(int32_t slot, int32_t operand, bool shows) {
  Storable value = take(operand);
  if (value.isList()) {
    if (value.list().empty()) return true;
    value = Storable(std::move(value.list().front()));
  }
  if (!value.isValue()) return true;
  reg(slot) = value;
  if (shows) showValue(frame().code->slots[static_cast<size_t>(slot)], value);
  return true;
}

// Whether the name is a variable is asked now: what it called may have made it one.
bool Machine::nameStatement(const Instruction& i) {
  const Storable& variable = reg(i.a);
  if (variable.isNone() || variable.isLocalFunc()) return answer(i.c, i.b, i.flag);
  if (i.flag) {
    const Storable value = at(i.b);
    const Name name = frame().code->slots[static_cast<size_t>(i.a)];
    show(value, {&name, 1});
  }
  return true;
}

// Value k takes name k, but only if there are exactly as many names as values.
void Machine::show(const Storable& value, std::span<const Name> names) {
  if (value.isList()) {
    const auto& list = value.list();
    for (size_t k = 0; k < list.size(); ++k) {
      showValue(names.size() == list.size() ? std::optional(names[k]) : std::nullopt, list[k]);
    }
  } else if (value.isValue()) {
    showValue(names.empty() ? std::nullopt : std::optional(names.front()), value);
  }
}

void Machine::showValue(std::optional<Name> name, const Storable& value) {
  if (value.isLocalFunc()) return;
  const auto label = name ? std::optional(name->text()) : std::nullopt;
  app_.show(Display::value(label, value, app_.displayParameters()));
}

}  // namespace kelo
