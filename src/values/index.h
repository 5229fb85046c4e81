// Index: one subscript of an index expression, checked and prepared.
//
// Positions count from 0 here. A subscript takes the cheapest of four forms: a range of
// neighbouring positions (a single position, a bare colon, `2:5`, and any array that happens to
// count up by one), even steps (`1:2:9`, and any array of that kind), a list of positions, or a
// logical mask. Only a list needs memory of its own. The shape is that of the subscript's array,
// for it decides the shape of what is read; a mask has the shape of its positions: a row if the
// mask is a row, else a column.
//
// Invariant: needed() is the greatest position plus 1, and 0 when nothing is selected.
#pragma once

#include "values/numeric_array.h"

namespace kelo {

class Storable;
struct EvenPositions;

class Index {
 public:
  enum class Form : uint8_t { range, steps, list, mask };

  /// One position, from 0.
  static Index one(int64_t position) { return Index(position, 1, SizeVector(1, 1)); }
  /// `count` neighbouring positions as a row.
  static Index range(int64_t first, int64_t count) { return Index(first, count, SizeVector(1, count)); }
  static Index even(const EvenPositions& positions);
  /// ":" over a dimension, or over all elements, of this length: a row of positions, 0 x 0 when
  /// there are none.
  static Index colon(int64_t extent);
  /// Positions from 0, in the shape of the array. REQUIRES: none is negative
  static Index list(IntArray positions);
  /// Any value as a subscript, counted from 1. throws Problem when it is no numeric array, or when
  /// an element is not a positive whole number; FatalFault for a finite element past 64 bits
  static Index from(const Storable& subscript);

  Form form() const { return form_; }
  bool isColon() const { return isColon_; }
  bool isOne() const { return form_ == Form::range && count_ == 1; }
  int64_t count() const { return count_; }
  int64_t needed() const { return needed_; }
  /// The first of a range or of steps. REQUIRES: form() is one of these
  int64_t first() const { return first_; }
  /// From one position to the next: 1 in a range. REQUIRES: as first()
  int64_t step() const { return step_; }
  /// The mask. REQUIRES: form() == Form::mask
  const LogicalArray& mask() const { return elements_.asLogical(); }
  /// The positions; null for a range. A mask or steps become a list.
  const int64_t* positions() const;
  const SizeVector& shape() const { return shape_; }
  /// Whether the selection is a vector in the sense of the reading rule: its first or its second
  /// length is 1.
  bool isVector() const { return shape_.rows() == 1 || shape_.columns() == 1; }

 private:
  Index(int64_t first, int64_t count, SizeVector shape)
      : first_(first), count_(count), needed_(count == 0 ? 0 : first + count), shape_(std::move(shape)) {}
  static Index list(IntArray positions, int64_t needed);
  static Index steps(int64_t first, int64_t step, int64_t count, SizeVector shape);
  static std::optional<Index> evenlyFrom(double first, double step, const SizeVector& shape);
  static Index fromDoubles(const DoubleArray& subscripts);
  static Index fromIntegers(const IntArray& subscripts);
  static Index fromMask(const LogicalArray& mask);

  int64_t first_;
  int64_t count_;
  int64_t needed_;
  int64_t step_ = 1;
  SizeVector shape_;
  mutable NumericArray elements_{DoubleArray(0.0)};  // the list (int) or the mask (logical)
  mutable Form form_ = Form::range;
  bool isColon_ = false;
};

}  // namespace kelo
