#include "builtins/elementwise/domain.h"

#include <cmath>

#include "builtins/elementwise/kernels.h"
#include "platform/vector_clones.h"

namespace kelo::builtins {

KELO_VECTOR_CLONES bool anyOutside(Domain domain, const double* x, int64_t n) {
  switch (domain) {
    case Domain::everywhere: return false;
    case Domain::fromZero: return anyOf(x, n, [](double v) { return v < 0; });
    case Domain::withinOne: return anyOf(x, n, [](double v) { return std::fabs(v) > 1; });
    case Domain::fromOne: return anyOf(x, n, [](double v) { return v < 1; });
    case Domain::beyondOne: return anyOf(x, n, [](double v) { return std::fabs(v) < 1; });
    case Domain::unitInterval: break;
  }
  return anyOf(x, n, [](double v) { return !(v >= 0 && v <= 1); });
}

}  // namespace kelo::builtins
