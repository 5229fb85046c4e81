#include "values/struct_array.h"

#include <algorithm>
#include <unordered_map>

#include "messages/fatal_fault.h"
#include "values/memory.h"
#include "values/storable.h"

namespace kelo {

namespace {

constexpr size_t kScannedFields = 16;  // up to here a scan of the names beats hashing

// The number of values that so many elements hold. throws OutOfMemory where they pass the limit for
// one array
size_t valueCount(int64_t elements, size_t fields) {
  const auto elementBytes = static_cast<int64_t>(std::max<size_t>(fields, 1) * sizeof(Storable));
  if (fields > 0 && elements > arrayByteLimit() / elementBytes) throw OutOfMemory();
  return static_cast<size_t>(elements) * fields;
}

}  // namespace

struct StructArray::Body : CountedObject {
  Body(const SizeVector& s, std::vector<Name> names) : size(s.trimmed()), fields(std::move(names)) {
    if (size.hasZeroLength()) fields.clear();
    values.resize(valueCount(size.numElements(), fields.size()));
  }
  explicit Body(const Body& other)
      : CountedObject(), size(other.size), fields(other.fields), values(other.values), index(other.index) {}

  int64_t indexOf(Name field) {
    if (fields.size() <= kScannedFields) {
      const auto found = std::find(fields.begin(), fields.end(), field);
      return found == fields.end() ? -1 : found - fields.begin();
    }
    for (size_t k = index.size(); k < fields.size(); ++k) index[fields[k].id()] = static_cast<int64_t>(k);
    const auto found = index.find(field.id());
    return found == index.end() ? -1 : found->second;
  }

  size_t at(int64_t element, int64_t field) const {
    return static_cast<size_t>(element) * fields.size() + static_cast<size_t>(field);
  }

  SizeVector size;
  std::vector<Name> fields;
  std::vector<Storable> values;
  std::unordered_map<uint32_t, int64_t> index;  // of the first fields, once there are many
};

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

const SizeVector& StructArray::size() const { return body_->size; }
const std::vector<Name>& StructArray::fields() const { return body_->fields; }

int64_t StructArray::fieldIndex(Name field) const {
  return body_->indexOf(field);
}

bool StructArray::hasSameFields(const StructArray& other) const {
  return fields().size() == other.fields().size() &&
         std::all_of(fields().begin(), fields().end(), [&](Name name) { return other.hasField(name); });
}

const Storable& StructArray::value(int64_t element, int64_t field) const {
  return body_->values[body_->at(element, field)];
}

StructArray::Body& StructArray::ownBody() {
  if (body_->isShared()) body_ = makeRef<Body>(*body_);
  return *body_;
}

Storable& StructArray::writableValue(int64_t element, int64_t field) {
  Body& body = ownBody();
  return body.values[body.at(element, field)];
}

int64_t StructArray::ensureField(Name field) {
  if (const int64_t index = fieldIndex(field); index >= 0) return index;
  Body& body = ownBody();
  const size_t before = body.fields.size();
  if (numElements() == 1) {  // in place, so that a structure with many fields is made in linear time
    if (body.fields.capacity() == before) body.fields.reserve(2 * before + 1);
    if (body.values.capacity() == before) body.values.reserve(2 * before + 1);
    body.values.emplace_back();  // there is room for both
    body.fields.push_back(field);
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
  body.fields.push_back(field);
  return static_cast<int64_t>(before);
}

void StructArray::removeField(Name field) {
  const int64_t index = fieldIndex(field);
  if (index < 0) return;
  Body& body = ownBody();
  std::vector<Storable> values;
  for (size_t k = 0; k < body.values.size(); ++k) {
    if (static_cast<int64_t>(k % body.fields.size()) != index) values.push_back(std::move(body.values[k]));
  }
  body.values = std::move(values);
  body.fields.erase(body.fields.begin() + index);
  body.index.clear();
}

StructArray StructArray::gathered(std::span<const int64_t> positions, const SizeVector& size) const {
  StructArray result(size, fields());
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

bool StructArray::isUnshared() const { return !body_->isShared(); }

}  // namespace kelo
