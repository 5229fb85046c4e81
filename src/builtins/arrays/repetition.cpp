// Repetition: of an array in blocks, and of vectors as grids.
#include <algorithm>

#include "builtins/arrays/handlers.h"
#include "interpreter/reader.h"
#include "messages/catalogue/arrays.h"
#include "messages/fatal_fault.h"
#include "values/element_view.h"

namespace kelo::builtins::arrays {
namespace {

// How often to repeat along each dimension; at least two entries.
std::vector<int64_t> countsOfOne(const Call& call) {
  const Wording words{"A, n", "n", text::kRepetitionCounts};
  const NumericArray& n = read::numeric(call, 1, words);
  if (n.isEmpty()) throw Wording{"A, n", "n", text::kNonEmptyCount}.complaint(call);
  auto counts = read::asIntegers(call.arg(1));
  const bool valid = counts && std::ranges::all_of(*counts, [](int64_t c) { return c >= 0; });
  if (!valid || !n.size().isVector()) throw words.complaint(call);
  if (counts->size() == 1) counts->push_back(counts->front());
  return std::move(*counts);
}

std::vector<int64_t> countsOfSeveral(const Call& call) {
  constexpr const char* kSignature = "A, s1, s2, ..., sn";
  std::vector<int64_t> counts;
  for (int k = 1; k < call.count(); ++k) {
    const Storable& argument = call.arg(k);
    if (argument.isArray() && argument.isEmpty()) throw Wording{kSignature, "si", text::kNonEmptyCount}.complaint(call);
    const Wording words{kSignature, "si", text::kRepetitionCount};
    counts.push_back(read::integer(call, k, words, 0));
  }
  return counts;
}

}  // namespace

NodeValue repmat(Call& call) {
  read::array(call, 0, Wording::sentence(text::kRepmatFirst));
  const std::vector<int64_t> counts = call.count() == 2 ? countsOfOne(call) : countsOfSeveral(call);
  const SizeVector& size = call.arg(0).size();
  const auto own = axesOf(size, static_cast<int64_t>(counts.size()));
  std::vector<ViewAxis> axes;
  std::vector<int64_t> lengths;
  for (size_t d = 0; d < own.size(); ++d) {
    const int64_t count = d < counts.size() ? counts[d] : 1;
    axes.push_back(own[d]);
    axes.push_back({count, 0});
    lengths.push_back(checkedMultiply(own[d].length, count));
  }
  return viewed(std::move(call.arg(0)), SizeVector(lengths), axes);
}

// Input k runs along one dimension and is repeated along the others. meshgrid takes columns first.
NodeValue grid(Call& call) {
  const bool columnsFirst = call.selector<Grid>() == Grid::meshgrid;
  const int inputs = call.count();
  const int dimensions = std::max(inputs, 2);  // one input counts twice
  if (call.outputCount() > dimensions) throw outputCountComplaint(call.name(), dimensions);
  const auto input = [&](int k) -> const Storable& { return call.arg(inputs == 1 ? 0 : k); };
  const auto dimensionOf = [&](int k) { return static_cast<size_t>(columnsFirst && k < 2 ? 1 - k : k); };

  std::vector<int64_t> lengths(static_cast<size_t>(dimensions));
  for (int k = 0; k < dimensions; ++k) {
    if (k < inputs) {
      const std::string name = "x" + std::to_string(k + 1);
      const Wording words{"x1, x2, ...", name.c_str(), predicate::kVectorOfNumericValues};
      if (!read::numeric(call, k, words).size().isVector()) throw words.complaint(call);
    }
    lengths[dimensionOf(k)] = input(k).numElements();
  }
  std::vector<Storable> outputs;
  for (int k = 0; k < std::min(dimensions, call.outputCount()); ++k) {
    std::vector<ViewAxis> axes;
    for (const int64_t length : lengths) axes.push_back({length, 0});
    axes[dimensionOf(k)].stride = 1;
    outputs.push_back(viewed(input(k), SizeVector(lengths), axes));
  }
  return call.outputs(std::move(outputs));
}

}  // namespace kelo::builtins::arrays
