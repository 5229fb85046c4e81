// StructArray: an array of structures that all have the same fields.
//
// One shared body holds the size, the field names in the order in which they were made, and the
// values of all elements: those of an element stand together, in field order. A copy shares the
// body; a write takes a body of its own first, which still shares the list of names. An array
// without elements has no field names. A scalar structure is the 1 x 1 case. What was moved from
// may only be assigned to or destroyed.
//
// What every read and write of a field asks is inline; it stands after Storable in storable.h.
#pragma once

#include <span>
#include <unordered_map>
#include <vector>

#include "values/counted.h"
#include "values/name.h"
#include "values/size_vector.h"

namespace kelo {

class Storable;

class StructArray {
 public:
  /// 1 x 1 without fields.
  StructArray();
  /// `size` with the given fields, each value an empty double. Without elements there are no
  /// fields.
  StructArray(const SizeVector& size, std::vector<Name> fields);
  StructArray(const StructArray&);
  StructArray(StructArray&&) noexcept;
  StructArray& operator=(StructArray) noexcept;
  ~StructArray();

  const SizeVector& size() const;
  int64_t numElements() const { return size().numElements(); }
  bool isEmpty() const { return size().hasZeroLength(); }
  const std::vector<Name>& fields() const;
  int64_t fieldCount() const { return static_cast<int64_t>(fields().size()); }
  /// Position of a field in fields(); -1 when there is none.
  int64_t fieldIndex(Name field) const;
  bool hasField(Name field) const { return fieldIndex(field) >= 0; }
  /// Whether both have the same set of field names, in whatever order.
  bool hasSameFields(const StructArray& other) const;

  /// One value, of the element at a position from 0. REQUIRES: both in range
  const Storable& value(int64_t element, int64_t field) const;
  /// The same for writing; the body is made this array's own first.
  Storable& writableValue(int64_t element, int64_t field);
  /// Adds a field, if it is missing, with an empty double in each element, and gives its index.
  /// REQUIRES: not empty
  int64_t ensureField(Name field);
  void removeField(Name field);

  /// The elements at positions from 0, in the given shape; position -1 gives an element of empty
  /// doubles.
  /// REQUIRES: size.numElements() == positions.size()
  StructArray gathered(std::span<const int64_t> positions, const SizeVector& size) const;
  /// One element as a 1 x 1 array.
  StructArray element(int64_t position) const;
  /// Overwrites the element at a position with one of another array. REQUIRES: hasSameFields(from)
  void setElement(int64_t position, const StructArray& from, int64_t fromPosition);
  /// Makes the array larger, with elements of empty doubles after the old ones, in place where it
  /// may and with spare room, so that appending is cheap on average. REQUIRES: not empty; the old
  /// elements keep their linear positions
  void extend(const SizeVector& size);
  /// The same elements in another shape. REQUIRES: as many elements
  StructArray reshaped(const SizeVector& size) const;

  bool isUnshared() const;

 private:
  struct Body;
  Body& ownBody();
  void takeOwnBody();
  Ref<Body> body_;
};

/// Names of fields, held by all bodies that have the same ones.
class FieldNames : public CountedObject {
 public:
  explicit FieldNames(std::vector<Name> names) : names_(std::move(names)) {}

  const std::vector<Name>& names() const { return names_; }
  /// -1 when there is none.
  int64_t indexOf(Name field) const {
    if (names_.size() > kScanned) return hashedIndexOf(field);
    for (size_t k = 0; k < names_.size(); ++k) {
      if (names_[k] == field) return static_cast<int64_t>(k);
    }
    return -1;
  }
  /// REQUIRES: nobody else holds the list
  void reserveOne() {
    if (names_.capacity() == names_.size()) names_.reserve(2 * names_.size() + 1);
  }
  void push(Name field) { names_.push_back(field); }

 private:
  static constexpr size_t kScanned = 16;  // up to here a scan of the names beats hashing
  int64_t hashedIndexOf(Name field) const;

  std::vector<Name> names_;
  mutable std::unordered_map<uint32_t, int64_t> index_;  // of the first names, once there are many
};

}  // namespace kelo
