// The regularized incomplete gamma functions, as plain functions of doubles. `gammq` chooses among
// three methods, each of which is good where it is used.
#pragma once

namespace kelo::special {

/// Q(a, x), the upper regularized incomplete gamma function, for a > 0 and x >= 0. Relative error
/// near 1e-15 for small a, 1e-13 or so for large a, where it comes from gammpapprox.
double gammq(double a, double x);

/// P(a, x), the lower function, by its series. Converges fast for x < a + 1. REQUIRES: 0 < x, both
/// finite
double gser(double a, double x);
/// Q(a, x) by its continued fraction (modified Lentz). Converges fast for x > a + 1. REQUIRES: both
/// finite
double gcf(double a, double x);
enum class Tail { lower, upper };

/// P(a, x), the lower tail, or Q(a, x), the upper one, by Gauss-Legendre quadrature of 18 points
/// between x and where the integrand vanishes. For a from 100 on.
double gammpapprox(double a, double x, Tail tail);

}  // namespace kelo::special
