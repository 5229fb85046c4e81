// The table of the functions of matrices.
#include "builtins/library.h"
#include "builtins/linear_algebra/handlers.h"

namespace kelo::builtins {
namespace {

using namespace linear_algebra;

// clang-format off
constexpr Builtin kLinearAlgebra[] = {
    {"linsolve",    linsolve,                          {2, 2}, 2, "A, b",
     "Solve the matrix equation A * x = b", "linsolve([2 1; 1 3], [3; 5])",
     {.verb = "solving a matrix equation of the form AX = b"}},
    {"inv",         inv,                               {1, 1}, 1, "A",
     "The inverse of a square matrix", "inv([4 7; 2 6])", {.verb = "performing inv()"}},
    {"rcond",       rcond,                             {1, 1}, 1, "A",
     "Estimate of the reciprocal condition number of a square matrix", "rcond([1 2; 3 4])",
     {.verb = "performing rcond()"}},
    {"det",         det,                               {1, 1}, 1, "A",
     "The determinant of a square matrix", "det([1 2; 3 4])"},
    {"lu",          lu,                                {1, 2}, 3, "A, perm",
     "Factors of a matrix by elimination with exchanges of rows", "[L, U, P] = lu([1 2; 3 4])",
     {.verb = "performing lu()"}},
    {"qr",          qr,                                {1, 2}, 3, "A, size",
     "An orthogonal and an upper triangular factor of a matrix", "[Q, R] = qr([1 2; 3 4])",
     {.verb = "performing qr()"}},
    {"svd",         svd,                               {1, 2}, 3, "A, size",
     "Singular values and singular vectors of a matrix", "svd([1 2; 3 4])", {.verb = "performing svd()"}},
    {"eig",         eig,                               {1, 1}, 3, "A",
     "Eigenvalues and eigenvectors of a square matrix", "[V, D] = eig([2 1; 1 2])",
     {.verb = "computing eigenvalues and eigenvectors"}},
    {"pinv",        pinv,                              {1, 2}, 1, "A, tol",
     "The pseudo-inverse of a matrix", "pinv([1 2; 3 4; 5 6])", {.verb = "performing pinv()"}},
    {"rank",        rank,                              {1, 2}, 1, "A, tol",
     "The number of linearly independent columns of a matrix", "rank([1 2; 2 4])", {.verb = "performing rank()"}},
    {"norm",        norm,                              {1, 2}, 1, "x, p",
     "The norm of a vector or a matrix", "norm([3 4])"},
    {"rref",        rref,                              {1, 2}, 2, "A, tol",
     "The reduced row echelon form of a matrix", "rref([1 2 3; 4 5 6])", {.verb = "performing rref()"}},

    {"isdiag",      {band, Band::isdiag},              {1, 1}, 1, "A",
     "Whether a matrix is zero off its diagonal", "isdiag([1 0; 0 2])"},
    {"istril",      {band, Band::istril},              {1, 1}, 1, "A",
     "Whether a matrix is zero above its diagonal", "istril([1 0; 3 4])"},
    {"istriu",      {band, Band::istriu},              {1, 1}, 1, "A",
     "Whether a matrix is zero below its diagonal", "istriu([1 2; 0 4])"},
    {"isbanded",    {band, Band::isbanded},            {3, 3}, 1, "A, lower, upper",
     "Whether a matrix is zero beyond so many diagonals", "isbanded([1 2; 0 4], 0, 1)"},
    {"bandwidth",   bandwidth,                         {1, 2}, 2, "A, type",
     "How far the elements of a matrix reach from its diagonal", "[below, above] = bandwidth([1 2; 0 4])"},
    {"issymmetric", {symmetry, Symmetry::issymmetric}, {1, 2}, 1, "A, tol",
     "Whether a matrix equals its transpose", "issymmetric([1 2; 2 1])"},
    {"ishermitian", {symmetry, Symmetry::ishermitian}, {1, 2}, 1, "A, tol",
     "Whether a matrix equals its conjugated transpose", "ishermitian([1 2i; -2i 1])"},
};
// clang-format on

}  // namespace

std::span<const Builtin> linearAlgebraTable() { return kLinearAlgebra; }

}  // namespace kelo::builtins
