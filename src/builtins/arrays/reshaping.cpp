// Other shapes of the same elements: reshape keeps their order, the others exchange dimensions.
#include <algorithm>
#include <numeric>

#include "builtins/arrays/handlers.h"
#include "interpreter/reader.h"
#include "messages/catalogue/arrays.h"
#include "messages/fatal_fault.h"
#include "values/element_view.h"
#include "values/memory.h"
#include "values/operators.h"

namespace kelo::builtins::arrays {
namespace {

/// The same elements in another shape. REQUIRES: as many elements
Storable inShape(Storable source, const SizeVector& size) {
  return viewed(std::move(source), size, {{size.numElements(), 1}});
}

std::vector<int64_t> wantedLengths(const Call& call) {
  const Wording words{"A, sizeVec", "sizeVec", text::kReshapeSizes};
  const NumericArray& sizeVec = read::numeric(call, 1, words);
  auto lengths = read::asIntegers(call.arg(1));
  const bool valid = lengths && std::ranges::all_of(*lengths, [](int64_t n) { return n >= 0; });
  if (!valid || !sizeVec.size().isVector()) throw words.complaint(call);
  return std::move(*lengths);
}

// The length that an empty argument leaves to be computed.
int64_t missingLength(int64_t numElements, const std::vector<int64_t>& lengths) {
  int64_t known = 1;
  for (const int64_t length : lengths) known = checkedMultiply(known, length);
  if (known == 0 ? numElements != 0 : numElements % known != 0) throw problem(text::kReshapeCount);
  return known == 0 ? 0 : numElements / known;
}

std::vector<int64_t> wantedLengthsOfSeveral(const Call& call, int64_t numElements) {
  const Wording words{"A, s1, s2, ..., sn", "si", text::kReshapeLength};
  std::vector<int64_t> lengths;
  std::optional<int64_t> missing;
  for (int k = 1; k < call.count(); ++k) {
    const Storable& argument = call.arg(k);
    if (argument.isArray() && argument.isEmpty()) {
      if (missing) throw Wording::sentence(text::kReshapeEmpties).complaint(call);
      missing = k - 1;
      lengths.push_back(1);
    } else {
      lengths.push_back(read::integer(call, k, words, 0));
    }
  }
  if (missing) lengths[static_cast<size_t>(*missing)] = missingLength(numElements, lengths);
  return lengths;
}

}  // namespace

NodeValue reshape(Call& call) {
  const char* signature = call.count() == 2 ? "A, sizeVec" : "A, s1, s2, ..., sn";
  const int64_t numElements = read::array(call, 0, {signature, "A", predicate::kArray}).numElements();
  const SizeVector size(call.count() == 2 ? wantedLengths(call) : wantedLengthsOfSeveral(call, numElements));
  if (size.numElements() != numElements) throw problem(text::kReshapeCount);
  return inShape(std::move(call.arg(0)), size);
}

namespace {

/// Dimension d of the result is dimension order[d] (from 0) of the array. REQUIRES: a permutation
/// of at least ndim entries
Storable permuted(Storable array, const std::vector<int64_t>& order) {
  const auto own = axesOf(array.size(), static_cast<int64_t>(order.size()));
  std::vector<ViewAxis> axes;
  std::vector<int64_t> lengths;
  for (const int64_t d : order) {
    axes.push_back(own[static_cast<size_t>(d)]);
    lengths.push_back(axes.back().length);
  }
  return viewed(std::move(array), SizeVector(lengths), axes);
}

/// A vector that holds each of 1 to its length once, as numbers from 0.
std::vector<int64_t> permutationArgument(const Call& call, int position, const Wording& words) {
  auto order = read::asIntegers(call.arg(position));
  if (!order || !call.arg(position).size().isVector()) throw words.complaint(call);
  std::vector<bool> seen(order->size());
  for (int64_t& d : *order) {
    if (d < 1 || d > static_cast<int64_t>(seen.size()) || seen[static_cast<size_t>(d - 1)]) throw words.complaint(call);
    seen[static_cast<size_t>(--d)] = true;
  }
  return std::move(*order);
}

std::vector<int64_t> inverse(const std::vector<int64_t>& order) {
  std::vector<int64_t> result(order.size());
  for (size_t k = 0; k < order.size(); ++k) result[static_cast<size_t>(order[k])] = static_cast<int64_t>(k);
  return result;
}

}  // namespace

NodeValue permute(Call& call) {
  constexpr const char* kSignature = "A, order";
  read::array(call, 0, {kSignature, "A", predicate::kArray});
  std::vector<int64_t> order = permutationArgument(call, 1, {kSignature, "order", text::kPermutation});
  const auto count = static_cast<int64_t>(order.size());
  if (count < std::max<int64_t>(2, call.arg(0).size().ndim())) throw problem(text::kPermuteTooShort);
  if (call.selector<Permutation>() == Permutation::ipermute) order = inverse(order);
  return permuted(std::move(call.arg(0)), order);
}

namespace {

constexpr int64_t kMostLeadingOnes = 1 << 20;  // a bound for memory, far from any need

int64_t leadingOnes(const SizeVector& size) { return size.defaultDimension() - 1; }

Storable withLeadingOnes(Storable array, int64_t count) {
  if (count > kMostLeadingOnes) throw OutOfMemory();
  std::vector<int64_t> lengths(static_cast<size_t>(count), 1);
  const SizeVector size = array.size();
  lengths.insert(lengths.end(), size.vec().begin(), size.vec().end());
  return inShape(std::move(array), SizeVector(lengths));
}

Storable rotatedDimensions(Storable array, int64_t left) {
  std::vector<int64_t> order(static_cast<size_t>(array.size().ndim()));
  std::iota(order.begin(), order.end(), int64_t{0});
  std::rotate(order.begin(), order.begin() + left, order.end());
  return permuted(std::move(array), order);
}

}  // namespace

// The second output tells by how many dimensions the array was shifted.
NodeValue shiftdim(Call& call) {
  const char* signature = call.count() == 1 ? "A" : "A, k";
  const SizeVector& size = read::array(call, 0, {signature, "A", predicate::kArray}).size();
  int64_t shift = leadingOnes(size);
  if (call.count() == 2) {
    shift = read::integer(call, 1, {signature, "k", text::kShiftOfDimensions});
    if (shift > 0) shift %= size.ndim();
  }
  Storable& array = call.arg(0);
  Storable shifted = shift < 0 ? withLeadingOnes(std::move(array), -shift) : rotatedDimensions(std::move(array), shift);
  return call.outputs({std::move(shifted), Storable(static_cast<double>(shift))});
}

NodeValue transposed(Call& call) {
  return transpose(std::move(call.arg(0)), call.selector<Transposition>() == Transposition::conjugate);
}

}  // namespace kelo::builtins::arrays
