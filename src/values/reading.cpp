// Reads elements. Every read is a walk over the selected positions that copies run by run; what
// differs is the bounds check and the shape of the result. Most of a large array, in one piece, is
// not copied. A logical mask as the only subscript is read without making a list of its positions.
#include <algorithm>

#include "messages/catalogue/indexing.h"
#include "messages/message.h"
#include "platform/parallel.h"
#include "values/index_walk.h"
#include "values/indexing.h"

namespace kelo {
namespace {

SizeVector shapeOfOneIndex(const SizeVector& array, const Index& index) {
  if (!index.isVector()) return index.shape();
  // NOTE: intended: a scalar counts as a row, and ":" is a row of positions, so that A(:) of a
  // matrix is a row.
  if (array.isRow()) return SizeVector(1, index.count());
  if (array.isColumn()) return SizeVector(index.count(), 1);
  return index.shape();
}

SizeVector shapeOfSubscripts(std::span<const Index> indices) {
  std::vector<int64_t> lengths;
  for (const Index& index : indices) lengths.push_back(index.count());
  return SizeVector(lengths);
}

void checkBounds(std::span<const int64_t> lengths, std::span<const Index> indices) {
  for (size_t k = 0; k < indices.size(); ++k) {
    if (indices[k].needed() <= lengths[k]) continue;
    if (indices.size() == 1) throw problem(text::kIndexExceedsArray, text::kIndexExceedsArrayExpected);
    throw problem(text::indexExceedsDimension(static_cast<int64_t>(k) + 1));
  }
}

// OPTIMIZATION: the distances that are most usual are constants, so that the compiler reads several
// elements at once.
template <class T>
void readEvenly(const T* __restrict from, int64_t stride, T* __restrict to, int64_t n) {
  const auto read = [=](auto distance) {
    for (int64_t k = 0; k < n; ++k) to[k] = from[k * distance];
  };
  if (stride == 2) return read(std::integral_constant<int64_t, 2>());
  if (stride == -1) return read(std::integral_constant<int64_t, -1>());
  read(stride);
}

template <class T>
void readRun(const T* from, const IndexAxis& run, T* to) {
  if (run.list != nullptr) {
    platform::parallelFor(run.count, [=, list = run.list, stride = run.stride](int64_t begin, int64_t end) {
      if (stride == 1) {
        for (int64_t k = begin; k < end; ++k) to[k] = from[list[k]];
      } else {
        for (int64_t k = begin; k < end; ++k) to[k] = from[list[k] * stride];
      }
    });
    return;
  }
  from += run.first * run.stride;
  platform::parallelFor(run.count, [=, stride = run.stride](int64_t begin, int64_t end) {
    if (stride == 1) std::copy_n(from + begin, end - begin, to + begin);
    else readEvenly(from + begin * stride, stride, to + begin, end - begin);
  });
}

template <class T>
TypedArray<T> readWalk(const TypedArray<T>& array, const IndexWalk& walk, const SizeVector& shape) {
  if (walk.isContiguous() && walk.count() > 0) {
    if (auto same = array.shown(walk.first(), shape)) return std::move(*same);
  }
  auto result = TypedArray<T>::uninitialized(shape);
  T* to = result.writable();
  const auto read = [&](int64_t start, int64_t done) { readRun(array.data() + start, walk.run(), to + done); };
  if (walk.run().count < platform::kParallelThreshold)
    walk.forEachRunSideBySide(read);
  else
    walk.forEachRun(read);  // each in pieces
  return result;
}

// Writes every element up to the last selected one to the place of the next selected one, so that
// there is no branch.
template <class T>
TypedArray<T> readMask(const TypedArray<T>& array, const Index& index, const SizeVector& shape) {
  auto result = TypedArray<T>::uninitialized(shape);
  T* to = result.writable();
  const T* from = array.data();
  const bool* selected = index.mask().data();
  for (int64_t k = 0, n = 0; n < index.count(); ++k) {
    to[n] = from[k];
    n += selected[k];
  }
  return result;
}

IntArray positionsOf(const IndexWalk& walk) {
  IntArray positions = IntArray::uninitialized(SizeVector(1, walk.count()));
  int64_t* to = positions.writable();
  walk.forEachRun([&](int64_t start, int64_t done) {
    for (int64_t k = 0; k < walk.run().count; ++k) to[done + k] = start + walk.run().at(k);
  });
  return positions;
}

}  // namespace

IntArray selectedPositions(const SizeVector& size, std::span<const Index> indices) {
  if (indices.empty()) throw problem(text::kNoIndex);
  const auto lengths = indexExtents(size, static_cast<int64_t>(indices.size()));
  checkBounds(lengths, indices);
  return positionsOf(IndexWalk(lengths, indices));
}

Storable readElements(const Storable& array, std::span<const Index> indices) {
  if (!array.isArray()) throw problem(text::kIndexedNotArray);
  if (indices.empty()) throw problem(text::kNoIndex);
  const auto lengths = indexExtents(array.size(), static_cast<int64_t>(indices.size()));
  checkBounds(lengths, indices);
  const Index& first = indices.front();
  const SizeVector shape = indices.size() == 1 ? shapeOfOneIndex(array.size(), first) : shapeOfSubscripts(indices);
  if (indices.size() == 1 && first.form() == Index::Form::mask && array.isNumeric()) {
    return array.numeric()->visit([&](const auto& record) { return Storable(readMask(record, first, shape)); });
  }
  const IndexWalk walk(lengths, indices);
  if (array.isStructure()) return array.structure()->gathered(positionsOf(walk).values(), shape);
  return array.numeric()->visit([&](const auto& record) { return Storable(readWalk(record, walk, shape)); });
}

}  // namespace kelo
