// Error functions and probability distributions: the scalar functions of this folder on each
// element of arrays.
//
// A distribution takes its first argument and its parameters of one size; a scalar among them
// stands for all elements. There is no implicit expansion beyond that. NOTE: intended
#include <array>
#include <optional>

#include "builtins/elementwise/kernels.h"
#include "builtins/library.h"
#include "builtins/special/distributions.h"
#include "builtins/special/error_function.h"
#include "builtins/special/error_inverse.h"
#include "interpreter/reader.h"
#include "messages/catalogue/distributions.h"
#include "messages/catalogue/values.h"
#include "values/elementwise.h"

namespace kelo::builtins {
namespace {

// ---- Error functions

DoubleArray takeErrorArgument(Call& call) {
  read::numeric(call, 0, Wording::sentence(text::kErrorFunctionNumeric));
  return read::takeReal(call, 0, Wording::sentence(text::kErrorFunctionReal));
}

template <void (*kFunction)(double*, const double*, int64_t)>
NodeValue errorFunction(Call& call) {
  return mapBlocks(takeErrorArgument(call), kFunction);
}

template <double (*kFunction)(double)>
NodeValue errorInverse(Call& call) {
  return unaryLoop(takeErrorArgument(call), [](double x) noexcept { return kFunction(x); });
}

// ---- Distributions

struct Distribution {
  using OfOneParameter = double (*)(double, double);
  using OfTwoParameters = double (*)(double, double, double);
  using OfMany = void (*)(double* y, const double* x, int64_t n, double mu, double sigma);

  constexpr Distribution(OfOneParameter f, const char* first, const char* second, const char* both, double standard = 0)
      : one(f), names{first, second, nullptr}, signatures{first, both, nullptr}, defaults{standard, 0} {}
  constexpr Distribution(OfTwoParameters f, const char* first, const char* firstAndMean, const char* all,
                         OfMany ofMany = nullptr)
      : two(f), names{first, "mu", "sigma"}, signatures{first, firstAndMean, all}, defaults{0, 1}, many(ofMany) {}

