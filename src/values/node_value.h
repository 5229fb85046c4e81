// NodeValue: what every visit of a node gives back.
//
// `failure` says that the error has been shown already: everything up the tree returns it without a further word. The
// last three carry the control flow of statements. None of these four may ever be stored.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "values/storable.h"

namespace kelo {

class NodeValue {
 public:
  enum class Form : uint8_t { storable, arrayList, void_, failure, breakValue, continueValue, returnValue };

  /// Several values at once. The outputs of a built-in or a function stand in `list`, in order, without a `first`.
  struct ArrayList {
    std::optional<Storable> first;
    std::vector<Storable> list;
  };

  NodeValue(Form form) : storable_(0.0), form_(form) {}  ///< REQUIRES: neither storable nor arrayList
  NodeValue(Storable value) : storable_(std::move(value)), form_(Form::storable) {}
  template <class T> NodeValue(TypedArray<T> array) : storable_(std::move(array)), form_(Form::storable) {}
  NodeValue(NumericArray array) : storable_(std::move(array)), form_(Form::storable) {}
  explicit NodeValue(double x) : storable_(x), form_(Form::storable) {}
  explicit NodeValue(int64_t n) : storable_(IntArray(n)), form_(Form::storable) {}
  explicit NodeValue(ComplexDouble z) : storable_(ComplexDoubleArray(z)), form_(Form::storable) {}
  NodeValue(ArrayList list)
      : storable_(0.0), list_(std::make_unique<ArrayList>(std::move(list))), form_(Form::arrayList) {}
  static NodeValue listOf(std::vector<Storable> values) { return ArrayList{std::nullopt, std::move(values)}; }
  static NodeValue nothing() { return Form::void_; }
  static NodeValue failure() { return Form::failure; }

  Form form() const { return form_; }
  bool isStorable() const { return form_ == Form::storable; }
  bool isArrayList() const { return form_ == Form::arrayList; }
  bool isVoid() const { return form_ == Form::void_; }
  bool isFailure() const { return form_ == Form::failure; }

  Storable& storable() { return storable_; }  ///< REQUIRES: isStorable()
  const Storable& storable() const { return storable_; }
  ArrayList& arrayList() { return *list_; }  ///< REQUIRES: isArrayList()
  const ArrayList& arrayList() const { return *list_; }

  /// The numeric array of a storable; null for every other form.
  NumericArray* numericArray() { return isStorable() ? storable_.numeric() : nullptr; }
  const NumericArray* numericArray() const { return isStorable() ? storable_.numeric() : nullptr; }

 private:
  Storable storable_;
  std::unique_ptr<ArrayList> list_;
  Form form_;
};

}  // namespace kelo
