// Points that never change once they are made, so that copies of a figure share them.
//
// A copy of a figure is cheap for that reason, whatever it holds: what draws, saves or answers
// takes one and works on it while a run goes on. identity() tells two sets of points apart, for
// what is computed once per set.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/parallel.h"

namespace kelo::figures {

template <class T>
class SharedPoints {
 public:
  SharedPoints() = default;
  SharedPoints(std::vector<T> points) : size_(static_cast<int64_t>(points.size())) {
    const auto owner = std::make_shared<const std::vector<T>>(std::move(points));
    points_ = std::shared_ptr<const T>(owner, owner->data());
  }
  SharedPoints(std::initializer_list<T> points) : SharedPoints(std::vector<T>(points)) {}
  /// So many points, which `point(i)` gives; it may be asked on several threads and must not throw.
  template <class F>
  static SharedPoints made(int64_t count, F&& point) {
    const auto owner = std::make_shared_for_overwrite<T[]>(static_cast<size_t>(count));
    T* const points = owner.get();
    platform::parallelFor(count, [&point, points](int64_t begin, int64_t end) {
      for (int64_t i = begin; i < end; ++i) points[i] = point(i);
    });
    SharedPoints result;
    result.points_ = std::shared_ptr<const T>(owner, owner.get());
    result.size_ = count;
    return result;
  }

  int64_t size() const { return size_; }
  bool isEmpty() const { return size_ == 0; }
  const T& operator[](int64_t i) const { return points_.get()[i]; }
  std::span<const T> values() const { return {points_.get(), static_cast<size_t>(size_)}; }
  const T* begin() const { return points_.get(); }
  const T* end() const { return begin() + size_; }
  /// The same for copies, and for nothing else with points that lives at the same time.
  const void* identity() const { return points_.get(); }

  friend bool operator==(const SharedPoints& a, const SharedPoints& b) {
    return a.size_ == b.size_ && (a.points_ == b.points_ || std::equal(a.begin(), a.end(), b.begin()));
  }

 private:
  std::shared_ptr<const T> points_;  // the first of them
  int64_t size_ = 0;
};

}  // namespace kelo::figures
