// What the element-wise functions share beyond values/elementwise.h: whole-array routines run block
// by block, the scan that decides whether an array stays on the real path, and the way to the
// complex functions of the C library.
#pragma once

#include <atomic>
#include <complex>
#include <optional>

#include "builtins/elementwise/domain.h"
#include "platform/parallel.h"
#include "values/elementwise.h"

namespace kelo::builtins {

/// Elements that several steps are carried through before the next ones are fetched: two blocks fit
/// into the cache.
inline constexpr int64_t kBlock = 1024;

/// steps(y, x, n) for all elements, block by block and on several cores for large arrays; in place
/// where the memory is free.
/// REQUIRES: steps does not throw and treats each element alone; y may be x
template <class Steps>
DoubleArray mapBlocks(DoubleArray a, const Steps& steps) {
  const auto fill = [&](double* y, const double* x) {
    platform::parallelFor(a.numElements(), [&steps, y, x](int64_t begin, int64_t end) {
      for (int64_t i = begin; i < end; i += kBlock) steps(y + i, x + i, std::min(kBlock, end - i));
    });
  };
  if (a.isEmpty()) return a;
  if (a.isUnshared()) {
    double* own = a.writable();
    fill(own, own);
    return a;
  }
  auto result = DoubleArray::uninitialized(a.size());
  fill(result.writable(), a.data());
  return result;
}

template <class Predicate>
bool anyOf(const double* x, int64_t n, Predicate holds) {
  int64_t some = 0;  // as wide as an element, so that the loop vectorises
  for (int64_t i = 0; i < n; ++i) some |= static_cast<int64_t>(holds(x[i]));
  return some != 0;
}

/// visit(begin, count) for the blocks of a large loop, on several cores, until one of them answers
/// true: whether one did.
template <class Visit>
bool anyBlock(int64_t count, const Visit& visit) {
  std::atomic<bool> found = false;
  platform::parallelFor(count, [&](int64_t begin, int64_t end) {
    for (int64_t i = begin; i < end && !found.load(std::memory_order_relaxed); i += kBlock) {
      if (visit(i, std::min(kBlock, end - i))) found.store(true, std::memory_order_relaxed);
    }
  });
  return found;
}

/// Whether `holds` is true of some element. REQUIRES: holds does not throw
template <class Predicate>
bool anyElement(const DoubleArray& a, Predicate holds) {
  const double* x = a.data();
  return anyBlock(a.numElements(), [=](int64_t begin, int64_t n) { return anyOf(x + begin, n, holds); });
}

/// mapBlocks, unless some element lies outside: then nothing, and the array is as it was.
///
/// OPTIMIZATION: a block is looked at while it is in the cache; only where the result takes the
/// place of the argument must all of it be looked at before.
template <class Steps>
std::optional<DoubleArray> mapInside(DoubleArray& a, Domain domain, const Steps& steps) {
  const double* x = a.data();
  if (a.isUnshared() || a.isEmpty() || domain == Domain::everywhere) {
    const auto isOutside = [=](int64_t begin, int64_t n) { return anyOutside(domain, x + begin, n); };
    if (domain != Domain::everywhere && anyBlock(a.numElements(), isOutside)) return std::nullopt;
    return mapBlocks(std::move(a), steps);
  }
  auto result = DoubleArray::uninitialized(a.size());
  double* y = result.writable();
  const bool left = anyBlock(a.numElements(), [&, y, x](int64_t begin, int64_t n) {
    if (anyOutside(domain, x + begin, n)) return true;
    steps(y + begin, x + begin, n);
    return false;
  });
  if (left) return std::nullopt;
  return result;
}

using ComplexFunction = ComplexDouble (*)(ComplexDouble);

/// A function of the C library's complex mathematics, as one of ours.
template <auto kFunction>
ComplexDouble ofLibrary(ComplexDouble z) {
  const std::complex<double> w = kFunction(std::complex<double>(z.real, z.imaginary));
  return {w.real(), w.imag()};
}

}  // namespace kelo::builtins
