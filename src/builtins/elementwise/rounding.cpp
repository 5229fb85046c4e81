// Rounding to whole numbers; of a complex number each part by itself.
#include "builtins/elementwise/handlers.h"
#include "builtins/elementwise/kernels.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"
#include "platform/vector_math.h"

namespace kelo::builtins {
namespace {

using platform::VectorFunction;

// In the order of the selectors.
constexpr VectorFunction kFunctions[] = {VectorFunction::ceil, VectorFunction::fix, VectorFunction::floor,
                                         VectorFunction::round};

}  // namespace

NodeValue rounding(Call& call) {
  const auto routine = platform::vectorRoutine(kFunctions[call.builtin.selector]);
  NumericArray a = read::takeNumeric(call, 0, Wording::sentence(text::kNumericForRounding));
  if (!a.is(Kind::Complex)) return mapBlocks(std::move(a).toDoubleArray(), routine);
  return unaryLoop(std::move(a).take<ComplexDouble>(), [&](ComplexDouble z) noexcept {
    double parts[] = {z.real, z.imaginary};
    routine(parts, parts, 2);
    return ComplexDouble{parts[0], parts[1]};
  });
}

}  // namespace kelo::builtins
