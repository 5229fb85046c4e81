// A block of neighbouring sums is kept in registers while the shorter vector passes by: for one of
// its elements the block takes a run of the longer vector, which the compiler turns into vector
// instructions. At both ends of the result some sums of a block have more terms than others; those
// terms are added one by one, in their order.
#include "builtins/polynomials/convolve.h"

#include "builtins/slices.h"

namespace kelo::builtins {
namespace {

constexpr int64_t kLanes = 16;

template <class T>
struct Operands {
  const T* u;  // the longer
  int64_t nu;
  const T* v;
  int64_t nv;

  // The sum at k has the terms of v from firstTerm(k) to endTerm(k) - 1.
  int64_t firstTerm(int64_t k) const { return std::max<int64_t>(0, k - nu + 1); }
  int64_t endTerm(int64_t k) const { return std::min(nv, k + 1); }
  void add(T& sum, int64_t k, int64_t begin, int64_t end) const {
    for (int64_t j = begin; j < end; ++j) sum = sum + u[k - j] * v[j];
  }
};

template <class T>
void sumOne(const Operands<T>& op, int64_t k, T* out) {
  *out = T{};
  op.add(*out, k, op.firstTerm(k), op.endTerm(k));
}

template <class T>
void sumBlock(const Operands<T>& op, int64_t k, T* out) {
  // The terms that all sums of the block have.
  const int64_t begin = op.firstTerm(k + kLanes - 1), end = op.endTerm(k);
  if (begin >= end) {
    for (int64_t l = 0; l < kLanes; ++l) sumOne(op, k + l, out + l);
    return;
  }
  T sum[kLanes] = {};
  for (int64_t l = 0; l < kLanes; ++l) op.add(sum[l], k + l, op.firstTerm(k + l), begin);
  for (int64_t j = begin; j < end; ++j) {
    const T* run = op.u + k - j;
    const T factor = op.v[j];
    for (int64_t l = 0; l < kLanes; ++l) sum[l] = sum[l] + run[l] * factor;
  }
  for (int64_t l = 0; l < kLanes; ++l) op.add(sum[l], k + l, end, op.endTerm(k + l));
  std::copy_n(sum, kLanes, out);
}

template <class T>
void convolveAny(std::span<const T> u, std::span<const T> v, int64_t first, int64_t count, T* out) {
  if (u.size() < v.size()) std::swap(u, v);
  const Operands<T> op = {u.data(), static_cast<int64_t>(u.size()), v.data(), static_cast<int64_t>(v.size())};
  platform::parallelForUnits((count + kLanes - 1) / kLanes, kLanes * op.nv, [&](int64_t begin, int64_t end) {
    int64_t k = begin * kLanes;
    const int64_t last = std::min(count, end * kLanes);
    for (; k + kLanes <= last; k += kLanes) sumBlock(op, first + k, out + k);
    for (; k < last; ++k) sumOne(op, first + k, out + k);
  });
}

}  // namespace

void convolve(std::span<const double> u, std::span<const double> v, int64_t first, int64_t count, double* out) {
  convolveAny(u, v, first, count, out);
}
void convolve(std::span<const ComplexDouble> u, std::span<const ComplexDouble> v, int64_t first, int64_t count,
              ComplexDouble* out) {
  convolveAny(u, v, first, count, out);
}

}  // namespace kelo::builtins
