// Exponentials, logarithms and roots. `log` and `sqrt` of an array with a negative element are complex as a whole; log2
// and log10 of a negative number are NaN; reallog and realsqrt refuse it. NOTE: intended.
#include "builtins/elementwise/handlers.h"
#include "builtins/elementwise/kernels.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"
#include "platform/vector_math.h"

namespace kelo::builtins {
namespace {

using platform::VectorFunction;
using C = std::complex<double>;

enum class Below0 : uint8_t { real, complex, refused };  // what negative elements make of an array

struct Function {
  VectorFunction real;
  ComplexFunction complex;  // null: complex arrays are refused
  Below0 below0;
};

constexpr ComplexFunction kExp = ofLibrary<[](C z) { return std::exp(z); }>;
constexpr ComplexFunction kLog = ofLibrary<[](C z) { return std::log(z); }>;
constexpr ComplexFunction kLog2 = ofLibrary<[](C z) { return std::log(z) / 0.6931471805599453; }>;
constexpr ComplexFunction kLog10 = ofLibrary<[](C z) { return std::log(z) / 2.302585092994046; }>;
constexpr ComplexFunction kSqrt = ofLibrary<[](C z) { return std::sqrt(z); }>;

// In the order of the selectors.
constexpr Function kFunctions[] = {
    /* exp      */ {VectorFunction::exp, kExp, Below0::real},
    /* log2     */ {VectorFunction::log2, kLog2, Below0::real},
    /* log10    */ {VectorFunction::log10, kLog10, Below0::real},
    /* log      */ {VectorFunction::log, kLog, Below0::complex},
    /* reallog  */ {VectorFunction::log, nullptr, Below0::refused},
    /* sqrt     */ {VectorFunction::sqrt, kSqrt, Below0::complex},
    /* realsqrt */ {VectorFunction::sqrt, nullptr, Below0::refused},
};

}  // namespace

NodeValue exponential(Call& call) {
  const Function& f = kFunctions[call.builtin.selector];
  NumericArray a = read::takeNumeric(call, 0, Wording::sentence(text::kNumericForExponentials));
  if (a.is(Kind::Complex)) {
    if (!f.complex) throw Wording::sentence(text::kRealInput).complaint(call);
    return unaryLoop(std::move(a).take<ComplexDouble>(), [&](ComplexDouble z) noexcept { return f.complex(z); });
  }
  DoubleArray x = std::move(a).toDoubleArray();
  const auto routine = platform::vectorRoutine(f.real);
  if (f.below0 == Below0::real) return mapBlocks(std::move(x), routine);
  if (auto result = mapInside(
          x, [](double re) { return re < 0; }, routine))
    return std::move(*result);
  if (f.below0 == Below0::refused) throw Wording::sentence(text::kNonNegativeInputs).complaint(call);
  return unaryLoop(std::move(x), [&](double re) noexcept { return f.complex({re, 0.0}); });
}

}  // namespace kelo::builtins
