// The handlers of the element-wise family, which elementwise_table.cpp joins with their names, and the selectors of
// those that serve several names by case (the others read their selector as the row of a table).
#pragma once

#include "interpreter/builtin.h"

namespace kelo::builtins {

enum class ComplexPart : int { complex, abs, sign, angle, conj, cplxpair, real, imag };
enum class Remainder : int { rem, mod };
enum class Logic : int { and_, eq, ge, gt, le, lt, ne, not_, or_, xor_ };
enum class Division : int { ldivide, rdivide, mldivide, mrdivide };
enum class Product : int { times, mtimes };
enum class Power : int { power, mpower, realpow };

NodeValue trigonometric(Call& call);  // trigonometry.cpp
NodeValue exponential(Call& call);    // exponentials.cpp
NodeValue rounding(Call& call);       // rounding.cpp
NodeValue complexParts(Call& call);   // complex_parts.cpp
NodeValue makeComplex(Call& call);
NodeValue remainders(Call& call);  // remainders.cpp
NodeValue factorial(Call& call);   // sequences.cpp
NodeValue fibonacci(Call& call);
NodeValue pi(Call& call);  // constants.cpp
NodeValue eps(Call& call);
NodeValue logic(Call& call);     // logic.cpp
NodeValue division(Call& call);  // arithmetic.cpp
NodeValue product(Call& call);
NodeValue power(Call& call);

}  // namespace kelo::builtins
