// Points that never change once they are made, so that copies of a figure share them.
//
// A copy of a figure is cheap for that reason, whatever it holds: what draws, saves or answers takes one and works on it
// while a run goes on. identity() tells two sets of points apart, for what is computed once per set.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace kelo::figures {

template <class T>
class SharedPoints {
 public:
  SharedPoints() = default;
  SharedPoints(std::vector<T> points)
      : points_(points.empty() ? nullptr : std::make_shared<const std::vector<T>>(std::move(points))) {}
  SharedPoints(std::initializer_list<T> points) : SharedPoints(std::vector<T>(points)) {}

  int64_t size() const { return points_ ? static_cast<int64_t>(points_->size()) : 0; }
  bool isEmpty() const { return points_ == nullptr; }
  const T& operator[](int64_t i) const { return (*points_)[static_cast<size_t>(i)]; }
  std::span<const T> values() const { return points_ ? std::span<const T>(*points_) : std::span<const T>(); }
  const T* begin() const { return values().data(); }
  const T* end() const { return begin() + size(); }
  /// The same for copies and for nothing else that lives at the same time; null without points.
  const void* identity() const { return points_.get(); }

  friend bool operator==(const SharedPoints& a, const SharedPoints& b) {
    return a.points_ == b.points_ || (a.points_ && b.points_ && *a.points_ == *b.points_);
  }

 private:
  std::shared_ptr<const std::vector<T>> points_;  // null: none
};

}  // namespace kelo::figures
