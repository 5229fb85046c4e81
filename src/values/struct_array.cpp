#include "values/struct_array.h"

#include <algorithm>
#include <bit>

#include "messages/fatal_fault.h"
#include "values/held_name.h"
#include "values/memory.h"
#include "values/storable.h"

namespace kelo {

namespace {

// The number of values that so many elements hold. throws OutOfMemory where they pass the limit for
// one array
size_t valueCount(int64_t elements, size_t fields) {
  const auto elementBytes = static_cast<int64_t>(std::max<size_t>(fields, 1) * sizeof(Storable));
  if (fields > 0 && elements > arrayByteLimit() / elementBytes) throw OutOfMemory();
  return static_cast<size_t>(elements) * fields;
}

}  // namespace

// ---- Names

FieldNames::FieldNames(std::vector<Name> names) {
  names_.reserve(names.size());
  for (const Name name : names) push(name);
}

FieldNames::~FieldNames() {
  for (const Name name : names_) releaseName(name);
}

const Ref<FieldNames>& FieldNames::none() {
  static const auto* const none = new Ref<FieldNames>(makeRef<FieldNames>(std::vector<Name>()));
  return *none;
}

Ref<FieldNames> FieldNames::of(std::vector<Name> names) {
  return names.empty() ? none() : makeRef<FieldNames>(std::move(names));
}

void FieldNames::addAnew(Ref<FieldNames>& list, Name field) {
  constexpr size_t kRemembered = 32;  // names: of longer lists the next would take too much memory
  if (!list->isShared()) {
    list->successor_ = {};
    list->push(field);
    return;
  }
  std::vector<Name> names = list->names_;
  names.push_back(field);
  auto made = makeRef<FieldNames>(std::move(names));
  if (list->names_.size() < kRemembered && !isGivenBack(field)) list->successor_ = made;
  list = std::move(made);
}

void FieldNames::push(Name field) {
  constexpr size_t kScanned = 12;  // up to here a scan of the names beats hashing
  if (names_.size() == names_.capacity()) names_.reserve(2 * names_.size() + 1);
  if (names_.size() + 1 > kScanned && 2 * (names_.size() + 1) > places_.size()) {
    places_.assign(std::bit_ceil(4 * (names_.size() + 1)), 0);
    for (size_t k = 0; k < names_.size(); ++k) put(k);
  }
  names_.push_back(field);
  if (!places_.empty()) put(names_.size() - 1);
  retainName(field);
}

// Names that were made one after the other have neighbouring numbers and lie side by side.
size_t FieldNames::firstFor(Name field) const { return (field.id() >> 1) & (places_.size() - 1); }

void FieldNames::put(size_t which) {
  size_t at = firstFor(names_[which]);
  while (places_[at] != 0) at = (at + 1) & (places_.size() - 1);
  places_[at] = static_cast<uint32_t>(which + 1);
}

int64_t FieldNames::placeOf(Name field) const {
  for (size_t at = firstFor(field); places_[at] != 0; at = (at + 1) & (places_.size() - 1)) {
    if (names_[places_[at] - 1] == field) return places_[at] - 1;
  }
  return -1;
}

// ---- Structures

StructArray::Body::Body(const SizeVector& s, std::vector<Name> names) : size(s.trimmed()) {
  if (size.hasZeroLength()) names.clear();
  values.resize(valueCount(size.numElements(), names.size()));
  fields = FieldNames::of(std::move(names));
}

StructArray::StructArray() : body_(makeRef<Body>()) {}
StructArray::StructArray(const SizeVector& size, std::vector<Name> fields)
    : body_(makeRef<Body>(size, std::move(fields))) {}
StructArray::StructArray(Ref<Body> body) : body_(std::move(body)) {}
StructArray::StructArray(const StructArray&) = default;
StructArray::StructArray(StructArray&&) noexcept = default;
StructArray& StructArray::operator=(StructArray other) noexcept {
  std::swap(body_, other.body_);
  return *this;
}
StructArray::~StructArray() = default;

bool StructArray::hasSameFields(const StructArray& other) const {
  if (body_->fields.get() == other.body_->fields.get()) return true;
  return fields().size() == other.fields().size() &&
         std::all_of(fields().begin(), fields().end(), [&](Name name) { return other.hasField(name); });
}

void StructArray::takeOwnBody() { body_ = makeRef<Body>(*body_); }

// Where the field stands; -1 where it is new: for a name that a run has made and only the caller
// holds, nothing need be searched.
int64_t StructArray::indexToWrite(Name field) const { return isHeldOnce(field) ? -1 : fieldIndex(field); }

void StructArray::put(Name field, Storable value) {
  if (const int64_t index = indexToWrite(field); index >= 0) writableValue(0, index) = std::move(value);
  else append(field, std::move(value));
}

// In place, so that a structure with many fields is made in linear time. The first values get room
// for some more.
void StructArray::append(Name field, Storable value) {
  constexpr size_t kFirstRoom = 4;
  Body& body = ownBody();
  const size_t before = body.values.size();
  if (body.values.capacity() == before) body.values.reserve(std::max(kFirstRoom, 2 * before));
  FieldNames::add(body.fields, field);
  body.values.push_back(std::move(value));  // there is room for it
}

int64_t StructArray::ensureField(Name field) {
  if (const int64_t index = indexToWrite(field); index >= 0) return index;
  const size_t before = fields().size();
  if (numElements() == 1) {
    append(field, Storable());
    return static_cast<int64_t>(before);
  }
  Body& body = ownBody();
  SmallVector<Storable> values;
  values.reserve(valueCount(numElements(), before + 1));
  FieldNames::add(body.fields, field);
  auto next = body.values.begin();
  for (int64_t element = 0; element < numElements(); ++element) {
    for (size_t f = 0; f < before; ++f) values.push_back(std::move(*next++));
    values.emplace_back();
  }
  body.values = std::move(values);
  return static_cast<int64_t>(before);
}

void StructArray::removeField(Name field) {
  const int64_t index = fieldIndex(field);
  if (index < 0) return;
  std::vector<Name> names = fields();
  names.erase(names.begin() + index);
  auto shorter = FieldNames::of(std::move(names));
  Body& body = ownBody();
  SmallVector<Storable> values;
  for (size_t k = 0; k < body.values.size(); ++k) {
    if (static_cast<int64_t>(k % fields().size()) != index) values.push_back(std::move(body.values[k]));
  }
  body.values = std::move(values);
  body.fields = std::move(shorter);
}

StructArray StructArray::gathered(std::span<const int64_t> positions, const SizeVector& size) const {
  StructArray result(size, fields());
  if (!result.isEmpty()) result.body_->fields = body_->fields;
  for (size_t k = 0; k < positions.size(); ++k) {
    if (positions[k] < 0) continue;
    for (int64_t f = 0; f < fieldCount(); ++f) {
      result.writableValue(static_cast<int64_t>(k), f) = value(positions[k], f);
    }
  }
  return result;
}

StructArray StructArray::element(int64_t position) const {
  const auto first = body_->values.begin() + position * fieldCount();
  return StructArray(makeRef<Body>(body_->fields, std::span(first, static_cast<size_t>(fieldCount()))));
}

void StructArray::setElement(int64_t position, const StructArray& from, int64_t fromPosition) {
  for (int64_t f = 0; f < fieldCount(); ++f) {
    const auto at = static_cast<size_t>(f);
    const int64_t source = from.fields()[at] == fields()[at] ? f : from.fieldIndex(fields()[at]);
    writableValue(position, f) = Storable(from.value(fromPosition, source));
  }
}

void StructArray::extend(const SizeVector& size) {
  const size_t count = valueCount(size.numElements(), fields().size());
  Body& body = ownBody();
  body.values.resize(count);
  body.size = size.trimmed();
}

StructArray StructArray::reshaped(const SizeVector& size) const {
  StructArray result = *this;
  result.ownBody().size = size.trimmed();
  return result;
}

}  // namespace kelo
