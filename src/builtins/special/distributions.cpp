// The order of the guards decides what the degenerate cases give.
#include "builtins/special/distributions.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "builtins/special/error_function.h"
#include "builtins/special/error_inverse.h"
#include "builtins/special/gamma.h"
#include "builtins/special/incomplete_gamma.h"
#include "values/numbers.h"

namespace kelo::special {
namespace {


bool isMean(double mu) { return mu > 0 && mu < kInf; }
bool isWholeInSinglePrecision(double x) { return static_cast<double>(std::ceil(static_cast<float>(x))) == x; }

/// The Poisson distribution function counted from 1: the probability of fewer than k events.
double below(double k, double lambda) { return poissonCdf(k - 1, lambda); }

/// Whole numbers lo < hi with below(lo) <= p < below(hi), or as near to that as the steps come.
struct Bracket {
  double lo, hi;
};

/// Doubling steps from near the square root of lambda, which is below the middle of the
/// distribution for all but small lambda.
Bracket bracketOf(double p, double lambda) {
  double n = std::floor(std::max(std::sqrt(lambda), 5.0));
  double inc = 1;
  if (below(n, lambda) <= p) {
    double lo;
    do {
      lo = n;
      n = n + inc;
      inc = 2 * inc;
    } while (below(n, lambda) < p);
    return {lo, n};
  }
  double step;
  do {
    step = inc;
    n = n - step < 1 ? 0 : n - step;
    inc = 2 * step;
  } while (below(n, lambda) > p);
  return {n, n + step};
}

}  // namespace

double normalPdf(double x, double mu, double sigma) {
  if (sigma <= 0) return kNaN;
  const double z = (x - mu) / sigma;
  return (0.3989422804014327 / sigma) * std::exp(-0.5 * z * z);
}

double normalCdf(double x, double mu, double sigma) {
  if (sigma < 0) return kNaN;
  if (sigma == 0) return 1;
  return 0.5 * erfc(-0.7071067811865476 * (x - mu) / sigma);
}

void normalCdf(double* y, const double* x, int64_t n, double mu, double sigma) {
  if (!(sigma > 0)) {
    for (int64_t i = 0; i < n; ++i) y[i] = normalCdf(x[i], mu, sigma);
    return;
  }
  for (int64_t i = 0; i < n; ++i) y[i] = -0.7071067811865476 * (x[i] - mu) / sigma;
  erfc(y, y, n);
  for (int64_t i = 0; i < n; ++i) y[i] = 0.5 * y[i];
}

double normalInverse(double p, double mu, double sigma) {
  if (sigma <= 0 || p < 0 || p > 1) return kNaN;
  if (p == 0) return -kInf;
  if (p == 1) return kInf;
  return -1.4142135623730951 * sigma * erfcinv(2 * p) + mu;
}

double exponentialPdf(double x, double mu) {
  if (!isMean(mu)) return kNaN;
  if (x < 0) return 0;
  return (1 / mu) * std::exp(-x / mu);
}

double exponentialCdf(double x, double mu) {
  if (!isMean(mu)) return kNaN;
  if (x < 0) return 0;
  return 1 - std::exp(-x / mu);
}

double exponentialInverse(double p, double mu) {
  if (!isMean(mu) || p < 0 || p > 1) return kNaN;
  if (p == 1) return kInf;
  return -std::log(1 - p) / (1 / mu);
}

double poissonPdf(double x, double lambda) {
  if (lambda < 0) return kNaN;
  if (std::isinf(lambda)) return 0;
  if (std::isnan(lambda)) return kNaN;
  if (x < 0) return 0;
  if (!std::isfinite(x)) return kNaN;
  if (lambda == 0 && x == 0) return 1;
  if (!isWholeInSinglePrecision(x)) return 0;
  return std::exp(x * std::log(lambda) - lambda - gammln(x + 1));
}

double poissonCdf(double x, double lambda) {
  if (lambda < 0) return kNaN;
  if (std::isinf(lambda)) return 0;
  if (std::isnan(lambda)) return kNaN;
  if (x < 0) return 0;
  if (std::isinf(x)) return 1;
  if (std::isnan(x)) return kNaN;
  return gammq(std::floor(x + 1), lambda);
}

double poissonInverse(double p, double lambda) {
  if (lambda < 0) return kNaN;
  if (lambda == 0) return p >= 0 && p <= 1 ? 0 : kNaN;
  if (std::isnan(lambda)) return kNaN;
  if (p == 0) return 0;
  if (std::isinf(lambda) || p < 0) return kNaN;
  if (p == 1) return kInf;
  if (!(p < 1)) return kNaN;
  if (std::exp(-lambda) > p) return 0;
  auto [lo, hi] = bracketOf(p, lambda);
  while (hi - lo > 1) {
    const double mid = std::floor(lo + (hi - lo) / 2);
    if (mid == lo || mid == hi) break;  // past 2^53 the whole numbers lie further apart
    (below(mid, lambda) <= p ? lo : hi) = mid;
  }
  return lo;
}

}  // namespace kelo::special
