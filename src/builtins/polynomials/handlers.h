// The handlers of polynomials, signals and calculus, which polynomials_table.cpp joins with their
// names.
#pragma once

#include "interpreter/builtin.h"

namespace kelo::builtins {

enum class VectorProduct : int { dot, cross };

NodeValue conv(Call& call);  // convolution.cpp
NodeValue deconv(Call& call);
NodeValue filter(Call& call);   // filter.cpp
NodeValue polyval(Call& call);  // polyval.cpp
NodeValue polyfit(Call& call);  // polyfit.cpp
NodeValue poly(Call& call);     // roots.cpp
NodeValue roots(Call& call);
NodeValue compan(Call& call);
NodeValue polyder(Call& call);  // derivatives.cpp
NodeValue polyint(Call& call);
NodeValue diff(Call& call);  // differences.cpp
NodeValue gradient(Call& call);
NodeValue vectorProduct(Call& call);  // vector_products.cpp
NodeValue cplxpair(Call& call);       // cplxpair.cpp

}  // namespace kelo::builtins
