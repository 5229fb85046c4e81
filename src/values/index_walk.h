// IndexWalk: the positions that subscripts select in an array, as runs along one axis.
//
// Subscripts of one position only shift the start. Neighbouring ranges join where the earlier one
// takes its whole dimension, so that A(:, :, k) or A(:, 2:5) is one run of contiguous elements.
// What is left are the axes: the innermost is the run, and the others are stepped through like the
// wheels of a counter. Reading, writing, growth and deletion all walk so.
#pragma once

#include <algorithm>
#include <span>
#include <vector>

#include "messages/fatal_fault.h"
#include "platform/parallel.h"
#include "values/index.h"

namespace kelo {

struct IndexAxis {
  int64_t stride;       ///< elements between positions that are neighbours along the axis; may be negative
  int64_t first;        ///< of a range
  int64_t count;        ///< positions selected
  const int64_t* list;  ///< the positions; null for a range
  int64_t at(int64_t k) const { return (list ? list[k] : first + k) * stride; }
};

class IndexWalk {
 public:
  /// lengths  of the dimensions, one per subscript
  /// REQUIRES: each subscript is within its length; the indices outlive the walk
  IndexWalk(std::span<const int64_t> lengths, std::span<const Index> indices);

  /// The elements of an array of size `part` where they stand in a larger one. REQUIRES: no length
  /// is greater
  IndexWalk(const SizeVector& whole, const SizeVector& part);

  int64_t count() const { return count_; }
  const IndexAxis& run() const { return axes_.front(); }
  /// Whether the elements lie side by side in memory, from first() on.
  bool isContiguous() const { return axes_.size() == 1 && run().list == nullptr && run().stride == 1; }
  int64_t first() const { return start_ + run().at(0); }

  /// Calls f(start, done) for each run: where it starts in the array, and how many positions came
  /// before it.
  template <class F>
  void forEachRun(F&& f) const {
    forRuns(0, runs(), f);
  }
  /// The same with the runs split over the cores. The function must not throw.
  template <class F>
  void forEachRunSideBySide(F&& f) const {
    platform::parallelForUnits(runs(), run().count, [&](int64_t begin, int64_t end) { forRuns(begin, end, f); });
  }
  /// Whether no position is meant more than once; false where it would have to be looked for.
  bool isPlainlyOneToOne() const;

 private:
  void add(int64_t stride, int64_t length, const Index& index);
  int64_t runs() const { return count_ == 0 ? 0 : count_ / run().count; }
  template <class F>
  void forRuns(int64_t begin, int64_t end, F&& f) const;

  std::vector<IndexAxis> axes_;
  int64_t start_ = 0;
  int64_t count_ = 1;
  bool whole_ = true;  // whether the last axis is a range over all of its dimensions
};

inline IndexWalk::IndexWalk(std::span<const int64_t> lengths, std::span<const Index> indices) {
  axes_.reserve(indices.size());
  int64_t stride = 1;
  for (size_t k = 0; k < indices.size(); ++k) {
    add(stride, lengths[k], indices[k]);
    count_ = checkedMultiply(count_, indices[k].count());
    stride *= lengths[k];
  }
  if (axes_.empty()) axes_.push_back({1, 0, 1, nullptr});
}

inline IndexWalk::IndexWalk(const SizeVector& whole, const SizeVector& part) {
  int64_t stride = 1;
  for (int64_t d = 1; d <= part.count(); ++d) {
    add(stride, whole.dimensionLength(d), Index::range(0, part.dimensionLength(d)));
    stride *= whole.dimensionLength(d);
  }
  count_ = part.numElements();
  if (axes_.empty()) axes_.push_back({1, 0, 1, nullptr});
}

inline void IndexWalk::add(int64_t stride, int64_t length, const Index& index) {
  if (index.form() == Index::Form::steps) {
    start_ += index.first() * stride;
    axes_.push_back({stride * index.step(), 0, index.count(), nullptr});
    whole_ = false;
    return;
  }
  const int64_t* list = index.positions();
  const bool isWhole = list == nullptr && index.count() == length;
  const bool isSingle = index.count() == 1 && length != 1;
  const int64_t first = list ? 0 : index.first();
  if (index.count() == 1 && length == 1) return;
  if (list == nullptr && whole_ && !axes_.empty() && !isSingle) {  // joins whole ones before it
    IndexAxis& last = axes_.back();
    last.first = first * last.count;
    last.count *= index.count();
  } else if (isSingle) {
    start_ += (list ? list[0] : first) * stride;
  } else {
    axes_.push_back({stride, first, index.count(), list});
  }
  whole_ = whole_ && isWhole;
}

inline bool IndexWalk::isPlainlyOneToOne() const {
  return std::all_of(axes_.begin(), axes_.end(), [](const IndexAxis& axis) {
    return axis.list == nullptr && (axis.stride != 0 || axis.count == 1);
  });
}

template <class F>
void IndexWalk::forRuns(int64_t begin, int64_t end, F&& f) const {
  if (begin >= end) return;
  if (axes_.size() == 1) return f(start_, int64_t{0});
  std::vector<int64_t> wheel(axes_.size(), 0);
  for (size_t k = 1, rest = static_cast<size_t>(begin); k < axes_.size() && rest > 0; ++k) {
    wheel[k] = static_cast<int64_t>(rest) % axes_[k].count;
    rest /= static_cast<size_t>(axes_[k].count);
  }
  for (int64_t done = begin; done < end; ++done) {
    int64_t start = start_;
    for (size_t k = 1; k < axes_.size(); ++k) start += axes_[k].at(wheel[k]);
    f(start, done * run().count);
    for (size_t k = 1; k < axes_.size() && ++wheel[k] == axes_[k].count; ++k) wheel[k] = 0;
  }
}

}  // namespace kelo
