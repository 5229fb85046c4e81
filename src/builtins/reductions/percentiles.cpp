// prctile and quantile: one handler; they differ in the scale of the fractions, 100 or 1.
//
// Without a dimension the result for a vector has the shape of the fractions; otherwise they stand
// along the dimension that was reduced (the first one of several).
#include "builtins/reductions/handlers.h"
#include "builtins/reductions/order_statistics.h"
#include "messages/catalogue/reductions.h"
#include "values/memory.h"

namespace kelo::builtins {
namespace {

struct Words {
  Wording array;
  Wording fractions;
  double scale;
};

const Words& wordsOf(const Call& call) {
  static constexpr Words kWords[2][2] = {
      {{{"A, p", "A", text::kArrayOfRealNumbers}, {"A, p", "p", text::kUpToHundred}, 100},
       {{"A, q", "A", text::kArrayOfRealNumbers}, {"A, q", "q", text::kUpToOne}, 1}},
      {{{"A, p, dim", "A", text::kArrayOfRealNumbers}, {"A, p, dim", "p", text::kUpToHundred}, 100},
       {{"A, q, dim", "A", text::kArrayOfRealNumbers}, {"A, q, dim", "q", text::kUpToOne}, 1}}};
  return kWords[call.count() == 3][call.selector<Percentile>() == Percentile::quantile];
}

DoubleArray readArray(const Call& call, const Words& words) {
  const NumericArray& a = read::numeric(call, 0, words.array);
  if (!a.has(Property::allReals)) throw expectation(text::kPercentilesOfComplex);
  return a.toDoubleArray();
}

DoubleArray readFractions(const Call& call, const Words& words) {
  if (read::nonChar(call, 1, words.fractions).isEmpty()) throw words.fractions.complaint(call);
  DoubleArray fractions = read::real(call, 1, words.fractions);
  const auto isInside = [&](double x) { return x >= 0 && x <= words.scale; };
  const auto values = fractions.values();
  if (!fractions.size().isVector() || !std::all_of(values.begin(), values.end(), isInside)) {
    throw words.fractions.complaint(call);
  }
  return fractions;
}

DoubleArray percentilesAlong(const DoubleArray& a, int64_t d, const DoubleArray& fractions, double scale) {
  const int64_t n = fractions.numElements();
  if (n > 1 && d > arrayByteLimit() / int64_t{sizeof(int64_t)}) throw OutOfMemory();
  const Slices s(a.size(), d);
  auto result = DoubleArray::uninitialized(reducedSize(a.size(), d, n));
  double* out = result.writable();
  forGatheredSlices(s, a.data(), [&](int64_t k, double* x) {
    std::vector<double> values(static_cast<size_t>(n));
    quantiles(std::span(x, static_cast<size_t>(s.length)), fractions.values(), scale, values.data());
    double* place = out + k / s.inner * s.inner * n + k % s.inner;
    for (int64_t i = 0; i < n; ++i) place[i * s.inner] = values[static_cast<size_t>(i)];
  });
  return result;
}

}  // namespace

NodeValue percentile(Call& call) {
  const Words& words = wordsOf(call);
  DoubleArray a = readArray(call, words);
  const DoubleArray fractions = readFractions(call, words);
  if (call.count() == 2) {
    DoubleArray result = percentilesAlong(a, a.size().defaultDimension(), fractions, words.scale);
    if (a.size().isVector()) return std::move(result).reshaped(fractions.size());
    return result;
  }
  const auto dimensions = namedDimensions(call.arg(2), a.size());
  if (!dimensions) throw Wording::sentence(text::kPercentileDimensions).complaint(call);
  if (dimensions->size() > 1) a = joinDimensions(a, *dimensions);
  return percentilesAlong(a, dimensions->front(), fractions, words.scale);
}

}  // namespace kelo::builtins
