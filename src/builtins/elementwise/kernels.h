// What the element-wise functions share beyond values/elementwise.h: whole-array routines run block by block, the scan
// that decides whether an array stays on the real path, and the way to the complex functions of the C library.
#pragma once

#include <atomic>
#include <complex>

#include "platform/parallel.h"
#include "values/elementwise.h"

namespace kelo::builtins {

/// Elements that several steps are carried through before the next ones are fetched: two blocks fit into the cache.
inline constexpr int64_t kBlock = 1024;

/// steps(y, x, n), for all elements, block by block and on several cores for large arrays; in place where the memory is free.
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

/// Whether `holds` is true of some element. REQUIRES: holds does not throw
template <class Predicate>
bool anyElement(const DoubleArray& a, Predicate holds) {
  const double* x = a.data();
  std::atomic<bool> found = false;
  platform::parallelFor(a.numElements(), [&](int64_t begin, int64_t end) {
    for (int64_t i = begin; i < end && !found.load(std::memory_order_relaxed); i += kBlock) {
      const int64_t stop = std::min(i + kBlock, end);
      int64_t some = 0;
      for (int64_t k = i; k < stop; ++k) some |= static_cast<int64_t>(holds(x[k]));
      if (some) found.store(true, std::memory_order_relaxed);
    }
  });
  return found;
}

using ComplexFunction = ComplexDouble (*)(ComplexDouble);

/// A function of the C library's complex mathematics, as one of ours.
template <auto kFunction>
ComplexDouble ofLibrary(ComplexDouble z) {
  const std::complex<double> w = kFunction(std::complex<double>(z.real, z.imaginary));
  return {w.real(), w.imag()};
}

}  // namespace kelo::builtins
