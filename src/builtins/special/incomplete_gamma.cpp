#include "builtins/special/incomplete_gamma.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "builtins/special/gamma.h"

namespace kelo::special {
namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
constexpr double kTiny = 1.0020841800044864e-292;  // the smallest normal number / kEpsilon
constexpr double kTinyReciprocal = 9.9792015476736e291;
constexpr double kQuadratureFrom = 100;

// Abscissas and weights of the quadrature, for the unit interval.
constexpr double kAbscissas[] = {0.0021695375159141994, 0.011413521097787704, 0.027972308950302116, 0.05172701560049242,
                                 0.08250222548434094,   0.12007019910960293,  0.1641528330075247,   0.21442376986779355,
                                 0.27051082840644336,   0.33199876341447887,  0.39843234186401943,  0.46931971407375483,
                                 0.5441360555665797,    0.6223274528803108,   0.7033150046559717,   0.7864991076831345,
                                 0.8712638961906152,    0.9569818015262914};
constexpr double kWeights[] = {0.005565719664244557, 0.01291594728406542, 0.020181515297735382, 0.027298621498568734,
                               0.03421381077029954,  0.04087575092364326, 0.04723508349026558,  0.05324471397775969,
                               0.0588601442453248,   0.06403979735501548, 0.06874532383573641,  0.07294188500565309,
                               0.07659841064587064,  0.07968782891207167, 0.0821872667043397,   0.08407821897966195,
                               0.08534668573933872,  0.08598327567039482};

double awayFromZero(double x) { return std::abs(x) < kTiny ? kTiny : x; }

/// x^a * exp(-x) / gamma(a)
double front(double a, double x) { return std::exp(a * std::log(x) - x - gammln(a)); }

}  // namespace

double gser(double a, double x) {
  double ap = a;
  double del = 1 / a;
  double sum = del;
  do {
    ap = ap + 1;
    del = del * x / ap;
    sum = sum + del;
  } while (std::abs(del) >= std::abs(sum) * kEpsilon);
  return sum * front(a, x);
}

double gcf(double a, double x) {
  double b = x + 1 - a;
  double c = kTinyReciprocal;
  double d = 1 / b;
  double h = d;
  double del;
  double i = 1;
  do {
    const double an = -i * (i - a);
    b = b + 2;
    d = 1 / awayFromZero(an * d + b);
    c = awayFromZero(b + an / c);
    del = d * c;
    h = h * del;
    i = i + 1;
  } while (std::abs(del - 1) > kEpsilon);
  return front(a, x) * h;
}

double gammpapprox(double a, double x, Tail tail) {
  const double a1 = a - 1, lna1 = std::log(a1), sqrta1 = std::sqrt(a1), gln = gammln(a);
  const bool isUpper = x > a1;  // the shorter tail: above x, or below it with a negative sign
  const double xu = isUpper ? std::max(a1 + 11.5 * sqrta1, x + 6 * sqrta1)
                            : std::max(0.0, std::min(a1 - 7.5 * sqrta1, x - 5 * sqrta1));
  double sum = 0;
  for (size_t j = 0; j < std::size(kAbscissas); ++j) {
    const double t = x + (xu - x) * kAbscissas[j];
    sum = sum + kWeights[j] * std::exp(-(t - a1) + a1 * (std::log(t) - lna1));
  }
  const double ans = sum * (xu - x) * std::exp(a1 * (lna1 - 1) - gln);
  // Not the sign of `ans` decides: it is lost where the tail is below the least double.
  if (tail == Tail::lower) return isUpper ? 1 - ans : -ans;
  return isUpper ? ans : 1 + ans;
}

double gammq(double a, double x) {
  if (x == 0) return 1;
  if (a >= kQuadratureFrom) return gammpapprox(a, x, Tail::upper);
  return x < a + 1 ? 1 - gser(a, x) : gcf(a, x);
}

}  // namespace kelo::special
