// The handlers of the functions that make and rearrange arrays, a source per group; their one table
// is arrays.cpp.
#pragma once

#include "interpreter/builtin.h"

namespace kelo::builtins::arrays {

// fills.cpp
enum class Fill { zeros, ones, eye, nan, inf, true_, false_ };
NodeValue fill(Call& call);
NodeValue linspace(Call& call);
NodeValue blanks(Call& call);

// size_queries.cpp
enum class ShapeQuery { ndims, numel, length };
NodeValue size(Call& call);
NodeValue shapeQuery(Call& call);

// subscripts.cpp
NodeValue ind2sub(Call& call);
NodeValue sub2ind(Call& call);

// repetition.cpp
enum class Grid { meshgrid, ndgrid };
NodeValue repmat(Call& call);
NodeValue grid(Call& call);

// reshaping.cpp
enum class Permutation { permute, ipermute };
enum class Transposition { plain, conjugate };
NodeValue reshape(Call& call);
NodeValue shiftdim(Call& call);
NodeValue permute(Call& call);
NodeValue transposed(Call& call);

// flips.cpp
enum class Flip { flipdim, flip, fliplr, flipud };
NodeValue flip(Call& call);
NodeValue rot90(Call& call);

// diagonals.cpp
enum class Triangle { tril, triu };
NodeValue diag(Call& call);
NodeValue triangle(Call& call);
NodeValue trace(Call& call);

// sorting.cpp
NodeValue sort(Call& call);

// searching.cpp
NodeValue find(Call& call);

}  // namespace kelo::builtins::arrays
