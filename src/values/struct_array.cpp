#include "values/struct_array.h"

#include <algorithm>

#include "messages/fatal_fault.h"
#include "values/held_name.h"
#include "values/memory.h"
#include "values/name_hints.h"
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

/// The names of fields, and one of those who hold each.
class HeldFieldNames final : public FieldNames {
 public:
  explicit HeldFieldNames(std::vector<Name> fields) : FieldNames(std::move(fields)) {
    for (const Name name : names()) retainName(name);
  }
  ~HeldFieldNames() override {
    for (const Name name : names()) releaseName(name);
  }
};

Ref<FieldNames> heldNames(std::vector<Name> names) {
  return Ref<FieldNames>::adopt(new HeldFieldNames(std::move(names)));
}

void add(FieldNames& names, Name field) {
  fieldPlaceOf(field) = static_cast<uint32_t>(names.names().size());
  names.push(field);
  retainName(field);
}

}  // namespace

// OPTIMIZATION: mostly the name is where it was last, and no table is made at all.
int64_t FieldNames::hashedIndexOf(Name field) const {
  uint32_t& place = fieldPlaceOf(field);
  if (place < names_.size() && names_[place] == field) return place;
  for (size_t k = index_.size(); k < names_.size(); ++k) index_[names_[k].id()] = static_cast<int64_t>(k);
  const auto found = index_.find(field.id());
  if (found == index_.end()) return -1;
  place = static_cast<uint32_t>(found->second);
  return found->second;
}

StructArray::Body::Body(const SizeVector& s, std::vector<Name> names) : size(s.trimmed()) {
  if (size.hasZeroLength()) names.clear();
  values.resize(valueCount(size.numElements(), names.size()));
  fields = heldNames(std::move(names));
}

StructArray::StructArray() : StructArray(SizeVector(1, 1), {}) {}
StructArray::StructArray(const SizeVector& size, std::vector<Name> fields)
    : body_(makeRef<Body>(size, std::move(fields))) {}
StructArray::StructArray(const StructArray&) = default;
StructArray::StructArray(StructArray&&) noexcept = default;
StructArray& StructArray::operator=(StructArray other) noexcept {
  std::swap(body_, other.body_);
  return *this;
}
StructArray::~StructArray() = default;

bool StructArray::hasSameFields(const StructArray& other) const {
  return fields().size() == other.fields().size() &&
         std::all_of(fields().begin(), fields().end(), [&](Name name) { return other.hasField(name); });
}

void StructArray::takeOwnBody() { body_ = makeRef<Body>(*body_); }

int64_t StructArray::ensureField(Name field) {
  const bool isNew = isHeldOnce(field);  // by the caller, and so by no structure
  if (const int64_t index = isNew ? -1 : fieldIndex(field); index >= 0) return index;
  Body& body = ownBody();
  if (body.fields->isShared()) body.fields = heldNames(fields());
  const size_t before = fields().size();
  body.fields->reserveOne();
  if (numElements() == 1) {  // in place, so that a structure with many fields is made in linear time
    if (body.values.capacity() == before) body.values.reserve(2 * before + 1);
    body.values.emplace_back();  // there is room for both
    add(*body.fields, field);
    return static_cast<int64_t>(before);
  }
  std::vector<Storable> values;
  values.reserve(valueCount(numElements(), before + 1));
  auto next = body.values.begin();
  for (int64_t element = 0; element < numElements(); ++element) {
    for (size_t f = 0; f < before; ++f) values.push_back(std::move(*next++));
    values.emplace_back();
  }
  body.values = std::move(values);
  add(*body.fields, field);
  return static_cast<int64_t>(before);
}

void StructArray::removeField(Name field) {
  const int64_t index = fieldIndex(field);
  if (index < 0) return;
  std::vector<Name> names = fields();
  names.erase(names.begin() + index);
  auto shorter = heldNames(std::move(names));
  Body& body = ownBody();
  std::vector<Storable> values;
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

StructArray StructArray::element(int64_t position) const { return gathered({&position, 1}, SizeVector(1, 1)); }

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
