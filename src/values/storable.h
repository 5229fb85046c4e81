// Storable: what a variable, a field or an argument holds: an array (numeric or of structures), a
// function handle or a local function.
//
// A Storable is one cell of 32 bytes. A numeric scalar lies in it whole; anything else is a counted
// reference, so a copy is cheap, and a write to what is shared copies first. What was moved from is
// some numeric array.
//
// Layout: every form begins with its reference, which is null where nothing is held, and leaves the
// bytes of an array's kind and of the form alone. So whether anything must be let go, and whether
// two cells are doubles, is one comparison each.
//
// The registers of the machine are Storables too. Only they know the last five forms: several
// values at once, a bare ":" among subscripts, a range among subscripts, a matrix that stands for
// its transpose as a factor, and nothing (a variable that is not there, the result of a call
// without one). None of these is ever kept in a structure or a workspace.
#pragma once

#include <cstddef>

#include "values/function_handle.h"
#include "values/numeric_array.h"
#include "values/struct_array.h"

namespace kelo {

class Storable;

/// Several values at once: the outputs of a function, the fields of a structure array.
struct StorableList;

/// Positions from 0 at even distances: a range among subscripts. As a subscript it is a row.
/// Invariant: count >= 2, and no position is negative
struct EvenPositions {
  int64_t first;
  int32_t step;  ///< may be negative or 0
  uint32_t count;

  /// The array of subscripts that they came from.
  DoubleArray asSubscripts() const;
};

class Storable {
 public:
  enum class Form : uint8_t { numeric, structure, funcHandle, localFunc, list, colon, positions, transposed, none };

  /// Bytes in the cell: the scalar, and the kind with the form. In front of all lies the reference;
  /// a double has none, and its kind and form are 0.
  static constexpr size_t kScalarAt = offsetof(NumericArray, cell_.scalar_), kKindAt = offsetof(NumericArray, kind_);

  Storable() : numeric_() {}  ///< double 0 x 0
  Storable(NumericArray array) : numeric_(std::move(array)) {}
  template <class T> Storable(TypedArray<T> array) : numeric_(std::move(array)) {}
  Storable(StructArray array) : numeric_(0.0) {
    new (&structure_) StructArray(std::move(array));
    setForm(Form::structure);
  }
  Storable(FunctionHandle handle) : funcHandle_(std::move(handle)) { setForm(Form::funcHandle); }
  Storable(LocalFunction function) : localFunc_(std::move(function)) { setForm(Form::localFunc); }
  explicit Storable(double x) : numeric_(DoubleArray(x)) {}
  /// Of the forms that only registers have.
  static Storable listOf(std::vector<Storable> values);
  static Storable colon() { return Storable(Form::colon); }
  static Storable positionsOf(EvenPositions positions) {
    Storable result(Form::positions);
    std::memcpy(result.numeric_.cell_.scalar_, &positions, sizeof positions);
    return result;
  }
  static Storable transposed(DoubleArray matrix) {
    Storable result(std::move(matrix));
    result.setForm(Form::transposed);
    return result;
  }
  static Storable none() { return Storable(Form::none); }

  Storable(const Storable& other) {
    copyBytes(other);
    if (!holdsNothing()) retainHeld();
  }
  Storable(Storable&& other) noexcept {
    copyBytes(other);
    other.forget();
  }
  Storable& operator=(const Storable& other) {
    if (holdsNothing() && other.holdsNothing()) copyBytes(other);
    else *this = Storable(other);
    return *this;
  }
  Storable& operator=(Storable&& other) noexcept {
    if (this == &other) return *this;
    if (holdsNothing()) {
      copyBytes(other);
      other.forget();
    } else {
      Storable taken(std::move(other));  // which may lie inside this value, as in s = s.field
      this->~Storable();
      new (this) Storable(std::move(taken));
    }
    return *this;
  }
  /// Becomes a number; cheaper than the assignment of one that was made before.
  void setNumber(double x) {
    if (!holdsNothing()) [[unlikely]] reset();
    new (&numeric_) NumericArray(x);
  }
  /// The same for a logical.
  void setLogical(bool x) {
    if (!holdsNothing()) [[unlikely]] reset();
    new (&numeric_) NumericArray(LogicalArray(x));
  }
  /// Becomes some scalar or nothing, so that no reference is held.
  void letGo() {
    if (!holdsNothing()) reset();
  }
  /// Becomes nothing.
  void clear() {
    if (!holdsNothing()) reset();
    setForm(Form::none);
  }
  ~Storable() {
    if (!holdsNothing()) releaseHeld();
  }

