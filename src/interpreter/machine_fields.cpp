// Fields: read, and written along chains.
#include <array>

#include <fmt/format.h>

#include "grammar/kelo_node.h"
#include "interpreter/environment.h"
#include "interpreter/machine.h"
#include "interpreter/machine_fast.h"
#include "messages/catalogue/indexing.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {
// ---- Reading

// The structure that a name holds; null when a message was shown.
const Storable* Machine::structureIn(int32_t slot, KeloNode& place) {
  const Storable& variable = reg(slot);
  if (variable.isStructure()) return &variable;
  const Name name = frame().code->slots[static_cast<size_t>(slot)];
  const bool isVariable = !variable.isNone() && !variable.isLocalFunc();
  if (!isVariable && findLocalFunction(name)) {
    fail(place, expectation(fmt::format(text::kLocalNotAccessible, name.text())));
  } else if (!isVariable || !variable.isArray()) {
    fail(place, text::shouldBeArray(name.text()));
  } else {
    fail(place, text::shouldBeStructure(name.text()));
  }
  return nullptr;
}

bool Machine::fieldOfName(const Instruction& i) {
  const Storable* structure = structureIn(i.b, placeOf(i));
  if (structure == nullptr) return false;
  reg(i.a) = readField(*structure->structure(), nameAt(i.c));
  return true;
}

// A value that is used up.
bool Machine::field(const Instruction& i, Name name, Name parent) {
  KeloNode& place = placeOf(i);
  Storable& value = reg(i.b);
  if (!value.isValue()) return fail(place, text::kFieldOfMultipleOutputs);
  if (!value.isStructure()) return fail(place, expectation(text::notAStructure(parent.text())));
  const Storable* plain = plainFieldAt(value, name, i);
  Storable result = plain ? *plain : readField(*value.structure(), name);
  value.clear();
  reg(i.a) = std::move(result);
  return true;
}

bool Machine::namedField(const Instruction& i) {
  if (!at(i.c).isValue()) return fail(placeOf(i), text::kFieldNameEvaluationFailed);
  HeldName name;
  const bool isName = guarded(placeOf(i), text::kFieldNameEvaluationFailed, [&] {
    name = fieldNameOf(at(i.c));
    return true;
  });
  return isName && guarded(placeOf(i), text::kUnexpectedError, [&] { return field(i, name, nameAt(i.d)); });
}

// NAME(I).FIELD
bool Machine::elementField(const Instruction& i) {
  const Site& site = siteAt(i.d);
  const Storable& subscript = at(i.c);
  const Storable& variable = reg(i.b);
  if (structureIn(i.b, placeOf(i)) == nullptr) return false;
  const Storable* arguments[] = {&subscript};
  Storable selected;
  if (!readElements(variable, site, arguments, 1, &selected)) return false;
  reg(i.a) = readField(*selected.structure(), nameAt(i.e));
  return true;
}

// ---- Writing

// What an assignment along a chain does in the end; the value is absent where the end is erased.
bool Machine::finishChain(const FieldChain& chain, int32_t slot, std::optional<Storable> value, KeloNode& place) {
  Storable& variable = reg(slot);
  const bool isNew = variable.isNone() || variable.isLocalFunc();
  return guarded(place, text::kStructureAssignmentFailed, [&] {
    Storable fresh;
    Storable& root = isNew ? fresh : variable;
    if (value) chain.assign(root, isNew, std::move(*value));
    else chain.erase(root, isNew);
    if (isNew) variable = std::move(fresh);
    return true;
  });
}

// NAME.FIELD = value
bool Machine::setField(const Instruction& i) {
  const Name name = nameAt(i.b);
  Storable& variable = reg(i.a);
  if (plainFieldAt(variable, name, i)) {
    Storable value = take(i.c);  // which may be the structure itself
    *writableFieldAt(variable, name, i) = std::move(value);
    return true;
  }
  return putField(i, name);
}

// NAME.(TEXT) = value
bool Machine::setNamedField(const Instruction& i) {
  if (!at(i.b).isValue()) return fail(placeOf(i), text::kFieldNameEvaluationFailed);
  return putField(i, fieldNameOf(at(i.b)));
}

// A new structure, or a scalar one where it lies, gets the field, a new one after the others.
bool Machine::putField(const Instruction& i, const HeldName& name) {
  Storable& variable = reg(i.a);
  const bool isNew = variable.isNone() || variable.isLocalFunc();
  if (isNew || (variable.isStructure() && variable.size().isScalar())) {
    return guarded(placeOf(i), text::kStructureAssignmentFailed, [&] {
      Storable value = take(i.c);  // which may be the structure itself
      if (isNew) {
        StructArray made;
        made.put(name, std::move(value));
        variable = std::move(made);
      } else {
        variable.structure()->put(name, std::move(value));
      }
      return true;
    });
  }
  FieldChain chain(frame().code->slots[static_cast<size_t>(i.a)]);
  chain.addField(name);
  return finishChain(chain, i.a, take(i.c), placeOf(i));
}

// NAME.FIELD.FIELD... = value: in place where all of the path is there.
bool Machine::setPath(const Instruction& i) {
  const Site& site = siteAt(i.d);
  Storable value = take(i.c);  // which may be the structure itself
  if (writePath(reg(i.a), site.fields, value)) return true;
  FieldChain chain(site.name);
  for (const Name name : site.fields) chain.addField(name);
  return finishChain(chain, i.a, std::move(value), placeOf(i));
}

