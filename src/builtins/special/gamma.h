// The logarithm of the gamma function and the incomplete beta function, as plain functions of
// doubles.
#pragma once

namespace kelo::special {

/// log(gamma(x)) for x > 0. source: Lanczos (1964) with 14 coefficients, g = 5.2421875; relative
/// error near 1e-15.
double gammln(double x);

/// The regularized incomplete beta function of x in [0, 1] for a, b > 0; NaN for a NaN.
///
/// throws Problem "Bad a or b in routine betai", "Bad x in routine betai"
/// source: continued fraction (Abramowitz and Stegun 26.5.8) by Lentz's method as modified by
/// Thompson and Barnett; 3e-15 or so
double betai(double a, double b, double x);

}  // namespace kelo::special
