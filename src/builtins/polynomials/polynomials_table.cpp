// The table of polynomials, signals and calculus.
#include "builtins/library.h"
#include "builtins/polynomials/handlers.h"
#include "messages/catalogue/polynomials.h"

namespace kelo::builtins {
namespace {


// clang-format off
constexpr Builtin kPolynomials[] = {
    {"polyval",  polyval,                               {2, 4},    2,    "p, x, S, mu",
     "Values of a polynomial at given points, and how far off they may be after a fit", "polyval([1 0 -2], 0:3)",
     {.outputs = text::kTooManyOutputs, .verb = "polyval"}},
    {"polyfit",  polyfit,                               {3, 3},    3,    "x, y, n",
     "Polynomial of degree n through points, by least squares", "p = polyfit(0:4, [1 3 7 13 21], 2)",
     {.verb = "calling polyfit()"}},
    {"poly",     poly,                                  {1, 1},    1,    "r",
     "Polynomial with given roots, or characteristic polynomial of a matrix", "poly([1 2 3])"},
    {"polyder",  polyder,                               {1, 2},    2,    "a, b",
     "Derivative of a polynomial, of a product or of a quotient", "polyder([1 2 3])"},
    {"polyint",  polyint,                               {1, 2},    1,    "p, c",
     "Integral of a polynomial with the constant c, 0 unless given", "polyint([3 2 1], 5)"},
    {"roots",    roots,                                 {1, 1},    1,    "p",
     "Roots of a polynomial", "roots([1 -3 2])"},
    {"compan",   compan,                                {1, 1},    1,    "p",
     "Companion matrix of a polynomial, whose eigenvalues are the roots", "compan([1 -3 2])"},
    {"conv",     conv,                                  {2, 3},    1,    "u, v, shape",
     "Convolution of two vectors, the product of two polynomials", "conv([1 2], [1 3])"},
    {"deconv",   deconv,                                {2, 2},    2,    "b, a",
     "Quotient and remainder of two polynomials", "[q, r] = deconv([1 5 6], [1 2])"},
    {"filter",   filter,                                {3, 5},    2,    "b, a, x, wi, dim",
     "Filters data with the rational filter b / a", "filter(1, [1 -0.5], [1 0 0 0])", {.verb = "performing filter()"}},
    {"diff",     diff,                                  {1, 3},    1,    "X, n, dim",
     "Differences of neighbouring elements, n times", "diff([1 4 9 16])", {.verb = "performing diff()"}},
    {"gradient", gradient,                              {1, kAny}, kAny, "F, h1, h2, ...",
     "Slopes of an array along its columns, its rows and further dimensions", "gradient([1 4 9 16], 0.5)",
     {.inputs = text::kInputsOfGradient}},
    {"dot",      {vectorProduct, VectorProduct::dot},   {2, 3},    1,    "A, B, k",
     "Scalar product of vectors", "dot([1 2 3], [4 5 6])"},
    {"cross",    {vectorProduct, VectorProduct::cross}, {2, 3},    1,    "A, B, k",
     "Vector product of vectors of 3 elements", "cross([1 0 0], [0 1 0])"},
    {"cplxpair", cplxpair,                              {1, 3},    1,    "A, tol, dim",
     "Complex numbers ordered in conjugate pairs, real numbers last", "cplxpair([1i 3 -1i])"},
};
// clang-format on

}  // namespace

std::span<const Builtin> polynomialsTable() { return kPolynomials; }

}  // namespace kelo::builtins
