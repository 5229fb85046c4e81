// The table of the functions that make arrays of a given size, move elements around without
// arithmetic and ask for sizes. Each moves elements of any kind, structures included, as a view
// (values/element_view.h) where it can.
#include "builtins/arrays/handlers.h"
#include "builtins/library.h"
#include "messages/catalogue/arrays.h"

namespace kelo::builtins {
namespace {

using namespace arrays;

// clang-format off
constexpr Builtin kArrays[] = {
    {"zeros",      {fill, Fill::zeros},              {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of zeros", "zeros(2, 3)"},
    {"ones",       {fill, Fill::ones},               {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of ones", "ones(2, 3)"},
    {"eye",        {fill, Fill::eye},                {0, kAny}, 1,    "n, m",
     "An identity matrix", "eye(3)"},
    {"nan",        {fill, Fill::nan},                {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of NaN", "nan(1, 3)"},
    {"NaN",        {fill, Fill::nan},                {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of NaN", "NaN(1, 3)"},
    {"Nan",        {fill, Fill::nan},                {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of NaN", "Nan(1, 3)"},
    {"inf",        {fill, Fill::inf},                {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of infinities", "inf(1, 3)"},
    {"Inf",        {fill, Fill::inf},                {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of infinities", "Inf(1, 3)"},
    {"true",       {fill, Fill::true_},              {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of the logical true", "true(2)"},
    {"false",      {fill, Fill::false_},             {0, kAny}, 1,    "s1, s2, ..., sn",
     "An array of the logical false", "false(2)"},
    {"linspace",   linspace,                         {2, 3},    1,    "a, b, n",
     "Points at equal distances from a to b", "linspace(0, 1, 5)", {.verb = "performing linspace()"}},
    {"blanks",     blanks,                           {1, 1},    1,    "n",
     "A text of n spaces", "['a', blanks(3), 'b']"},

    {"size",       size,                             {1, 2},    kAny, "A, d",
     "The lengths of the dimensions", "size(ones(2, 3))", {.inputs = text::kSizeInputs}},
    {"ndims",      {shapeQuery, ShapeQuery::ndims},  {1, 1},    1,    "A",
     "The number of dimensions", "ndims(ones(2, 3, 4))"},
    {"numel",      {shapeQuery, ShapeQuery::numel},  {1, 1},    1,    "A",
     "The number of elements", "numel(ones(2, 3))"},
    {"length",     {shapeQuery, ShapeQuery::length}, {1, 1},    1,    "A",
     "The largest dimension, or 0 when the array is empty", "length(ones(2, 3))"},
    {"ind2sub",    ind2sub,                          {2, 2},    kAny, "sizeVec, ind",
     "Subscripts of linear indexes", "[r, c] = ind2sub([2 3], 4)"},
    {"sub2ind",    sub2ind,                          {2, kAny}, 1,    "sizeVec, sub1, sub2, ..., subN",
     "Linear indexes of subscripts", "sub2ind([2 3], 2, 2)"},

    {"repmat",     repmat,                           {2, kAny}, 1,    "A, s1, s2, ..., sn",
     "An array repeated in blocks", "repmat([1 2], 2, 2)"},
    {"meshgrid",   {grid, Grid::meshgrid},           {1, 3},    3,    "x1, x2, x3",
     "Coordinates of a grid, x1 along the columns", "[x, y] = meshgrid(1:3, 1:2)",
     {.failure = text::kRepetitionFailed}},
    {"ndgrid",     {grid, Grid::ndgrid},             {1, kAny}, kAny, "x1, x2, ...",
     "Coordinates of a grid, xk along dimension k", "[x, y] = ndgrid(1:3, 1:2)", {.failure = text::kRepetitionFailed}},
    {"reshape",    reshape,                          {2, kAny}, 1,    "A, s1, s2, ..., sn",
     "The same elements in another size", "reshape(1:6, [], 2)"},
    {"shiftdim",   shiftdim,                         {1, 2},    2,    "A, k",
     "Dimensions shifted by k to the left", "size(shiftdim(ones(2, 3, 4), 1))"},
    {"permute",    {permute, Permutation::permute},  {2, 2},    1,    "A, order",
     "Dimensions in another order", "permute([1 2 3], [2 1])"},
    {"ipermute",   {permute, Permutation::ipermute}, {2, 2},    1,    "A, order",
     "The inverse of permute", "ipermute([1 2 3], [2 1])"},
    {"transpose",  {transposed, Transposition::plain},     {1, 1}, 1,    "A",
     "Rows and columns exchanged", "transpose([1 2 3])", {.verb = "performing transpose operation"}},
    {"ctranspose", {transposed, Transposition::conjugate}, {1, 1}, 1,    "A",
     "Rows and columns exchanged, complex numbers conjugated", "ctranspose([1+2i 3])",
     {.verb = "performing transpose operation"}},
    {"flip",       {flip, Flip::flip},               {1, 2},    1,    "A, dim",
     "Elements in reverse order along a dimension", "flip([1 2 3])"},
    {"flipdim",    {flip, Flip::flipdim},            {1, 2},    1,    "A, dim",
     "Elements in reverse order along a dimension", "flipdim([1 2; 3 4], 2)"},
    {"fliplr",     {flip, Flip::fliplr},             {1, 1},    1,    "A",
     "Columns in reverse order", "fliplr([1 2; 3 4])"},
    {"flipud",     {flip, Flip::flipud},             {1, 1},    1,    "A",
     "Rows in reverse order", "flipud([1 2; 3 4])"},
    {"rot90",      rot90,                            {1, 2},    1,    "A, k",
     "An array rotated by k quarter turns against the clock", "rot90([1 2; 3 4])"},

    {"diag",       diag,                             {1, 2},    1,    "A, k",
     "A diagonal of a matrix, or a matrix with a given diagonal", "diag([1 2 3])", {.failure = text::kDiagFailed}},
    {"tril",       {triangle, Triangle::tril},       {1, 2},    1,    "A, k",
     "The elements on and below diagonal k", "tril(ones(3))", {.failure = text::kTrilFailed}},
    {"triu",       {triangle, Triangle::triu},       {1, 2},    1,    "A, k",
     "The elements on and above diagonal k", "triu(ones(3))", {.failure = text::kTriuFailed}},
    {"trace",      trace,                            {1, 1},    1,    "A",
     "The sum of the diagonal", "trace([1 2; 3 4])"},

    {"sort",       sort,                             {1, kAny}, 2,    "A, dim, direction",
     "Elements in increasing or decreasing order", "[b, k] = sort([3 1 2], 'descend')", {.inputs = text::kSortInputs}},
    {"find",       find,                             {1, 2},    3,    "X, n",
     "The places of the elements that are not zero", "find([0 1 0 2])", {.outputs = text::kFindOutputs}},
};
// clang-format on

}  // namespace

std::span<const Builtin> arraysTable() { return kArrays; }

}  // namespace kelo::builtins
