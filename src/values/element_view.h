// Rearranging elements: every array whose elements are those of another one at regular distances.
//
// A view names, for each dimension of the result, its length and how far apart its neighbours stand
// in the source: a stride of 0 repeats, a negative one runs backwards. Transposes and permutations,
// flips and rotations, repetitions, grids and diagonals are all views, so that one copying loop,
// over the element's type, serves them and all kinds of array.
#pragma once

#include <vector>

#include "values/storable.h"

namespace kelo {

struct ViewAxis {
  int64_t length;
  int64_t stride;  ///< in elements
};

/// Copies a view into contiguous memory. Large ones run on several cores.
///
/// out   as many elements as the product of the lengths; not overlapping the source
/// in    the element that the first element of the result comes from
template <class T>
void copyView(T* out, const T* in, std::vector<ViewAxis> axes);

/// The array of the given size that shows `source` through a view.
///
/// first  position from 0 of the element that the result begins with
/// A view of all elements in their order copies nothing that is not shared. Works for structure
/// arrays, too.
/// REQUIRES: source.isArray(); size.numElements() == product of the lengths; all positions lie
/// within the source
Storable viewed(Storable source, const SizeVector& size, const std::vector<ViewAxis>& axes, int64_t first = 0);

/// The axes of an array as it stands, brought to at least n dimensions.
std::vector<ViewAxis> axesOf(const SizeVector& size, int64_t n = 2);

}  // namespace kelo
