// Inverses of the error functions, as plain functions of doubles.
#pragma once

namespace kelo::special {

/// The x with erfc(x) == p. NOTE: intended: 100 for p <= 0 and -100 for p >= 2, no infinities.
/// source: a rational first guess and two steps of Halley's method; close to double precision
double erfcinv(double p);
/// The x with erf(x) == p: erfcinv(1 - p).
double erfinv(double p);

}  // namespace kelo::special
