#include "builtins/special/error_function.h"

#include <cmath>
#include <iterator>

namespace kelo::special {
namespace {

constexpr double kCoefficients[] = {-1.3026537197817094,
                                    0.6419697923564902,
                                    0.019476473204185836,
                                    -0.00956151478680863,
                                    -0.000946595344482036,
                                    0.000366839497852761,
                                    4.2523324806907e-05,
                                    -2.0278578112534e-05,
                                    -1.624290004647e-06,
                                    1.30365583558e-06,
                                    1.5626441722e-08,
                                    -8.5238095915e-08,
                                    6.529054439e-09,
                                    5.059343495e-09,
                                    -9.91364156e-10,
                                    -2.27365122e-10,
                                    9.6467911e-11,
                                    2.394038e-12,
                                    -6.886027e-12,
                                    8.94487e-13,
                                    3.13092e-13,
                                    -1.12708e-13,
                                    3.81e-16,
                                    7.106e-15,
                                    -1.523e-15,
                                    -9.4e-17,
                                    1.21e-16,
                                    -2.8e-17};

/// erfc(z) for z >= 0, by Clenshaw's recurrence.
double core(double z) {
  const double t = 2 / (2 + z), ty = 4 * t - 2;
  double d = 0, dd = 0;
  for (size_t j = std::size(kCoefficients) - 1; j > 0; --j) {
    const double last = d;
    d = ty * d - dd + kCoefficients[j];
    dd = last;
  }
  return t * std::exp(-z * z + 0.5 * (kCoefficients[0] + ty * d) - dd);
}

}  // namespace

double erf(double x) { return x >= 0 ? 1 - core(x) : core(-x) - 1; }
double erfc(double x) { return x >= 0 ? core(x) : 2 - core(-x); }

}  // namespace kelo::special
