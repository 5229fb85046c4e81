// Fields and chains. A chain is followed by a loop, not by recursion: its length is the user's.
#include "values/chains.h"

#include <algorithm>
#include <cmath>

#include "messages/catalogue/indexing.h"
#include "messages/message.h"
#include "values/exact_integers.h"
#include "values/growth.h"
#include "values/indexing.h"

namespace kelo {
namespace {

int64_t existingField(const StructArray& array, Name field) {
  if (array.isEmpty()) throw problem(text::kEmptyStructureHasNoField);
  const int64_t index = array.fieldIndex(field);
  if (index < 0) throw problem(text::fieldNotFound(field.text()));
  return index;
}

}  // namespace

Storable readField(const StructArray& array, Name field) {
  const int64_t index = existingField(array, field);
  if (array.size().isScalar()) return array.value(0, index);
  std::vector<Storable> values;
  for (int64_t k = 0; k < array.numElements(); ++k) values.push_back(array.value(k, index));
  return Storable::listOf(std::move(values));
}

HeldName fieldNameOf(const Storable& value) {
  const NumericArray* text = value.numeric();
  if (text == nullptr || !text->is(Kind::Char) || !text->size().isRow()) throw problem(text::kFieldNameNotText);
  const std::span<const Character> characters = text->asChar().values();
  const auto isAscii = [](Character c) { return c.word() < 0x80; };
  char plain[64];  // OPTIMIZATION: most names need no string of their own
  if (characters.size() > sizeof plain || !std::ranges::all_of(characters, isAscii)) {
    return HeldName::of(toUtf8(text->asChar()));
  }
  std::ranges::transform(characters, plain, [](Character c) { return static_cast<char>(c.word()); });
  return HeldName::of({plain, characters.size()});
}

/// Where a link leads: the element of the structure array before it, and the field there.
struct FieldChain::Step {
  SizeVector size;  // of the structure array, made larger if need be
  int64_t element;
  const Storable* child;  // the field's value; null when the element or the field is missing
};

bool FieldChain::addSubscripts(std::span<const double> numbers) {
  const auto isPosition = [](double x) { return x >= 1 && x < kExactIntegers && x == std::trunc(x); };
  if (!std::ranges::all_of(numbers, isPosition)) return false;
  links_.back().count = static_cast<int32_t>(numbers.size());
  std::ranges::copy(numbers, links_.back().numbers);
  return true;
}

int64_t FieldChain::Link::plainPositionIn(const SizeVector& size) const {
  if (count == 0) return -1;
  return count == 1 ? plainPosition(numbers[0], size.numElements()) : plainPosition(size, numbers[0], numbers[1]);
}

std::vector<Index> FieldChain::Link::allIndices() const {
  if (count == 0) return indices;
  std::vector<Index> made;
  for (int32_t k = 0; k < count; ++k) made.push_back(Index::from(Storable(numbers[k])));
  return made;
}

// The element from which link k leads on; -1 where that takes a closer look.
inline int64_t FieldChain::plainElement(const StructArray& array, size_t k) const {
  if (links_[k].hasIndices()) return links_[k].plainPositionIn(array.size());
  return array.size().isScalar() ? 0 : -1;
}

// Where link k leads; null where that takes a closer look.
inline const Storable* FieldChain::plainChild(const Storable& at, size_t k) const {
  const StructArray* array = at.structure();
  const int64_t element = array ? plainElement(*array, k) : -1;
  const int64_t field = element < 0 ? -1 : array->fieldIndex(fieldBehind(k));
  return field < 0 ? nullptr : &array->value(element, field);
}

FieldChain::Step FieldChain::stepFrom(const Storable* at, size_t k) const {
  if (at != nullptr && !at->isStructure()) {
    throw problem(k == 0 ? text::shouldBeStructure(variable_.text()) : text::notAStructure(links_[k].field.text()));
  }
  const StructArray* array = at ? at->structure() : nullptr;
  if (!links_[k].hasIndices()) {
    if (array && !array->size().isScalar()) throw problem(text::kStructureScalarExpected);
    return {SizeVector(1, 1), 0, array ? plainField(*at, fieldBehind(k)) : nullptr};
  }
  const std::vector<Index> indices = links_[k].allIndices();
  const auto isOne = [](const Index& index) { return index.count() == 1; };
  if (!std::all_of(indices.begin(), indices.end(), isOne)) throw problem(text::kStructureScalarExpected);
  const SizeVector size = grownSize(array ? array->size() : SizeVector(), indices);
  const int64_t element = selectedPositions(size, indices).scalar();
  const int64_t field = array && size == array->size() ? array->fieldIndex(fieldBehind(k)) : -1;
  return {size, element, field < 0 ? nullptr : &array->value(element, field)};
}

const Storable* FieldChain::reached(const Storable* root) const {
  const Storable* at = root;
  for (size_t k = 0; k < stepCount() && at != nullptr; ++k) {
    const Storable* child = plainChild(*at, k);
    at = child ? child : stepFrom(at, k).child;
  }
  return at;
}

// All of the path is there, and either a whole field is written or one element of a numeric array,
// by one of its kind.
bool FieldChain::assignPlainly(Storable& root, Storable& value) const {
  const Storable* end = &root;
  for (size_t k = 0; k < stepCount() && end; ++k) end = plainChild(*end, k);
  if (end == nullptr) return false;
  int64_t position = -1;
  if (links_.back().hasIndices()) {
    if (!end->isNumeric() || !value.isScalarOf(end->numeric()->kind())) return false;
    position = links_.back().plainPositionIn(end->size());
    if (position < 0) return false;
  }
  Storable* target = &root;
  for (size_t k = 0; k < stepCount(); ++k) {
    StructArray& array = *target->structure();
    target = &array.writableValue(plainElement(array, k), array.fieldIndex(fieldBehind(k)));
  }
  if (position < 0) *target = std::move(value);
  else putElement(*target->numeric(), position, *value.numeric());
  return true;
}

template <class Change>
void FieldChain::change(Storable& root, bool isNew, Change&& change) const {
  std::vector<Step> steps;
  const Storable* at = isNew ? nullptr : &root;
  size_t existing = 0;  // links that lead somewhere
  for (size_t k = 0; k < stepCount(); ++k) {
    steps.push_back(stepFrom(at, k));
    at = steps.back().child;
    if (at != nullptr) existing = k + 1;
  }

  // What does not exist yet, from its end backwards.
  const auto put = [&](StructArray& array, size_t k, Storable value) {
    const bool grows = !(steps[k].size == array.size());
    const bool twoChanges = grows && !array.hasField(fieldBehind(k));  // the second may find no memory
    StructArray copy = twoChanges ? array : StructArray();
    StructArray& target = twoChanges ? copy : array;
    if (grows) grow(target, steps[k].size, {});
    const int64_t field = target.ensureField(fieldBehind(k));
    target.writableValue(steps[k].element, field) = std::move(value);
    if (twoChanges) array = std::move(copy);
  };
  const auto made = [&](size_t k, Storable value) {
    StructArray array(SizeVector(), {});
    put(array, k, std::move(value));
    return Storable(std::move(array));
  };
  Storable child;
  if (existing < stepCount()) {
    change(child);
    for (size_t k = stepCount() - 1; k > existing; --k) child = made(k, std::move(child));
    if (isNew) {
      root = made(0, std::move(child));
      return;
    }
  }

  Storable* node = &root;
  for (size_t k = 0; k < existing; ++k) {
    StructArray& array = *node->structure();
    node = &array.writableValue(steps[k].element, array.fieldIndex(fieldBehind(k)));
  }
  if (existing < stepCount()) {
    put(*node->structure(), existing, std::move(child));
  } else {
    change(*node);
  }
}

void FieldChain::assign(Storable& root, bool isNew, Storable value) const {
  if (!isNew && assignPlainly(root, value)) return;
  change(root, isNew, [&](Storable& end) {
    if (links_.back().hasIndices()) writeElements(end, links_.back().allIndices(), value);
    else end = std::move(value);
  });
}

void FieldChain::erase(Storable& root, bool isNew) const {
  change(root, isNew, [&](Storable& end) { deleteElements(end, links_.back().allIndices()); });
}

}  // namespace kelo
