#include "interpreter/native/fields.h"

#include <algorithm>

#include "values/chains.h"

namespace kelo::native {

std::optional<Field> fieldOf(const Code& code, const Instruction& i) {
  const auto name = [&](int32_t index) { return std::vector{code.names[static_cast<size_t>(index)]}; };
  switch (i.op) {
    case Op::fieldOfName: return Field{i.b, name(i.c)};
    case Op::fieldPath: return Field{i.b, code.sites[static_cast<size_t>(i.d)].fields};
    case Op::elementField: return Field{i.b, name(i.e), /*isOfElements=*/true};
    case Op::setField: case Op::setFieldElement: case Op::setFieldElement2:
      return Field{i.a, name(i.b), false, /*isWritten=*/true};
    case Op::setPath: return Field{i.a, code.sites[static_cast<size_t>(i.d)].fields, false, /*isWritten=*/true};
    case Op::setElementField: return Field{i.a, name(i.b), /*isOfElements=*/true, /*isWritten=*/true};
    default: return std::nullopt;
  }
}

std::vector<Field> fieldsOf(const Code& code, int32_t begin, int32_t end) {
  std::vector<Field> fields;
  for (int32_t pc = begin; pc <= end; ++pc) {
    const std::optional<Field> named = fieldOf(code, code.instructions[static_cast<size_t>(pc)]);
    if (!named) continue;
    const auto known = std::ranges::find_if(fields, [&](const Field& each) { return each.isSame(*named); });
    if (known == fields.end()) fields.push_back(*named);
    else known->isWritten = known->isWritten || named->isWritten;
  }
  const std::vector<Field> all = fields;
  std::erase_if(fields, [&](const Field& field) {
    return std::ranges::any_of(all, [&](const Field& each) {
      return each.slot == field.slot && each.isOfElements != field.isOfElements;
    });
  });
  return fields;
}

Storable* placeOf(const Field& field, Storable* registers) try {
  Storable* at = registers + field.slot;
  if (field.isOfElements) {
    StructArray* array = at->structure();
    const int64_t index = array && !array->isEmpty() ? array->fieldIndex(field.path.front()) : -1;
    if (index < 0) return nullptr;
    return field.isWritten ? &array->writableValue(0, index) : const_cast<Storable*>(&array->value(0, index));
  }
  for (const Name name : field.path) {
    at = field.isWritten ? writablePlainField(*at, name) : const_cast<Storable*>(plainField(*at, name));
    if (at == nullptr) return nullptr;
  }
  return at;
} catch (const std::bad_alloc&) {
  return nullptr;
}

Type typeOf(const Field& field, const Storable* place) {
  if (place == nullptr) return {};
  if (field.isOfElements) return {.held = Held::elements, .isWritable = field.isWritten};
  Type type = typeOf(*place);
  type.isWritable = type.isWritable && field.isWritten;
  return type;
}

void describe(const StructArray& array, const Storable* place, Word* words) {
  words[Layout::kData / 8].data = place;
  words[Layout::kCount / 8].whole = array.numElements();
  words[Layout::kStride / 8].whole = array.fieldCount() * static_cast<int64_t>(sizeof(Storable));
}

}  // namespace kelo::native
