// The handlers of the functions of matrices, which linear_algebra.cpp joins with their names.
#pragma once

#include "interpreter/builtin.h"

namespace kelo::builtins::linear_algebra {

enum class Band : int { isdiag, istril, istriu, isbanded };
enum class Symmetry : int { issymmetric, ishermitian };

NodeValue linsolve(Call& call);  // solving.cpp
NodeValue inv(Call& call);
NodeValue rcond(Call& call);
NodeValue det(Call& call);
NodeValue lu(Call& call);  // factors.cpp
NodeValue qr(Call& call);
NodeValue svd(Call& call);
NodeValue eig(Call& call);
NodeValue pinv(Call& call);  // ranks.cpp
NodeValue rank(Call& call);
NodeValue norm(Call& call);
NodeValue rref(Call& call);
NodeValue band(Call& call);  // predicates.cpp
NodeValue bandwidth(Call& call);
NodeValue symmetry(Call& call);

}  // namespace kelo::builtins::linear_algebra
