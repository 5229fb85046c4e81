// The guard of the visitor's bodies and the scopes of its frames: what the sources visit_*.cpp share.
#pragma once

#include "grammar/kelo_node.h"
#include "interpreter/node_details.h"
#include "interpreter/environment.h"
#include "interpreter/visitor.h"
#include "messages/fatal_fault.h"
#include "values/index.h"
#include "values/operators.h"

namespace kelo {

template <class Body>
NodeValue Visitor::guarded(KeloNode& place, const char* lastResort, Body&& body) {
  try {
    return body();
  } catch (const FatalFault&) {
    throw;
  } catch (...) {
    return failWithCurrentException(place, lastResort);
  }
}

/// The details of a node. REQUIRES: its kind is one that has them
template <class Details>
Details& detailsOf(KeloNode& node) {
  return static_cast<Details&>(*node.cache.details);
}

/// Puts a frame in the place of the running one until the scope ends.
class Visitor::FrameScope {
 public:
  FrameScope(Visitor& visitor, Frame frame) : visitor_(visitor), saved_(std::exchange(visitor.frame_, frame)) {}
  ~FrameScope() { visitor_.frame_ = saved_; }
  FrameScope(const FrameScope&) = delete;
  FrameScope& operator=(const FrameScope&) = delete;

 private:
  Visitor& visitor_;
  Frame saved_;
};

/// What `end` and ":" mean until the scope ends.
class Visitor::ExtentScope {
 public:
  ExtentScope(Visitor& visitor, int64_t extent)
      : visitor_(visitor), saved_(std::exchange(visitor.frame_.extent, extent)) {}
  ~ExtentScope() { visitor_.frame_.extent = saved_; }
  ExtentScope(const ExtentScope&) = delete;
  ExtentScope& operator=(const ExtentScope&) = delete;

 private:
  Visitor& visitor_;
  int64_t saved_;
};

/// The subscripts of one index expression. One or two scalars stay plain numbers; anything else is a list of indices.
struct Visitor::Subscripts {
  int count = 0;
  double numbers[2] = {};
  std::vector<Index> list;

  bool areNumbers() const { return list.empty() && count <= 2; }
  std::span<const Index> indices() {
    spill(count);
    return list;
  }
  /// Brings the first `soFar` numbers into the list.
  void spill(int soFar) {
    if (!list.empty()) return;
    list.reserve(static_cast<size_t>(count));
    for (int k = 0; k < soFar; ++k) list.push_back(Index::from(Storable(numbers[k])));
  }
};

}  // namespace kelo
