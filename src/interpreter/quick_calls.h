// Built-ins of one or two arguments that are computed without a call where the arguments are
// simple: functions of numbers, questions about sizes and kinds, comparisons of texts, texts of whole
// numbers; those of small arrays are in quick_arrays.h. Each gives what the built-in gives, or says
// false.
#pragma once

#include <optional>
#include <span>

#include "values/name.h"
#include "values/storable.h"

namespace kelo {

// clang-format off
enum class QuickCall : int32_t {
  abs, ceil, fix, floor, max, min, mod, rem, round, sqrt,
  acos, asin, atan, cos, cosh, exp, log, log10, log2, sin, sinh, tan, tanh,
  isempty, length, ndims, numel, size, toDouble, toChar, exclusiveOr,
  strcmp, strcmpi, int2str, num2str, lower, upper, ischar, isfield, isstruct,
  largest, smallest, sum, mean, all, any, find, flipRow, flipColumn, dot, isspace, isletter,
  isnumeric, isreal, islogical, isrow, iscolumn, isscalar, isvector, ismatrix, isinf,
  ones, zeros,
};
// clang-format on

/// Which one a name with so many arguments is; -1 for any other built-in.
int32_t quickCallOf(Name name, int32_t count);

/// The value of a name such as "pi" or "true" alone; absent for any other.
std::optional<Storable> quickConstantOf(Name name);

/// y is x again for those of one argument. `result` may be one of them.
bool quickCall(QuickCall function, const Storable& x, const Storable& y, Storable* result);
/// Of two numbers; those after `sqrt` only look at the first.
bool quickCall(QuickCall function, double x, double y, double* result);

/// Whether both have one size and the same characters.
bool sameText(const CharArray& a, const CharArray& b);

/// text = strcat(text, more...), where all are rows of characters and nobody else holds the text;
/// costs what is added.
bool appendTexts(Storable& text, std::span<const Storable> more);

}  // namespace kelo
