// Loops over the elements of one or two arrays: the one shape that every element-wise function has.
//
// Three things are kept apart: a scalar function f, the loop here, and the operation that picks
// kinds and calls it. The loop pairs the operands by implicit expansion, never replicating: an
// operand whose length is 1 where the other's is more is read with stride 0. Every run along memory
// is then one of three plain loops (array with array, scalar with array, array with scalar), which
// the compiler vectorises. An operand that is a temporary (given by value, its block held by nobody
// else) and has the element type and the size of the result receives the result.
//
// A function that is noexcept may run on several cores for large arrays; one that may throw runs on
// the caller's thread, in storage order, so that the first failing element decides the error.
#pragma once

#include <optional>
#include <type_traits>
#include <utility>

#include "platform/parallel.h"
#include "values/numeric_array.h"

namespace kelo {

/// Size of the result of an element-wise operation on operands of these sizes: that of the expanded
/// left one.
///
/// An empty operand goes with a scalar or with another empty. NOTE: intended: an empty left operand
/// keeps its size, a scalar left of an empty right operand gives 0 x 0, and two empties of
/// different sizes give the left one's.
/// throws Problem "Incompatible array sizes"
SizeVector expandedSize(const SizeVector& a, const SizeVector& b);
/// The same; absent where that throws.
std::optional<SizeVector> expandedSizeIfAny(const SizeVector& a, const SizeVector& b);

namespace loops {

/// How two operands of different sizes, neither a scalar, pair off: runs of equal stride along
/// memory.
/// Invariant: stride[k] is 0 where the operand repeats; dimensions that both walk alike are joined
/// into one.
class Broadcast {
 public:
  /// REQUIRES: the sizes expand to `size`, which is not empty
  Broadcast(const SizeVector& a, const SizeVector& b, const SizeVector& size);

  int64_t runLength() const { return dimensions_[0].length; }
  int64_t runCount() const { return runCount_; }
  int64_t innerStrideA() const { return dimensions_[0].strideA; }  ///< 0 or 1
  int64_t innerStrideB() const { return dimensions_[0].strideB; }

  /// Calls run(out, a, b) with the offsets of the runs `begin` to `end` - 1 in order.
  template <class Run>
  void forRuns(int64_t begin, int64_t end, Run&& run) const;

 private:
  struct Dimension {
    int64_t length, strideA, strideB;
  };
  struct Place {  // of a run
    std::vector<int64_t> subscripts;
    int64_t a = 0, b = 0;
  };
  Place placeOf(int64_t run) const;
  void advance(Place& place) const;

  std::vector<Dimension> dimensions_;
  int64_t runCount_ = 1;
};

template <class Run>
void Broadcast::forRuns(int64_t begin, int64_t end, Run&& run) const {
  Place place = placeOf(begin);
  for (int64_t k = begin; k < end; ++k) {
    run(k * runLength(), place.a, place.b);
    advance(place);
  }
}

/// body(begin, end) for all of 0 to count - 1: on several cores where that is allowed and worth it.
template <bool kParallel, class Body>
void forPieces(int64_t count, Body&& body) {
  if constexpr (kParallel)
    platform::parallelFor(count, body);
  else
    body(int64_t{0}, count);
}

// The three plain loops. `out` may be the very array that is read, element by element, which is no
// dependence between iterations: the pragma says so. A scalar operand is passed by value.
template <class R, class A, class B, class F>
inline void loopBoth(R* out, const A* a, const B* b, int64_t n, F& f) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) out[i] = f(a[i], b[i]);
}
template <class R, class A, class B, class F>
inline void loopScalarLeft(R* out, A a, const B* b, int64_t n, F& f) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) out[i] = f(a, b[i]);
}
template <class R, class A, class B, class F>
inline void loopScalarRight(R* out, const A* a, B b, int64_t n, F& f) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) out[i] = f(a[i], b);
}

