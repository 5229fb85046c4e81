// Random numbers. All functions draw from the one stream of the application and leave its state in
// randState; the end of the run makes it durable.
#include <cmath>

#include "builtins/library.h"
#include "builtins/random/drawn_arguments.h"
#include "builtins/random/kl_rand.h"
#include "interpreter/environment.h"
#include "interpreter/reader.h"
#include "messages/catalogue/random.h"

namespace kelo::builtins {
namespace {

/// fill(generator, elements) for a new array.
template <class Fill>
DoubleArray draw(Call& call, const SizeVector& size, Fill fill) {
  DoubleArray result = DoubleArray::uninitialized(size);
  fill(KLRand(call.environment.randState, call.environment.clock),
       std::span(result.writable(), static_cast<size_t>(size.numElements())));
  return result;
}

const DoubleArray kZero(0.0), kOne(1.0);

// ---- Uniform and standard normal numbers

NodeValue rand(Call& call) {
  return draw(call, drawnSize(call, 0, sizeComplaint), [](KLRand random, auto out) { random.randomDoubleArray(out); });
}

NodeValue randn(Call& call) {
  return draw(call, drawnSize(call, 0, sizeComplaint),
              [](KLRand random, auto out) { random.randomNormalArray(kZero, kOne, out); });
}

/// The form of `randi` in use, and the words about its size.
Wording formOfRandi(const Call& call) {
  if (call.count() == 1) return {"imax", nullptr, nullptr};
  if (call.count() > 2) return {"imax, s1, s2, ...", "si", text::kEachLength};
  if (call.arg(1).isArray() && !call.arg(1).size().isScalar()) {
    return {"imax, sizeVec", "sizeVec", text::kSizeOfLengths};
  }
  return {"imax, n", "n", text::kScalarLength};
}

NodeValue randi(Call& call) {
  const int64_t max = read::integer(call, 0, {formOfRandi(call).signature, "imax", text::kLargestInteger}, 1);
  return draw(call, drawnSize(call, 1, [](const Call& c, int) { return formOfRandi(c).complaint(c); }),
              [=](KLRand random, auto out) { random.randomIntegerArray(max, out); });
}

// ---- Numbers of a distribution with parameters

bool isPositive(double x) { return x > 0 && std::isfinite(x); }
bool isFinite(double x) { return std::isfinite(x); }
bool isNotNegative(double x) { return x >= 0 && std::isfinite(x); }

struct MeanAndSize {
  DoubleArray mean;
  SizeVector size;
};

MeanAndSize readMean(const Call& call) {
  DoubleArray mean = drawnParameters(call, 0, isPositive, [](const Call&, int position) {
    return problem(text::argumentInvalid(position), text::kPositiveNumbersHint);
  });
  if (call.count() == 1) return {mean, mean.size()};
  SizeVector size = drawnSize(call, 1, sizeComplaint);
  if (!mean.isScalar() && !(mean.size() == size)) {
    throw Wording::sentence(call.count() == 2 ? text::kMeanAndSize : text::kMeanAndLengths).complaint(call);
  }
  return {mean, size};
}

NodeValue exprnd(Call& call) {
  const MeanAndSize given = readMean(call);
  return draw(call, given.size, [&](KLRand random, auto out) { random.randomExponArray(given.mean, out); });
}

NodeValue poissrnd(Call& call) {
  const MeanAndSize given = readMean(call);
  return draw(call, given.size, [&](KLRand random, auto out) { random.randomPoissonArray(given.mean, out); });
}

const char* sizesOfMeanAndDeviation(const Call& call) {
  if (call.count() == 2) return text::kMeanAndDeviation;
  if (call.count() > 3) return text::kMeanDeviationAndLengths;
  return call.arg(2).size().isScalar() ? text::kMeanDeviationAndLength : text::kMeanDeviationAndSize;
}

NodeValue normrnd(Call& call) {
  const DoubleArray mean =
      drawnParameters(call, 0, isFinite, [](const Call&, int) { return expectation(text::kMeanNumbers); });
  const DoubleArray deviation =
      drawnParameters(call, 1, isNotNegative, [](const Call&, int) { return expectation(text::kDeviationNumbers); });
  const SizeVector size =
      call.count() > 2 ? drawnSize(call, 2, sizeComplaint) : (mean.isScalar() ? deviation : mean).size();
  for (const DoubleArray* parameter : {&mean, &deviation}) {
    if (!parameter->isScalar() && !(parameter->size() == size)) {
      throw Wording::sentence(sizesOfMeanAndDeviation(call)).complaint(call);
    }
  }
  return draw(call, size, [&](KLRand random, auto out) { random.randomNormalArray(mean, deviation, out); });
}

// ---- Permutations and the seed

NodeValue randperm(Call& call) {
  const char* signature = call.count() == 1 ? "n" : "n, k";
  const int64_t n = read::integer(call, 0, {signature, "n", text::kIntegerFromOne}, 1);
  const int64_t k = call.count() == 1 ? n : read::integer(call, 1, {signature, "k", text::kIntegerFromOne}, 1);
  if (k > n) throw Wording::sentence(text::kPermutationTooShort).complaint(call);
  DoubleArray all = draw(call, SizeVector(1, n), [](KLRand random, auto out) { random.randomPermutation(out); });
  if (k == n) return all;
  return DoubleArray::row(all.values().first(static_cast<size_t>(k)));
}

NodeValue rng(Call& call) {
  const int64_t seed = read::integer(call, 0, {"n", "n", text::kSeed}, 0);
  KLRand(call.environment.randState, call.environment.clock).resetStateWithSeed(static_cast<uint64_t>(seed));
  return NodeValue::nothing();
}

// ---- The table

// clang-format off
constexpr Builtin kRandom[] = {
    {"rand",     rand,     {0, kAny}, 1, "s1, s2, ...",
     "Uniform random numbers between 0 and 1", "rand(2, 3)"},
    {"randi",    randi,    {1, kAny}, 1, "imax, s1, s2, ...",
     "Random whole numbers from 1 to imax", "randi(6, 1, 10)"},
    {"randn",    randn,    {0, kAny}, 1, "s1, s2, ...",
     "Normal random numbers of mean 0 and deviation 1", "randn(3)"},
    {"exprnd",   exprnd,   {1, kAny}, 1, "mu, s1, s2, ...",
     "Exponential random numbers with mean mu", "exprnd(2, 1, 5)"},
    {"poissrnd", poissrnd, {1, kAny}, 1, "lambda, s1, s2, ...",
     "Poisson random numbers with mean lambda", "poissrnd(3, 1, 5)"},
    {"normrnd",  normrnd,  {2, kAny}, 1, "mu, sigma, s1, s2, ...",
     "Normal random numbers with mean mu and deviation sigma", "normrnd(10, 2, 1, 5)"},
    {"rng",      rng,      {1, 1},    0, "n",
     "Sets the seed, from which the random numbers follow", "rng(1)"},
    {"randperm", randperm, {1, 2},    1, "n, k",
     "Numbers from 1 to n in random order, or the first k of them", "randperm(5)"},
};
// clang-format on

}  // namespace

std::span<const Builtin> randomTable() { return kRandom; }

}  // namespace kelo::builtins
