// Reductions and statistics: functions that run along a dimension of an array and shorten or scan
// it. Unless a dimension is given, it is the first whose length is not 1, also when that is 0, so
// sum([]) is 1 x 0 (NOTE: intended); the result has the size of the array with that dimension set
// to 1, or, for scans, its size.
//
// slices.h is the loop that all of them share; a source each for the groups of handlers; the table
// is here.
#include "builtins/library.h"
#include "builtins/reductions/handlers.h"
#include "messages/catalogue/reductions.h"

namespace kelo::builtins {
namespace {

using R = Reduction;
using C = Cumulative;

// clang-format off
constexpr Builtin kReductions[] = {
    {"all",      {reduction, R::all},                {1, 2},    1, "A, k",
     "True where all elements along a dimension are non-zero", "all([1 2; 0 4])",
     {.outputs = text::kSecondOutputUndefined}},
    {"any",      {reduction, R::any},                {1, 2},    1, "A, k",
     "True where some element along a dimension is non-zero", "any([1 0; 0 0])",
     {.outputs = text::kSecondOutputUndefined}},
    {"mean",     {reduction, R::mean},               {1, 2},    1, "A, k",
     "Arithmetic mean along a dimension", "mean([1 2; 3 4], 2)", {.outputs = text::kSecondOutputUndefined}},
    {"median",   {reduction, R::median},             {1, 2},    1, "A, k",
     "Middle value along a dimension", "median([3 1 10])", {.outputs = text::kSecondOutputUndefined}},
    {"mode",     {reduction, R::mode},               {1, 2},    2, "A, k",
     "Most frequent value along a dimension, and how often it occurs", "[m, f] = mode([2 1 2 3])",
     {.verb = text::kModeFailed}},
    {"prod",     {reduction, R::prod},               {1, 2},    1, "A, k",
     "Product along a dimension", "prod([1 2; 3 4])", {.outputs = text::kSecondOutputUndefined}},
    {"sum",      {reduction, R::sum},                {1, 2},    1, "A, k",
     "Sum along a dimension", "sum([1 2; 3 4])", {.outputs = text::kSecondOutputUndefined}},
    {"max",      {extreme, Extreme::max},            {1, 3},    2, "A, B, k",
     "Largest value along a dimension and its position, or the larger of two arrays element by element",
     "[m, i] = max([3 9 4])"},
    {"min",      {extreme, Extreme::min},            {1, 3},    2, "A, B, k",
     "Smallest value along a dimension and its position, or the smaller of two arrays element by element",
     "min([3 9; 1 4], [], 2)"},
    {"cumsum",   {cumulative, C::cumsum},            {1, 4},    1, "A, dim, option",
     "Cumulative sum along a dimension", "cumsum(1:5, 'reverse')", {.inputs = text::kCumulativeInputs}},
    {"cumprod",  {cumulative, C::cumprod},           {1, 4},    1, "A, dim, option",
     "Cumulative product along a dimension", "cumprod(1:5)", {.inputs = text::kCumulativeInputs}},
    {"cummin",   {cumulative, C::cummin},            {1, 4},    1, "A, dim, option1, option2",
     "Smallest value so far along a dimension", "cummin([5 3 4 1])", {.inputs = text::kCumulativeInputs}},
    {"cummax",   {cumulative, C::cummax},            {1, 4},    1, "A, dim, option1, option2",
     "Largest value so far along a dimension", "cummax([1 NaN 4 2], 'includenan')",
     {.inputs = text::kCumulativeInputs}},
    {"std",      {spread, Spread::std},              {1, 3},    1, "A, w, k",
     "Standard deviation along a dimension", "std([1 2 3 4])"},
    {"var",      {spread, Spread::var},              {1, 3},    1, "A, w, k",
     "Variance along a dimension", "var([1 2 3 4], 1)"},
    {"rms",      rms,                                {1, 3},    1, "A, arg2, nanflag",
     "Root of the mean of the squares", "rms([1 2; 3 4], 'all')", {.verb = "rms"}},
    {"prctile",  {percentile, Percentile::prctile},  {2, 3},    1, "A, p, dim",
     "Percentiles along a dimension", "prctile(1:9, [25 50 75])"},
    {"quantile", {percentile, Percentile::quantile}, {2, 3},    1, "A, q, dim",
     "Quantiles along a dimension", "quantile(1:9, 0.5)"},
    {"cov",      cov,                                {1, 4},    1, "A, B, w, nanflag",
     "Variance of a vector, or covariances of columns", "cov([1 2; 3 5; 4 4])"},
    {"corrcoef", corrcoef,                           {1, kAny}, 4, "A, B, name, value",
     "Correlation coefficients, their significance and bounds", "[R, P] = corrcoef([1 2 3 4], [1 3 2 4])",
     {.outputs = text::kCorrcoefOutputs}},
};
// clang-format on

}  // namespace

std::span<const Builtin> reductionsTable() { return kReductions; }

}  // namespace kelo::builtins
