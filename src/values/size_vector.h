// The lengths of an array's dimensions.
//
// At least two lengths are held. They are kept as given, so they may end in 1s; `ndim` says how
// many of them count: up to the last one that is not 1, and never fewer than two. "Empty" means
// throughout the system that some length is 0. Two sizes are equal when the lengths that count are
// equal. Element (s1, s2, ...) of an array, counted from 0, stands at s1 + s2*d1 + s3*d1*d2 + ...:
// column-major order.
//
// Two lengths are held inline; more are held on the heap, so that a matrix's size never allocates.
// Invariant: numElements() == product of vec(); 2 <= ndim() <= count().
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "messages/fatal_fault.h"

namespace kelo {

class SizeVector {
 public:
  /// 0 x 0.
  SizeVector() noexcept : SizeVector(0, 0) {}
  /// rows x columns. throws FatalFault when the product passes 64 bits
  SizeVector(int64_t rows, int64_t columns)
      : inline_{rows, columns}, numElements_(checkedMultiply(rows, columns)), count_(2), ndim_(2) {}
  /// Any number of lengths. throws Problem for fewer than two; FatalFault when the product passes
  /// 64 bits
  explicit SizeVector(std::span<const int64_t> vec);
  SizeVector(std::initializer_list<int64_t> vec) : SizeVector(std::span<const int64_t>(vec.begin(), vec.size())) {}

  SizeVector(const SizeVector& other)
      : inline_{other.inline_[0], other.inline_[1]},
        numElements_(other.numElements_),
        count_(other.count_),
        ndim_(other.ndim_) {
    if (other.more_) [[unlikely]] copyMore(other);
  }
  SizeVector(SizeVector&& other) noexcept
      : inline_{other.inline_[0], other.inline_[1]},
        more_(std::exchange(other.more_, nullptr)),
        numElements_(other.numElements_),
        count_(other.count_),
        ndim_(other.ndim_) {
    if (more_) [[unlikely]] other = SizeVector();
  }
  SizeVector& operator=(const SizeVector& other) { return *this = SizeVector(other); }
  SizeVector& operator=(SizeVector&& other) noexcept {
    std::swap(inline_, other.inline_);
    std::swap(more_, other.more_);
    std::swap(numElements_, other.numElements_);
    std::swap(count_, other.count_);
    std::swap(ndim_, other.ndim_);
    return *this;
  }
  ~SizeVector() {
    if (more_) [[unlikely]] delete[] more_;
  }

  static SizeVector scalar() { return {1, 1}; }

  std::span<const int64_t> vec() const { return {more_ ? more_ : inline_, static_cast<size_t>(count_)}; }
  int64_t count() const { return count_; }  ///< entries of vec()
  int64_t ndim() const { return ndim_; }
  int64_t numElements() const { return numElements_; }
  int64_t rows() const { return more_ ? more_[0] : inline_[0]; }
  int64_t columns() const { return more_ ? more_[1] : inline_[1]; }

  bool hasZeroLength() const { return numElements_ == 0; }
  bool isScalar() const { return numElements_ == 1 && ndim_ == 2; }
  bool isMatrix() const { return ndim_ == 2; }
  bool isRow() const { return ndim_ == 2 && rows() == 1; }       ///< 1 x n, n may be 0
  bool isColumn() const { return ndim_ == 2 && columns() == 1; }  ///< n x 1, n may be 0
  bool isVector() const { return isRow() || isColumn(); }

  /// Length of the dimension d, counted from 1; 1 past the last entry.
  int64_t dimensionLength(int64_t d) const { return d <= count_ ? vec()[static_cast<size_t>(d - 1)] : 1; }
  /// The dimension that reductions run along unless one is given: the first whose length is not 1,
  /// else 1.
  int64_t defaultDimension() const;
  /// Elements between neighbours along dimension d (from 1): the product of the lengths before it.
  int64_t strideOf(int64_t d) const;

  /// The same lengths without the 1s after ndim.
  SizeVector trimmed() const {
    return count_ == ndim_ ? *this : SizeVector(vec().first(static_cast<size_t>(ndim_)));
  }
  /// The same lengths with dimension d (from 1) set to `length`; shorter sizes are filled with 1s.
  SizeVector withDimension(int64_t d, int64_t length) const;
  /// The lengths brought to exactly n >= 1 entries: filled with 1s, or the trailing ones multiplied
  /// into the last.
  std::vector<int64_t> broughtTo(int64_t n) const;

  /// "2 x 3", of the lengths that count.
  std::string description() const;

  friend bool operator==(const SizeVector& a, const SizeVector& b) {
    if (a.ndim_ != b.ndim_ || a.numElements_ != b.numElements_) return false;
    if (a.ndim_ == 2) return a.rows() == b.rows() && a.columns() == b.columns();
    return std::equal(a.vec().begin(), a.vec().begin() + a.ndim_, b.vec().begin());
  }

 private:
  void assign(const int64_t* lengths, int64_t count);
  void copyMore(const SizeVector& other);

  int64_t inline_[2];
  int64_t* more_ = nullptr;  // all lengths, when there are more than two
  int64_t numElements_;
  int32_t count_;
  int32_t ndim_;
};

}  // namespace kelo
