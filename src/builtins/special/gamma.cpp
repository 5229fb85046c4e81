// The continued fraction of betai converges fast for x below (a + 1) / (a + b + 2); above, the
// symmetry I(a, b, x) = 1 - I(b, a, 1 - x) leads there.
#include "builtins/special/gamma.h"

#include <cmath>
#include <limits>

#include "messages/catalogue/reductions.h"
#include "messages/message.h"

namespace kelo::special {
namespace {

constexpr double kCoefficients[] = {57.15623566586292,       -59.59796035547549,     14.136097974741746,
                                    -0.4919138160976202,     3.399464998481189e-05,  4.652362892704858e-05,
                                    -9.837447530487956e-05,  0.0001580887032249125,  -0.00021026444172410488,
                                    0.00021743961811521265,  -0.0001643181065367639, 8.441822398385275e-05,
                                    -2.6190838401581408e-05, 3.6899182659531625e-06};

constexpr double kTiny = std::numeric_limits<double>::min() / std::numeric_limits<double>::epsilon();
constexpr int kMostTerms = 10000;

double awayFromZero(double x) { return std::abs(x) < kTiny ? kTiny : x; }

double betaFraction(double a, double b, double x) {
  double c = 1;
  double d = 1 / awayFromZero(1 - (a + b) * x / (a + 1));
  double h = d;
  const auto advance = [&](double coefficient) {
    d = 1 / awayFromZero(1 + coefficient * d);
    c = awayFromZero(1 + coefficient / c);
    h *= d * c;
    return d * c;
  };
  for (int m = 1; m < kMostTerms; ++m) {
    const double n = a + 2 * m;
    advance(m * (b - m) * x / ((n - 1) * n));
    const double change = advance(-(a + m) * (a + b + m) * x / (n * (n + 1)));
    if (std::abs(change - 1) <= std::numeric_limits<double>::epsilon()) break;
  }
  return h;
}

}  // namespace

double gammln(double x) {
  double sum = 0.9999999999999971;
  double y = x;
  for (const double c : kCoefficients) {
    y = y + 1;
    sum = sum + c / y;
  }
  const double t = x + 5.2421875;
  return (x + 0.5) * std::log(t) - t + std::log(2.5066282746310007 * sum / x);
}

double betai(double a, double b, double x) {
  if (a <= 0 || b <= 0) throw expectation(text::kBetaiShape);
  if (x < 0 || x > 1) throw expectation(text::kBetaiArgument);
  if (x == 0 || x == 1 || std::isnan(x)) return x;
  const double front = std::exp(gammln(a + b) - gammln(a) - gammln(b) + a * std::log(x) + b * std::log(1 - x));
  if (x < (a + 1) / (a + b + 2)) return front * betaFraction(a, b, x) / a;
  return 1 - front * betaFraction(b, a, 1 - x) / b;
}

}  // namespace kelo::special
