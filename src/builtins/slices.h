// Slices along a dimension: the one loop shape of all that works along one (reductions, scans,
// sorting, filters).
//
// Seen from dimension d, an array is `outer` blocks of `length` rows of `inner` elements each:
// inner is the product of the lengths before d, outer that of the lengths after it. A slice is
// what stands in one place of all the rows of a block; there are outer * inner slices, numbered as
// the elements of a result with that dimension set to 1.
//
// Every loop goes with the memory. With inner == 1 a slice is contiguous, and several neighbours
// are folded side by side, so that the processor does not wait for one addition after the other.
// With a larger inner, whole rows are folded into a row of results, a piece of a row at a time that
// stays in the nearest cache. In both cases each slice is folded strictly from its first element to
// its last. Large arrays are split over the cores between slices, never within one.
#pragma once

#include <algorithm>
#include <vector>

#include "platform/parallel.h"
#include "values/size_vector.h"

namespace kelo::builtins {

struct Slices {
  int64_t outer, length, inner;

  /// REQUIRES: d >= 1
  Slices(const SizeVector& size, int64_t d) : outer(1), length(size.dimensionLength(d)), inner(1) {
    const auto lengths = size.vec();
    for (int64_t k = 1; k <= size.count(); ++k) {
      if (k != d) (k < d ? inner : outer) *= lengths[static_cast<size_t>(k - 1)];
    }
  }
  int64_t count() const { return outer * inner; }
  /// The cores for the inside of a slice: only where there is a single one, so that loops are never
  /// split twice.
  platform::ParallelFor* coresForOne() const { return count() == 1 ? platform::currentParallelFor() : nullptr; }
  /// Where slice k begins.
  int64_t first(int64_t k) const { return k / inner * inner * length + k % inner; }
};

/// The size of an array with dimension d brought to `length`; a dimension past the last may stay 1
/// at no cost.
inline SizeVector reducedSize(const SizeVector& size, int64_t d, int64_t length = 1) {
  return d > size.count() && length == 1 ? size : size.withDimension(d, length);
}

namespace slices {

inline constexpr int64_t kRowPiece = 1024;  ///< elements of a row that are worked on at a time
inline constexpr int64_t kNarrow = 16;      ///< rows shorter than this are kept in registers

/// Calls piece(k, offset, count) for all pieces of rows: k is the number of the first slice, offset
/// the place of its first element.
template <class Piece>
void forRowPieces(const Slices& s, Piece&& piece) {
  const int64_t pieces = (s.inner + kRowPiece - 1) / kRowPiece;
  platform::parallelForUnits(s.outer * pieces, s.length * std::min(s.inner, kRowPiece),
                             [&](int64_t begin, int64_t end) {
                               for (int64_t unit = begin; unit < end; ++unit) {
                                 const int64_t o = unit / pieces;
                                 const int64_t i = unit % pieces * kRowPiece;
                                 piece(o * s.inner + i, o * s.inner * s.length + i, std::min(kRowPiece, s.inner - i));
                               }
                             });
}

/// Calls lanes<N>(k) for slices begin to end - 1 in groups of N = 8, 4, 2 and 1.
template <class Lanes>
void inGroups(int64_t begin, int64_t end, Lanes&& lanes) {
  for (; begin + 8 <= end; begin += 8) lanes.template operator()<8>(begin);
  if (end - begin >= 4) lanes.template operator()<4>(begin), begin += 4;
  if (end - begin >= 2) lanes.template operator()<2>(begin), begin += 2;
  if (end - begin >= 1) lanes.template operator()<1>(begin);
}

/// The same for all slices of narrow blocks: lanes<N>(k, offset of the first element of slice k).
template <class Lanes>
void inGroupsOfBlocks(const Slices& s, Lanes&& lanes) {
  platform::parallelForUnits(s.outer, s.length * s.inner, [&](int64_t begin, int64_t end) {
    if (s.inner == 1) {
      inGroups(begin, end, [&]<int N>(int64_t k) { lanes.template operator()<N>(k, k * s.length); });
      return;
    }
    for (int64_t o = begin; o < end; ++o) {
      inGroups(0, s.inner,
               [&]<int N>(int64_t i) { lanes.template operator()<N>(o * s.inner + i, o * s.inner * s.length + i); });
    }
  });
}

/// N slices side by side. `across` is the distance between slices, `along` that between elements of
/// one.
template <int N, class T, class Acc, class Step>
inline void foldLanes(const T* in, int64_t across, int64_t along, int64_t length, Acc* out, int64_t k, Step& step) {
  Acc acc[N];
  for (int j = 0; j < N; ++j) acc[j] = out[j];
  for (int64_t l = 0; l < length; ++l) {
    for (int j = 0; j < N; ++j) acc[j] = step(acc[j], in[j * across + l * along], k + j);
  }
  for (int j = 0; j < N; ++j) out[j] = acc[j];
}

template <class T, class Acc, class Step>
inline void foldRows(const T* in, int64_t stride, int64_t length, int64_t n, Acc* out, int64_t k, Step& step) {
  int64_t l = 0;
  for (; l + 4 <= length; l += 4, in += 4 * stride) {
    const T *b = in + stride, *c = b + stride, *d = c + stride;
#pragma GCC ivdep
    for (int64_t i = 0; i < n; ++i) {
      out[i] = step(step(step(step(out[i], in[i], k + i), b[i], k + i), c[i], k + i), d[i], k + i);
    }
  }
  for (; l < length; ++l, in += stride) {
#pragma GCC ivdep
    for (int64_t i = 0; i < n; ++i) out[i] = step(out[i], in[i], k + i);
  }
}

template <int N, class T, class Step>
inline void scanLanes(const T* in, int64_t across, int64_t along, int64_t length, T* out, Step& step) {
  T acc[N];
  for (int j = 0; j < N; ++j) out[j * across] = acc[j] = in[j * across];
  for (int64_t l = 1; l < length; ++l) {
    for (int j = 0; j < N; ++j) out[j * across + l * along] = acc[j] = step(acc[j], in[j * across + l * along]);
  }
}

template <class T, class Step>
inline void scanRows(const T* in, int64_t stride, int64_t length, int64_t n, T* out, Step& step) {
  if (out != in) std::copy_n(in, n, out);
  for (int64_t l = 1; l < length; ++l) {
    in += stride, out += stride;
    const T* before = out - stride;
#pragma GCC ivdep
    for (int64_t i = 0; i < n; ++i) out[i] = step(before[i], in[i]);
  }
}

}  // namespace slices

/// Folds every slice: out[k] = step(out[k], x, k) for its elements x in order. `out` holds the
/// starts.
template <class T, class Acc, class Step>
void foldSlices(const Slices& s, const T* in, Acc* out, Step step) {
  if (s.inner >= slices::kNarrow) {
    slices::forRowPieces(s, [&](int64_t k, int64_t offset, int64_t n) {
      slices::foldRows(in + offset, s.inner, s.length, n, out + k, k, step);
    });
    return;
  }
  const int64_t across = s.inner == 1 ? s.length : 1;
  slices::inGroupsOfBlocks(s, [&]<int N>(int64_t k, int64_t offset) {
    slices::foldLanes<N>(in + offset, across, s.inner, s.length, out + k, k, step);
  });
}

/// Scans every slice: its first element stays, each further one becomes step(what came out before,
/// x); from the last to the first when `reverse`. `out` may be `in`. REQUIRES: length > 0
template <class T, class Step>
void scanSlices(const Slices& s, const T* in, T* out, bool reverse, Step step) {
  const int64_t along = reverse ? -s.inner : s.inner;
  const int64_t begin = reverse ? (s.length - 1) * s.inner : 0;
  if (s.inner >= slices::kNarrow) {
    slices::forRowPieces(s, [&](int64_t, int64_t offset, int64_t n) {
      slices::scanRows(in + offset + begin, along, s.length, n, out + offset + begin, step);
    });
    return;
  }
  const int64_t across = s.inner == 1 ? s.length : 1;
  slices::inGroupsOfBlocks(s, [&]<int N>(int64_t, int64_t offset) {
    slices::scanLanes<N>(in + offset + begin, across, along, s.length, out + offset + begin, step);
  });
}

/// Contiguous slices as a whole: body(k, elements). REQUIRES: inner == 1
template <class T, class Body>
void forColumns(const Slices& s, const T* in, Body body) {
  platform::parallelForUnits(s.outer, s.length, [&](int64_t begin, int64_t end) {
    for (int64_t k = begin; k < end; ++k) body(k, in + k * s.length);
  });
}

/// Each slice as a contiguous copy that the body may disorder: body(k, T* elements). Neighbours are
/// copied together, so that the memory is read in order.
template <class T, class Body>
void forGatheredSlices(const Slices& s, const T* in, Body body) {
  if (s.count() == 0) return;
  const int64_t together = std::min<int64_t>(s.inner, 8);
  const int64_t groups = (s.inner + together - 1) / together;
  platform::parallelForUnits(s.outer * groups, s.length * together, [&](int64_t begin, int64_t end) {
    std::vector<T> copy(static_cast<size_t>(s.length * together));
    for (int64_t unit = begin; unit < end; ++unit) {
      const int64_t i = unit % groups * together;
      const int64_t k = unit / groups * s.inner + i;
      const int64_t n = std::min(together, s.inner - i);
      const T* from = in + s.first(k);
      for (int64_t l = 0; l < s.length; ++l) {
        for (int64_t j = 0; j < n; ++j) copy[static_cast<size_t>(j * s.length + l)] = from[l * s.inner + j];
      }
      for (int64_t j = 0; j < n; ++j) body(k + j, copy.data() + j * s.length);
    }
  });
}

}  // namespace kelo::builtins
