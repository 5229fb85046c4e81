// Fields of structures: reading s.f and s(i).f, and writing along a chain such as s(i).f(j).g = v.
//
// A chain is a variable, then fields, each with subscripts after it or none. The evaluator builds
// it from the left; since `end` and ":" in a subscript need the extent of what stands before it, a
// chain can be asked what it has reached so far. The write itself first follows the chain as far as
// it exists, only looking, then makes what is missing from its end backwards, and only then touches
// the variable: a failure leaves it as it was, and no level that exists is copied unless it is
// shared.
#pragma once

#include <span>
#include <vector>

#include "values/held_name.h"
#include "values/index.h"
#include "values/storable.h"

namespace kelo {

/// The field of every element, in storage order: one value for a scalar structure, else a list
/// without a first.
/// throws Problem: no elements, or no such field
Storable readField(const StructArray& array, Name field);

/// The field of a scalar structure for looking at; null when the value is anything else or lacks
/// it.
inline const Storable* plainField(const Storable& value, Name field) {
  const StructArray* array = value.structure();
  if (array == nullptr || !array->size().isScalar()) return nullptr;
  const int64_t index = array->fieldIndex(field);
  return index < 0 ? nullptr : &array->value(0, index);
}
/// The same for writing, in place: what s.f = v assigns to and s.f(i) = v writes elements of. No
/// level that is shared changes for its other holders. Valid until the structure changes.
inline Storable* writablePlainField(Storable& target, Name field) {
  StructArray* array = target.structure();
  if (array == nullptr || !array->size().isScalar()) return nullptr;
  const int64_t index = array->fieldIndex(field);
  return index < 0 ? nullptr : &array->writableValue(0, index);
}

/// The name that s.(e) means. throws Problem when e is no row of characters
HeldName fieldNameOf(const Storable& value);

/// The left side of a structure assignment.
class FieldChain {
 public:
  explicit FieldChain(Name variable) : variable_(variable) {
    links_.reserve(kUsualLinks);
    links_.emplace_back();
  }

  /// Subscripts after the variable or the field that was added last. REQUIRES: not empty
  void addIndices(std::vector<Index> indices) { links_.back().indices = std::move(indices); }
  /// The same of one number or two. False, and nothing is added, where one is not whole and positive.
  bool addSubscripts(std::span<const double> numbers);
  void addField(HeldName field) { links_.emplace_back().field = std::move(field); }

  /// What the chain has reached, before the subscripts at its end, if any: `end` and ":" in them
  /// ask for its size. Null where there is nothing yet, which counts as 0 x 0. root: the variable,
  /// null if there is none.
  const Storable* reached(const Storable* root) const;

  /// Writes the value at the chain's end. A missing field or element on the way is made. `isNew`
  /// says that the variable does not exist yet; `root` is then given its first value. throws 
  /// Problem, and root is as it was: no structure or not a scalar one on the way, and as
  /// writeElements
  void assign(Storable& root, bool isNew, Storable value) const;
  /// s.f(i) = []. REQUIRES: subscripts at the chain's end
  void erase(Storable& root, bool isNew) const;

 private:
  static constexpr size_t kUsualLinks = 4;
  // The variable, or a field, with the subscripts behind it: `count` numbers, or any indices.
  struct Link {
    bool hasIndices() const { return count > 0 || !indices.empty(); }
    // Of the numbers, in an array of this size; -1 when that is outside, or for other indices.
    int64_t plainPositionIn(const SizeVector& size) const;
    std::vector<Index> allIndices() const;

    HeldName field;
    int32_t count = 0;
    double numbers[2];
    std::vector<Index> indices;
  };
  struct Step;
  Name fieldBehind(size_t k) const { return links_[k + 1].field; }
  size_t stepCount() const { return links_.size() - 1; }
  Step stepFrom(const Storable* at, size_t k) const;
  int64_t plainElement(const StructArray& array, size_t k) const;
  const Storable* plainChild(const Storable& at, size_t k) const;
  bool assignPlainly(Storable& root, Storable& value) const;
  template <class Change>
  void change(Storable& root, bool isNew, Change&& change) const;

  Name variable_;
  SmallVector<Link> links_;
};

}  // namespace kelo