// NAME(I).FIELD = value
bool Machine::setElementField(const Instruction& i) {
  const Name name = nameAt(i.b);
  Storable& variable = reg(i.a);
  double number;
  if (variable.isStructure() && subscriptNumber(at(i.c), &number)) {
    StructArray& array = *variable.structure();
    const int64_t count = array.numElements();
    const int64_t field = fieldIndex(array, name, i);
    int64_t position = field < 0 ? -1 : plainPosition(number, count);
    if (field >= 0 && number == static_cast<double>(count) + 1 && array.size().isRow()) {
      array.extend(SizeVector(1, count + 1));
      position = count;
    }
    if (position >= 0) {
      Storable value = take(i.e);  // which may be the structure itself
      array.writableValue(position, field) = std::move(value);
      return true;
    }
  }
  FieldChain chain(frame().code->slots[static_cast<size_t>(i.a)]);
  const Storable* arguments[] = {&at(i.c)};
  const SizeVector size = variable.isArray() ? variable.size() : SizeVector();
  if (!guarded(placeOf(i), text::kIndexEvaluationFailed, [&] {
        chain.addIndices(indicesOf(size, arguments, 1));
        return true;
      })) {
    return false;
  }
  chain.addField(name);
  return finishChain(chain, i.a, take(i.e), placeOf(i));
}

// NAME.FIELD(I) = value or NAME.FIELD(I, J) = value, with subscripts that are no colons
bool Machine::setFieldElement(const Instruction& i, std::span<const Storable> subscripts) {
  const Name name = nameAt(i.b);
  Storable& variable = reg(i.a);
  const Storable* found = plainFieldAt(variable, name, i);
  const bool areTwo = subscripts.size() == 2;
  double number;
  if (found && found->isNumeric() && subscriptNumber(subscripts[0], &number)) {
    Storable& field = *writableFieldAt(variable, name, i);
    if (areTwo ? storeScalar(field, subscripts[0], subscripts[1], at(i.e)) : storeScalar(field, subscripts[0], at(i.e))) {
      return true;
    }
  }
  FieldChain chain(frame().code->slots[static_cast<size_t>(i.a)]);
  chain.addField(name);
  const Storable* arguments[] = {&subscripts[0], &subscripts[subscripts.size() - 1]};
  if (!guarded(placeOf(i), text::kStructureAssignmentFailed, [&] {
        (void)chain.reached(variable.isNone() || variable.isLocalFunc() ? nullptr : &variable);
        return true;
      }) ||
      !guarded(placeOf(i), text::kIndexEvaluationFailed, [&] {
        chain.addIndices(indicesOf(SizeVector(), arguments, static_cast<int32_t>(subscripts.size())));
        return true;
      })) {
    return false;
  }
  return finishChain(chain, i.a, take(i.e), placeOf(i));
}

// struct('a', value, ...) whose names are written out
bool Machine::makeStructure(const Instruction& i) {
  StructArray made;
  int32_t value = i.b;
  for (const Name name : siteAt(i.d).fields) made.put(name, take(value++));
  reg(i.a) = std::move(made);
  return true;
}

// ---- Chains of any length, built link by link; a function that a subscript calls builds its own

// The size of what the chain has come to, which subscripts see.
bool Machine::reachedSize(int32_t slot, KeloNode& place, SizeVector* size) {
  return guarded(place, text::kStructureAssignmentFailed, [&] {
    const Storable& variable = reg(slot);
    const bool isNew = variable.isNone() || variable.isLocalFunc();
    const Storable* reached = chains_.back().reached(isNew ? nullptr : &variable);
    if (size && reached && reached->isArray()) *size = reached->size();
    return true;
  });
}

bool Machine::chainIndices(const Instruction& i) {
  const Site& site = siteAt(i.d);
  KeloNode& place = placeOf(i);
  if (site.count == 0) return fail(place, text::kNoIndex);
  SizeVector size;
  if (!reachedSize(site.base, place, &size)) return false;
  std::array<double, 2> numbers;
  const auto count = static_cast<size_t>(site.count);
  const auto isNumber = [&](size_t k) { return subscriptNumber(reg(i.b + static_cast<int32_t>(k)), &numbers[k]); };
  if (count <= numbers.size() && isNumber(0) && (count == 1 || isNumber(1)) &&
      chains_.back().addSubscripts(std::span(numbers).first(count))) {
    return true;
  }
  std::vector<const Storable*> arguments;
  for (int32_t k = 0; k < site.count; ++k) arguments.push_back(&reg(i.b + k));
  chains_.back().addIndices(indicesOf(size, arguments.data(), site.count));
  for (int32_t k = 0; k < site.count; ++k) reg(i.b + k).clear();
  return true;
}

bool Machine::chainNamedField(const Instruction& i) {
  if (!at(i.b).isValue()) return fail(placeOf(i), text::kFieldNameEvaluationFailed);
  chains_.back().addField(fieldNameOf(at(i.b)));
  return true;
}

bool Machine::chainEnd(const Instruction& i, bool erases) {
  const FieldChain chain = std::move(chains_.back());
  chains_.pop_back();
  return finishChain(chain, i.a, erases ? std::nullopt : std::optional(take(i.b)), placeOf(i));
}

}  // namespace kelo
