// Implicit expansion: the size of the result, and the strides with which two operands of different
// sizes are read.
#include "values/elementwise.h"

#include <algorithm>

#include "messages/catalogue/operators.h"
#include "messages/message.h"

namespace kelo {

std::optional<SizeVector> expandedSizeIfAny(const SizeVector& a, const SizeVector& b) {
  if (a.hasZeroLength()) return b.hasZeroLength() || b.isScalar() ? std::optional(a) : std::nullopt;
  if (b.hasZeroLength()) return a.isScalar() ? std::optional(SizeVector()) : std::nullopt;
  if (a == b || b.isScalar()) return a;
  if (a.isScalar()) return b;
  std::vector<int64_t> lengths;
  for (int64_t d = 1; d <= std::max(a.ndim(), b.ndim()); ++d) {
    const int64_t m = a.dimensionLength(d);
    const int64_t n = b.dimensionLength(d);
    if (m != n && m != 1 && n != 1) return std::nullopt;
    lengths.push_back(std::max(m, n));
  }
  return SizeVector(lengths);
}

SizeVector expandedSize(const SizeVector& a, const SizeVector& b) {
  if (auto size = expandedSizeIfAny(a, b)) return std::move(*size);
  throw problem(text::kIncompatibleSizes);
}

namespace loops {

Broadcast::Broadcast(const SizeVector& a, const SizeVector& b, const SizeVector& size) {
  int64_t nextA = 1;
  int64_t nextB = 1;
  for (int64_t d = 1; d <= size.ndim(); ++d) {
    const int64_t length = size.dimensionLength(d);
    if (length == 1) continue;
    const Dimension dimension{length, a.dimensionLength(d) == 1 ? 0 : nextA, b.dimensionLength(d) == 1 ? 0 : nextB};
    nextA *= a.dimensionLength(d);
    nextB *= b.dimensionLength(d);
    Dimension* last = dimensions_.empty() ? nullptr : &dimensions_.back();
    if (last && dimension.strideA == last->strideA * last->length &&
        dimension.strideB == last->strideB * last->length) {
      last->length *= length;
    } else {
      dimensions_.push_back(dimension);
    }
  }
  for (size_t k = 1; k < dimensions_.size(); ++k) runCount_ *= dimensions_[k].length;
}

Broadcast::Place Broadcast::placeOf(int64_t run) const {
  Place place{std::vector<int64_t>(dimensions_.size()), 0, 0};
  for (size_t k = 1; k < dimensions_.size(); ++k) {
    const int64_t s = place.subscripts[k] = run % dimensions_[k].length;
    run /= dimensions_[k].length;
    place.a += s * dimensions_[k].strideA;
    place.b += s * dimensions_[k].strideB;
  }
  return place;
}

void Broadcast::advance(Place& place) const {
  for (size_t k = 1; k < dimensions_.size(); ++k) {
    const Dimension& d = dimensions_[k];
    place.a += d.strideA;
    place.b += d.strideB;
    if (++place.subscripts[k] < d.length) return;
    place.subscripts[k] = 0;
    place.a -= d.strideA * d.length;
    place.b -= d.strideB * d.length;
  }
}

}  // namespace loops
}  // namespace kelo