  Form form() const { return static_cast<Form>(numeric_.form_); }
  bool isArray() const { return form() <= Form::structure; }
  bool isNumeric() const { return form() == Form::numeric; }
  bool isStructure() const { return form() == Form::structure; }
  bool isFuncHandle() const { return form() == Form::funcHandle; }
  bool isLocalFunc() const { return form() == Form::localFunc; }
  bool isList() const { return form() == Form::list; }
  bool isColon() const { return form() == Form::colon; }
  bool isPositions() const { return form() == Form::positions; }
  bool isTransposed() const { return form() == Form::transposed; }
  bool isNone() const { return form() == Form::none; }
  /// Whether it is a value at all, and not one of the forms of registers.
  bool isValue() const { return form() <= Form::localFunc; }
  /// A number, a logical, a character or a complex number: nothing is held.
  bool isPlainScalar() const { return isNumeric() && holdsNothing(); }
  bool isDoubleScalar() const { return kindAndForm() == kDouble && holdsNothing(); }
  static bool areDoubleScalars(const Storable& a, const Storable& b) {
    return (a.kindAndForm() | b.kindAndForm()) == kDouble && a.holdsNothing() && b.holdsNothing();
  }
  bool isScalarOf(Kind kind) const { return isNumeric() && numeric_.is(kind) && numeric_.isScalar(); }
  double doubleScalar() const { return numeric_.asDouble().scalar(); }  ///< REQUIRES: isDoubleScalar()

  /// The numeric array inside, or null for every other form.
  const NumericArray* numeric() const { return isNumeric() ? &numeric_ : nullptr; }
  NumericArray* numeric() { return isNumeric() ? &numeric_ : nullptr; }
  const StructArray* structure() const { return isStructure() ? &structure_ : nullptr; }
  StructArray* structure() { return isStructure() ? &structure_ : nullptr; }
  const FunctionHandle* funcHandle() const { return isFuncHandle() ? &funcHandle_ : nullptr; }
  const LocalFunction* localFunc() const { return isLocalFunc() ? &localFunc_ : nullptr; }

  /// REQUIRES: isList()
  std::vector<Storable>& list() const;
  /// REQUIRES: isPositions()
  EvenPositions positions() const {
    EvenPositions positions;
    std::memcpy(&positions, numeric_.cell_.scalar_, sizeof positions);
    return positions;
  }
  /// The matrix whose transpose is meant, moved out. REQUIRES: isTransposed()
  DoubleArray takeTransposed() {
    setForm(Form::numeric);
    return std::move(numeric_).take<double>();
  }

  /// Size of an array of either sort. REQUIRES: isArray()
  const SizeVector& size() const { return isNumeric() ? numeric_.size() : structure_.size(); }
  int64_t numElements() const { return size().numElements(); }
  bool isEmpty() const { return size().hasZeroLength(); }
  /// "double (2 x 3)", "struct (1 x 1)". REQUIRES: isArray()
  std::string kindLabel() const;

 private:
  static constexpr uint16_t kDouble = 0;  // kindAndForm() of a double
  static_assert(static_cast<int>(Kind::Double) == 0);

