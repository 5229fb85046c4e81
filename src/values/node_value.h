// NodeValue: what a built-in gives: a value, several (Storable::listOf), nothing (Storable::none),
// or a failure, which says that the error has been shown already, so that everybody returns without
// a further word.
#pragma once

#include <vector>

#include "values/storable.h"

namespace kelo {

class NodeValue {
 public:
  NodeValue(Storable value) : value_(std::move(value)) {}
  template <class T> NodeValue(TypedArray<T> array) : value_(std::move(array)) {}
  NodeValue(NumericArray array) : value_(std::move(array)) {}
  explicit NodeValue(double x) : value_(x) {}
  explicit NodeValue(int64_t n) : value_(IntArray(n)) {}
  explicit NodeValue(ComplexDouble z) : value_(ComplexDoubleArray(z)) {}
  static NodeValue listOf(std::vector<Storable> values) { return Storable::listOf(std::move(values)); }
  static NodeValue nothing() { return Storable::none(); }
  static NodeValue failure() {
    NodeValue result = nothing();
    result.isFailure_ = true;
    return result;
  }

  bool isFailure() const { return isFailure_; }
  Storable& storable() { return value_; }  ///< of a failure: nothing
  const Storable& storable() const { return value_; }

 private:
  Storable value_;
  bool isFailure_ = false;
};

}  // namespace kelo