  OfOneParameter one = nullptr;
  OfTwoParameters two = nullptr;
  const char* names[3];       // of the arguments
  const char* signatures[3];  // by the number of arguments given
  double defaults[2];         // of the parameters
  /// The same for many numbers and parameters that are one each, where that is faster; y is not x.
  OfMany many = nullptr;
};

constexpr Distribution kNormalPdf{special::normalPdf, "x", "x, mu", "x, mu, sigma"};
constexpr Distribution kNormalCdf{special::normalCdf, "x", "x, mu", "x, mu, sigma", special::normalCdf};
constexpr Distribution kNormalInverse{special::normalInverse, "p", "p, mu", "p, mu, sigma"};
constexpr Distribution kPoissonPdf{special::poissonPdf, "x", "lambda", "x, lambda"};
constexpr Distribution kPoissonCdf{special::poissonCdf, "x", "lambda", "x, lambda"};
constexpr Distribution kPoissonInverse{special::poissonInverse, "p", "lambda", "p, lambda"};
constexpr Distribution kExponentialPdf{special::exponentialPdf, "x", "mu", "x, mu", 1};
constexpr Distribution kExponentialCdf{special::exponentialCdf, "x", "mu", "x, mu", 1};
constexpr Distribution kExponentialInverse{special::exponentialInverse, "p", "mu", "p, mu", 1};

using Arguments = std::array<DoubleArray, 3>;

Arguments readArguments(Call& call, const Distribution& distribution) {
  Arguments result = {DoubleArray(0.0), DoubleArray(distribution.defaults[0]), DoubleArray(distribution.defaults[1])};
  const char* signature = distribution.signatures[call.count() - 1];
  for (int k = 0; k < call.count(); ++k) {
    read::numeric(call, k, {signature, distribution.names[k], predicate::kNumericArray});
    result[static_cast<size_t>(k)] =
        read::takeReal(call, k, {signature, distribution.names[k], text::kDistributionReals});
  }
  return result;
}

/// The one size of all that are no scalars. throws Problem "Incompatible array sizes"
SizeVector commonSize(const Arguments& arguments) {
  SizeVector size = SizeVector::scalar();
  for (const DoubleArray& a : arguments) {
    if (a.isScalar()) continue;
    if (!size.isScalar() && !(size == a.size())) throw problem(text::kIncompatibleSizes);
    size = a.size();
  }
  return size;
}

template <class F>
DoubleArray mapTogether(const Arguments& arguments, F f) {
  DoubleArray result = DoubleArray::uninitialized(commonSize(arguments));
  double* y = result.writable();
  const double* x[3];
  int64_t stride[3];
  for (size_t k = 0; k < 3; ++k) {
    x[k] = arguments[k].data();
    stride[k] = arguments[k].isScalar() ? 0 : 1;
  }
  platform::parallelFor(result.numElements(), [=](int64_t begin, int64_t end) {
    for (int64_t i = begin; i < end; ++i) y[i] = f(x[0][i * stride[0]], x[1][i * stride[1]], x[2][i * stride[2]]);
  });
  return result;
}

NodeValue applied(const Distribution& distribution, Call& call) {
  const Arguments arguments = readArguments(call, distribution);
  if (distribution.many && arguments[1].isScalar() && arguments[2].isScalar()) {
    return mapBlocks(arguments[0], [&](double* y, const double* x, int64_t n) {
      distribution.many(y, x, n, arguments[1].scalar(), arguments[2].scalar());
    });
  }
  if (distribution.two) return mapTogether(arguments, distribution.two);
  return mapTogether(arguments, [f = distribution.one](double x, double parameter, double) { return f(x, parameter); });
}

template <const Distribution& kDistribution>
NodeValue distribution(Call& call) {
  return applied(kDistribution, call);
}

// ---- The table

// clang-format off
constexpr Builtin kSpecial[] = {
    {"erf",      errorFunction<special::erf>,       {1, 1}, 1, "x",
     "Error function", "erf([0 0.5 1])", {.inputs = text::kErrorFunctionInputs}},
    {"erfc",     errorFunction<special::erfc>,      {1, 1}, 1, "x",
     "Complementary error function, 1 - erf(x)", "erfc([0 0.5 1])", {.inputs = text::kErrorFunctionInputs}},
    {"erfinv",   errorInverse<special::erfinv>,     {1, 1}, 1, "x",
     "Number with the given value of the error function", "erfinv([0 0.5 0.9])",
     {.inputs = text::kErrorFunctionInputs}},
    {"erfcinv",  errorInverse<special::erfcinv>,    {1, 1}, 1, "x",
     "Number with the given value of the complementary error function", "erfcinv([0.1 1])",
     {.inputs = text::kErrorFunctionInputs}},

    {"normpdf",  distribution<kNormalPdf>,          {1, 3}, 1, "x, mu, sigma",
     "Density of the normal distribution", "normpdf([-1 0 1])"},
    {"normcdf",  distribution<kNormalCdf>,          {1, 3}, 1, "x, mu, sigma",
     "Probability of a normal number up to x", "normcdf([-1 0 1], 0, 2)"},
    {"norminv",  distribution<kNormalInverse>,      {1, 3}, 1, "p, mu, sigma",
     "Number that a normal one stays below with probability p", "norminv([0.025 0.975])"},
    {"poisscdf", distribution<kPoissonCdf>,         {2, 2}, 1, "x, lambda",
     "Probability of up to x events, lambda on average", "poisscdf(0:4, 2)"},
    {"poissinv", distribution<kPoissonInverse>,     {2, 2}, 1, "p, lambda",
     "Number of events that is passed with probability 1 - p, lambda on average", "poissinv(0.95, 2)"},
    {"poisspdf", distribution<kPoissonPdf>,         {2, 2}, 1, "x, lambda",
     "Probability of x events, lambda on average", "poisspdf(0:4, 2)"},
    {"exppdf",   distribution<kExponentialPdf>,     {1, 2}, 1, "x, mu",
     "Density of the exponential distribution with mean mu", "exppdf([0 1 2], 2)"},
    {"expcdf",   distribution<kExponentialCdf>,     {1, 2}, 1, "x, mu",
     "Probability of an exponential number up to x", "expcdf([0 1 2], 2)"},
    {"expinv",   distribution<kExponentialInverse>, {1, 2}, 1, "p, mu",
     "Number that an exponential one stays below with probability p", "expinv([0.5 0.95], 2)"},
};
// clang-format on

}  // namespace

std::span<const Builtin> specialTable() { return kSpecial; }

}  // namespace kelo::builtins
