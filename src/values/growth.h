// Growth: the size that an array takes when a write goes past its end.
#pragma once

#include <span>

#include "values/index.h"
#include "values/storable.h"

namespace kelo {

/// The size that an array must have for a write at these subscripts; its own when they are all
/// within.
///
/// One subscript makes a row of what is 0 x 0, a scalar or a row, and lengthens a column; nothing
/// else can grow so. A last subscript that runs over several dimensions cannot grow either.
/// throws  Problem
SizeVector grownSize(const SizeVector& size, std::span<const Index> indices);

/// Whether the old elements keep their linear positions in the larger size: only their last
/// dimension becomes longer.
bool keepsPositions(const SizeVector& from, const SizeVector& to);

/// Makes a structure array larger, the new elements of empty doubles; one without elements takes
/// the given fields.
void grow(StructArray& array, const SizeVector& size, const std::vector<Name>& fields);

}  // namespace kelo
