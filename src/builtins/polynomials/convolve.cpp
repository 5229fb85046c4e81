// A block of neighbouring sums is kept in registers while the shorter vector passes by: for one of
// its elements the block takes a run of the longer vector, which the compiler turns into vector
// instructions. At both ends of the result some sums of a block have more terms than others; those
// terms are added one by one, in their order.
#include "builtins/polynomials/convolve.h"

#include "builtins/slices.h"
#include "platform/vector_clones.h"

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

/// Adds the terms `begin` to `end` - 1 to all sums of the block at k.
void addRuns(const Operands<ComplexDouble>& op, int64_t k, int64_t begin, int64_t end, ComplexDouble* sums) {
  for (int64_t j = begin; j < end; ++j) {
    const ComplexDouble* run = op.u + k - j;
    for (int64_t l = 0; l < kLanes; ++l) sums[l] = sums[l] + run[l] * op.v[j];
  }
}

/// Four doubles that are added and multiplied together, at any address (which `auto` would forget).
typedef double Four __attribute__((vector_size(32), aligned(8), may_alias));
static_assert(kLanes == 4 * 4);

// OPTIMIZATION: the vectors are spelled out. Left to itself, the compiler lays them across the
// terms and not across the sums.
KELO_VECTOR_CLONES void addRuns(const Operands<double>& op, int64_t k, int64_t begin, int64_t end, double* sums) {
  Four* all = reinterpret_cast<Four*>(sums);
  Four a = all[0], b = all[1], c = all[2], d = all[3];
  for (int64_t j = begin; j < end; ++j) {
    const Four* run = reinterpret_cast<const Four*>(op.u + k - j);
    const double factor = op.v[j];
    a = a + run[0] * factor;
    b = b + run[1] * factor;
    c = c + run[2] * factor;
    d = d + run[3] * factor;
  }
  all[0] = a, all[1] = b, all[2] = c, all[3] = d;
}

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
  addRuns(op, k, begin, end, sum);
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
