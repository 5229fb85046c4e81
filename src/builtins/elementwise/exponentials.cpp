// Exponentials, logarithms and roots. `log` and `sqrt` of an array with a negative element are
// complex as a whole; log2 and log10 of a negative number are NaN; reallog and realsqrt refuse it.
// NOTE: intended.
#include "builtins/elementwise/complex_blocks.h"
#include "builtins/elementwise/kernels.h"
#include "builtins/library.h"
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

NodeValue applied(const Function& f, Call& call) {
  NumericArray a = read::takeNumeric(call, 0, Wording::sentence(text::kNumericForExponentials));
  if (a.is(Kind::Complex)) {
    if (!f.complex) throw Wording::sentence(text::kRealInput).complaint(call);
    if (f.real == VectorFunction::sqrt) return complexRoots(a.asComplex());
    return unaryLoop(std::move(a).take<ComplexDouble>(), [&](ComplexDouble z) noexcept { return f.complex(z); });
  }
  DoubleArray x = std::move(a).toDoubleArray();
  const auto routine = platform::vectorRoutine(f.real);
  const Domain domain = f.below0 == Below0::real ? Domain::everywhere : Domain::fromZero;
  if (auto result = mapInside(x, domain, routine)) return std::move(*result);
  if (f.below0 == Below0::refused) throw Wording::sentence(text::kNonNegativeInputs).complaint(call);
  return f.real == VectorFunction::sqrt ? complexRoots(x) : complexLogarithms(x);
}

template <VectorFunction kReal, ComplexFunction kComplex, Below0 kBelow0 = Below0::real>
NodeValue exponential(Call& call) {
  return applied({kReal, kComplex, kBelow0}, call);
}

// clang-format off
constexpr Builtin kExponentials[] = {
    {"exp",      exponential<VectorFunction::exp, kExp>,                      {1, 1}, 1, "A",
     "Exponential, e to the power A", "exp([0 1 2])"},
    {"log2",     exponential<VectorFunction::log2, kLog2>,                    {1, 1}, 1, "A",
     "Logarithm to the base 2", "log2([1 2 8])"},
    {"log10",    exponential<VectorFunction::log10, kLog10>,                  {1, 1}, 1, "A",
     "Logarithm to the base 10", "log10([1 10 1000])"},
    {"log",      exponential<VectorFunction::log, kLog, Below0::complex>,     {1, 1}, 1, "A",
     "Natural logarithm, complex for negative numbers", "log([1 exp(1)])"},
    {"reallog",  exponential<VectorFunction::log, nullptr, Below0::refused>,  {1, 1}, 1, "A",
     "Natural logarithm of non-negative numbers", "reallog([1 exp(1)])"},
    {"sqrt",     exponential<VectorFunction::sqrt, kSqrt, Below0::complex>,   {1, 1}, 1, "A",
     "Square root, complex for negative numbers", "sqrt([4 9])"},
    {"realsqrt", exponential<VectorFunction::sqrt, nullptr, Below0::refused>, {1, 1}, 1, "A",
     "Square root of non-negative numbers", "realsqrt([4 9])"},
};
// clang-format on

}  // namespace

std::span<const Builtin> exponentialsTable() { return kExponentials; }

}  // namespace kelo::builtins
