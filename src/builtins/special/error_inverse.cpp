#include "builtins/special/error_inverse.h"

#include <cmath>

namespace kelo::special {

double erfcinv(double p) {
  if (p >= 2) return -100;
  if (p <= 0) return 100;
  const double pp = p < 1 ? p : 2 - p;
  const double t = std::sqrt(-2 * std::log(pp / 2));
  double x = -0.70711 * ((2.30753 + t * 0.27061) / (1 + t * (0.99229 + t * 0.04481)) - t);
  for (int step = 0; step < 2; ++step) {
    const double error = std::erfc(x) - pp;
    x += error / (1.1283791670955126 * std::exp(-x * x) - x * error);
  }
  return p < 1 ? x : -x;
}

double erfinv(double p) { return erfcinv(1 - p); }

}  // namespace kelo::special
