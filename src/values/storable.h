// Storable: what a variable, a field or an argument holds: an array (numeric or of structures), a
// function handle or a local function.
//
// A Storable is one small cell. A numeric scalar lies in it whole; anything else is a counted
// reference, so a copy is cheap, and a write to what is shared copies first. What was moved from is
// some numeric array.
//
// The registers of the machine are Storables too. Only they know the last three forms: several
// values at once, a bare ":" among subscripts, and nothing (a variable that is not there, the
// result of a call without one). None of these is ever kept in a structure or a workspace.
#pragma once

#include "values/function_handle.h"
#include "values/numeric_array.h"
#include "values/struct_array.h"

namespace kelo {

class Storable;

/// Several values at once: the outputs of a function, the fields of a structure array.
struct StorableList;

class Storable {
 public:
  enum class Form : uint8_t { numeric, structure, funcHandle, localFunc, list, colon, none };

  Storable() : numeric_() {}  ///< double 0 x 0
  Storable(NumericArray array) : numeric_(std::move(array)) {}
  template <class T> Storable(TypedArray<T> array) : numeric_(std::move(array)) {}
  Storable(StructArray array) : structure_(std::move(array)), form_(Form::structure) {}
  Storable(FunctionHandle handle) : funcHandle_(std::move(handle)), form_(Form::funcHandle) {}
  Storable(LocalFunction function) : localFunc_(std::move(function)), form_(Form::localFunc) {}
  explicit Storable(double x) : numeric_(DoubleArray(x)) {}
  /// Of the forms that only registers have.
  static Storable listOf(std::vector<Storable> values);
  static Storable colon() { return Storable(Form::colon); }
  static Storable none() { return Storable(Form::none); }

  Storable(const Storable& other) : form_(other.form_) {
    if (isNumeric()) new (&numeric_) NumericArray(other.numeric_);
    else copyOther(other);
  }
  Storable(Storable&& other) noexcept : form_(other.form_) {
    if (isNumeric()) new (&numeric_) NumericArray(std::move(other.numeric_));
    else moveOther(std::move(other));
  }
  Storable& operator=(const Storable& other) {
    if (isNumeric() && other.isNumeric()) numeric_ = other.numeric_;
    else *this = Storable(other);
    return *this;
  }
  Storable& operator=(Storable&& other) noexcept {
    if (isNumeric() && other.isNumeric()) {
      numeric_ = std::move(other.numeric_);
    } else if (this != &other) {
      Storable taken(std::move(other));  // which may lie inside this value, as in s = s.field
      this->~Storable();
      new (this) Storable(std::move(taken));
    }
    return *this;
  }
  /// Becomes a number; cheaper than the assignment of one that was made before.
  void setNumber(double x) {
    if (!isPlainScalar()) [[unlikely]] reset();
    new (&numeric_) NumericArray(x);
  }
  /// The same for a logical.
  void setLogical(bool x) {
    if (!isPlainScalar()) [[unlikely]] reset();
    new (&numeric_) NumericArray(LogicalArray(x));
  }
  /// Becomes a copy; cheaper than the assignment where both are scalars.
  void setCopyOf(const Storable& other) {
    if (isPlainScalar() && other.isPlainScalar()) [[likely]] std::memcpy(static_cast<void*>(this), &other, sizeof *this);
    else *this = other;
  }
  /// Becomes nothing.
  void clear() {
    if (!isPlainScalar()) reset();
    form_ = Form::none;
  }
  ~Storable() {
    if (isNumeric()) numeric_.~NumericArray();
    else destroyOther();
  }

  Form form() const { return form_; }
  bool isArray() const { return form_ <= Form::structure; }
  bool isNumeric() const { return form_ == Form::numeric; }
  bool isStructure() const { return form_ == Form::structure; }
  bool isFuncHandle() const { return form_ == Form::funcHandle; }
  bool isLocalFunc() const { return form_ == Form::localFunc; }
  bool isList() const { return form_ == Form::list; }
  bool isColon() const { return form_ == Form::colon; }
  bool isNone() const { return form_ == Form::none; }
  /// Whether it is a value at all, and not one of the forms of registers.
  bool isValue() const { return form_ <= Form::localFunc; }
  /// A number, a logical, a character or a complex number: nothing is held.
  bool isPlainScalar() const { return isNumeric() && numeric_.isScalar(); }
  bool isDoubleScalar() const { return isNumeric() && numeric_.isDoubleScalar(); }
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

  /// Size of an array of either sort. REQUIRES: isArray()
  const SizeVector& size() const { return isNumeric() ? numeric_.size() : structure_.size(); }
  int64_t numElements() const { return size().numElements(); }
  bool isEmpty() const { return size().hasZeroLength(); }
  /// "double (2 x 3)", "struct (1 x 1)". REQUIRES: isArray()
  std::string kindLabel() const;

 private:
  explicit Storable(Form form) : numeric_(0.0), form_(form) {}
  void reset() noexcept {
    this->~Storable();
    new (this) Storable(0.0);
  }
  void copyOther(const Storable& other);
  void moveOther(Storable&& other) noexcept;
  void destroyOther() noexcept;

  union {
    NumericArray numeric_;
    StructArray structure_;
    FunctionHandle funcHandle_;
    LocalFunction localFunc_;
    Ref<StorableList> list_;
  };
  Form form_ = Form::numeric;
};

struct StorableList : CountedObject {
  std::vector<Storable> values;
};

inline std::vector<Storable>& Storable::list() const { return list_->values; }

}  // namespace kelo