  explicit Storable(Form form) : numeric_(0.0) { setForm(form); }
  bool holdsNothing() const { return numeric_.cell_.block_ == nullptr; }
  uint16_t kindAndForm() const {
    uint16_t both;
    std::memcpy(&both, &numeric_.kind_, sizeof both);
    return both;
  }
  // Of no array, or of one of doubles.
  void setForm(Form form) {
    const uint8_t both[] = {static_cast<uint8_t>(Kind::Double), static_cast<uint8_t>(form)};
    std::memcpy(&numeric_.kind_, both, sizeof both);
  }
  // OPTIMIZATION: in the pieces in which cells are written everywhere, for a read that spans two
  // recent writes waits for both.
  void copyBytes(const Storable& other) {
    using Pair = double __attribute__((vector_size(16), aligned(8), may_alias));
    auto* to = reinterpret_cast<char*>(this);
    const auto* from = reinterpret_cast<const char*>(&other);
    uint64_t held;
    uint16_t kindAndForm;
    std::memcpy(&held, from, sizeof held);
    const Pair scalar = *reinterpret_cast<const Pair*>(from + kScalarAt);
    std::memcpy(&kindAndForm, from + kKindAt, sizeof kindAndForm);
    std::memcpy(to, &held, sizeof held);
    *reinterpret_cast<Pair*>(to + kScalarAt) = scalar;
    std::memcpy(to + kKindAt, &kindAndForm, sizeof kindAndForm);
  }
  // What it held belongs to another cell now.
  void forget() { new (&numeric_) NumericArray(0.0); }
  void reset() noexcept {
    releaseHeld();
    forget();
  }
  // Every form begins with its one reference: to a block of elements, or to some other body.
  bool holdsBlock() const { return isNumeric() || isTransposed(); }
  CountedObject* heldObject() const {
    CountedObject* held;
    std::memcpy(&held, static_cast<const void*>(this), sizeof held);
    return held;
  }
  void retainHeld() const {
    if (holdsBlock()) numeric_.cell_.block_->retain();
    else heldObject()->retain();
  }
  void releaseHeld() const noexcept {
    if (holdsBlock()) numeric_.cell_.block_->release();
    else heldObject()->release();
  }

  union {
    NumericArray numeric_;
    StructArray structure_;
    FunctionHandle funcHandle_;
    LocalFunction localFunc_;
    Ref<StorableList> list_;
  };
};
static_assert(sizeof(EvenPositions) <= 16);
static_assert(sizeof(Storable) == 32 && sizeof(FunctionHandle) <= sizeof(ArrayCell) &&
              sizeof(LocalFunction) <= sizeof(ArrayCell));

struct StorableList : CountedObject {
  std::vector<Storable> values;
};

inline std::vector<Storable>& Storable::list() const { return list_->values; }

// ---- Of a structure

struct StructArray::Body : CountedObject {
  /// 1 x 1 without fields.
  Body() : size(1, 1), fields(FieldNames::none()) {}
  Body(const SizeVector& s, std::vector<Name> names);
  explicit Body(const Body& other)
      : CountedObject(), size(other.size), fields(other.fields), values(other.values) {}
  /// Of one element.
  Body(Ref<FieldNames> names, std::span<const Storable> of)
      : size(1, 1), fields(std::move(names)), values(of.begin(), of.end()) {}

  size_t at(int64_t element, int64_t field) const {
    return static_cast<size_t>(element) * fields->names().size() + static_cast<size_t>(field);
  }

  SizeVector size;
  Ref<FieldNames> fields;
  SmallVector<Storable> values;
};

inline const SizeVector& StructArray::size() const { return body_->size; }
inline const std::vector<Name>& StructArray::fields() const { return body_->fields->names(); }
inline int64_t StructArray::fieldIndex(Name field) const { return body_->fields->indexOf(field); }
inline const Storable& StructArray::value(int64_t element, int64_t field) const {
  return body_->values[body_->at(element, field)];
}
inline bool StructArray::isUnshared() const { return !body_->isShared(); }
inline StructArray::Body& StructArray::ownBody() {
  if (body_->isShared()) takeOwnBody();
  return *body_;
}
inline bool StructArray::addNext(Name field, const Storable& value) {
  Body& body = *body_;
  if (body.isShared() || !body.size.isScalar() || body.values.size() == body.values.capacity()) return false;
  const Ref<FieldNames>* next = body.fields->next(field);
  if (next == nullptr) return false;
  body.values.push_back(value);
  body.fields = Ref<FieldNames>(*next);
  return true;
}
inline Storable& StructArray::writableValue(int64_t element, int64_t field) {
  Body& body = ownBody();
  return body.values[body.at(element, field)];
}

}  // namespace kelo
