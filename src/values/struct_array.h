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
  /// Writes a field of the one element; a new field stands behind the others. REQUIRES: 1 x 1
  void put(Name field, Storable value);
  /// Adds a field with a value where that is quick: nobody else holds the structure, there is room,
  /// and the last one that had the same fields before got this field next. Else does nothing, and
  /// says false.
  bool addNext(Name field, const Storable& value);
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
  explicit StructArray(Ref<Body> body);
  Body& ownBody();
  void takeOwnBody();
  int64_t indexToWrite(Name field) const;
  void append(Name field, Storable value);
  Ref<Body> body_;
};

/// The names of the fields of a structure array, in their order. All arrays with the same ones hold
/// one list, as far as they were made in the same way: a list remembers the one that came of it by
/// adding a field, so that structures which are filled field by field share their lists too.
class FieldNames : public CountedObject {
 public:
  /// A list of these names.
  static Ref<FieldNames> of(std::vector<Name> names);
  static const Ref<FieldNames>& none();
  /// Makes it a list with one name more, in place where nobody else holds it. REQUIRES: it has not
  /// got the name
  static void add(Ref<FieldNames>& list, Name field) {
    if (const Ref<FieldNames>* next = list->next(field)) list = Ref<FieldNames>(*next);
    else addAnew(list, field);
  }
  explicit FieldNames(std::vector<Name> names);
  ~FieldNames() override;

  const std::vector<Name>& names() const { return names_; }
  /// The list that came of this one last, by adding this name; null when it was another.
  const Ref<FieldNames>* next(Name field) const {
    return successor_ && successor_->names_.back() == field ? &successor_ : nullptr;
  }
  /// -1 when there is none.
  int64_t indexOf(Name field) const {
    if (!places_.empty()) return placeOf(field);
    for (size_t k = 0; k < names_.size(); ++k) {
      if (names_[k] == field) return static_cast<int64_t>(k);
    }
    return -1;
  }

 private:
  static void addAnew(Ref<FieldNames>& list, Name field);
  void push(Name field);
  void put(size_t which);
  int64_t placeOf(Name field) const;
  size_t firstFor(Name field) const;

  std::vector<Name> names_;
  std::vector<uint32_t> places_;  // of many names: a table with open addressing, 1 more than the place; 0: free
  Ref<FieldNames> successor_;     // what came of this list last, one name longer, if that is worth remembering
};

}  // namespace kelo