template <bool kParallel, class R, class A, class B, class F>
void runBroadcast(R* out, const A* a, const B* b, const Broadcast& plan, F& f) {
  const int64_t n = plan.runLength();
  const auto runs = [&](int64_t begin, int64_t end) {
    plan.forRuns(begin, end, [&](int64_t o, int64_t i, int64_t j) {
      if (plan.innerStrideA() == 0)
        loopScalarLeft(out + o, a[i], b + j, n, f);
      else if (plan.innerStrideB() == 0)
        loopScalarRight(out + o, a + i, b[j], n, f);
      else
        loopBoth(out + o, a + i, b + j, n, f);
    });
  };
  if constexpr (kParallel)
    platform::parallelForUnits(plan.runCount(), n, runs);
  else
    runs(int64_t{0}, plan.runCount());
}

/// Fills `out`, whose size is the expanded one and not empty. REQUIRES: out is neither operand, or
/// that operand's size is the result's
template <class R, class A, class B, class F>
void fillBinary(R* out, const SizeVector& size, const TypedArray<A>& a, const TypedArray<B>& b, F& f) {
  constexpr bool kParallel = std::is_nothrow_invocable_v<F&, A, B>;
  const A* x = a.data();
  const B* y = b.data();
  if (a.size() == b.size()) {
    forPieces<kParallel>(size.numElements(), [&](int64_t i, int64_t j) { loopBoth(out + i, x + i, y + i, j - i, f); });
  } else if (a.isScalar()) {
    forPieces<kParallel>(size.numElements(),
                         [&](int64_t i, int64_t j) { loopScalarLeft(out + i, *x, y + i, j - i, f); });
  } else if (b.isScalar()) {
    forPieces<kParallel>(size.numElements(),
                         [&](int64_t i, int64_t j) { loopScalarRight(out + i, x + i, *y, j - i, f); });
  } else {
    runBroadcast<kParallel>(out, x, y, Broadcast(a.size(), b.size(), size), f);
  }
}

template <class R, class T>
bool canHoldResult(const TypedArray<T>& operand, const SizeVector& size) {
  return std::is_same_v<R, T> && operand.isUnshared() && operand.size() == size;
}

}  // namespace loops

/// f applied to the pairs of elements of two arrays, with implicit expansion. The kind of the
/// result is f's.
///
/// throws Problem "Incompatible array sizes", and what f throws
template <class A, class B, class F>
auto binaryLoop(TypedArray<A> a, TypedArray<B> b, F f) -> TypedArray<std::invoke_result_t<F&, A, B>> {
  using R = std::invoke_result_t<F&, A, B>;
  if (a.isScalar() && b.isScalar()) return TypedArray<R>(f(a.scalar(), b.scalar()));
  const SizeVector size = expandedSize(a.size(), b.size());
  if (size.hasZeroLength()) return TypedArray<R>::uninitialized(size);
  if constexpr (std::is_same_v<R, A>) {
    if (loops::canHoldResult<R>(a, size)) {
      loops::fillBinary(a.writable(), size, a, b, f);
      return a;
    }
  }
  if constexpr (std::is_same_v<R, B>) {
    if (loops::canHoldResult<R>(b, size)) {
      loops::fillBinary(b.writable(), size, a, b, f);
      return b;
    }
  }
  auto result = TypedArray<R>::uninitialized(size);
  loops::fillBinary(result.writable(), size, a, b, f);
  return result;
}

/// f applied to each element. The kind of the result is f's; the size stays. throws what f throws
template <class A, class F>
auto unaryLoop(TypedArray<A> a, F f) -> TypedArray<std::invoke_result_t<F&, A>> {
  using R = std::invoke_result_t<F&, A>;
  constexpr bool kParallel = std::is_nothrow_invocable_v<F&, A>;
  if (a.isScalar()) return TypedArray<R>(f(a.scalar()));
  const auto fill = [&](R* out, const A* in) {
    loops::forPieces<kParallel>(a.numElements(), [&](int64_t begin, int64_t end) {
#pragma GCC ivdep
      for (int64_t i = begin; i < end; ++i) out[i] = f(in[i]);
    });
  };
  if constexpr (std::is_same_v<R, A>) {
    if (a.isUnshared() && !a.isEmpty()) {
      A* own = a.writable();
      fill(own, own);
      return a;
    }
  }
  auto result = TypedArray<R>::uninitialized(a.size());
  fill(result.writable(), a.data());
  return result;
}

}  // namespace kelo
