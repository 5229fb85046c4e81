#include "values/growth.h"

#include <algorithm>

#include "messages/catalogue/indexing.h"
#include "messages/message.h"
#include "values/index_walk.h"

namespace kelo {
namespace {

SizeVector grownByOneIndex(const SizeVector& size, const Index& index) {
  if (index.needed() <= size.numElements()) return size;
  const bool isNothing = size.isMatrix() && size.rows() == 0 && size.columns() == 0;
  if (size.isRow() || isNothing) return SizeVector(1, index.needed());
  if (size.isColumn()) return SizeVector(index.needed(), 1);
  throw problem(text::kIndexExceedsTotal);
}

// A subscript that runs over several dimensions at once cannot tell which of them to extend.
SizeVector grownBySubscripts(const SizeVector& size, std::span<const Index> indices) {
  const auto count = static_cast<int64_t>(indices.size());
  const auto seen = size.broughtTo(count);
  std::vector<int64_t> lengths(size.vec().begin(), size.vec().end());
  lengths.resize(std::max(lengths.size(), indices.size()), 1);
  for (size_t k = 0; k < indices.size(); ++k) {
    if (indices[k].needed() <= seen[k]) continue;
    if (k + 1 == indices.size() && size.ndim() > count) throw problem(text::kIndexExceedsTotal);
    lengths[k] = indices[k].needed();
  }
  return SizeVector(lengths).trimmed();
}

// Positions of the old elements in an array of a larger size; -1 where a new element comes.
IntArray positionsIn(const SizeVector& size, const SizeVector& old) {
  const IndexWalk walk(size, old);
  IntArray positions(SizeVector(1, size.numElements()), -1);
  int64_t* to = positions.writable();
  walk.forEachRun([&](int64_t start, int64_t done) {
    for (int64_t k = 0; k < walk.run().count; ++k) to[start + walk.run().at(k)] = done + k;
  });
  return positions;
}

}  // namespace

SizeVector grownSize(const SizeVector& size, std::span<const Index> indices) {
  return indices.size() == 1 ? grownByOneIndex(size, indices.front()) : grownBySubscripts(size, indices);
}

bool keepsPositions(const SizeVector& from, const SizeVector& to) {
  if (from.numElements() == 0) return true;
  int64_t last = from.ndim();
  while (last > 1 && from.dimensionLength(last) == 1) --last;
  for (int64_t d = 1; d < last; ++d) {
    if (from.dimensionLength(d) != to.dimensionLength(d)) return false;
  }
  return true;
}

void grow(StructArray& array, const SizeVector& size, const std::vector<Name>& fields) {
  if (array.isEmpty()) {
    array = StructArray(size, fields);
  } else if (keepsPositions(array.size(), size)) {
    array.extend(size);
  } else {
    array = array.gathered(positionsIn(size, array.size()).values(), size);
  }
}

}  // namespace kelo
