// Between linear indexes and subscripts.
#include <algorithm>

#include "builtins/arrays/handlers.h"
#include "interpreter/reader.h"
#include "messages/catalogue/arrays.h"
#include "messages/catalogue/values.h"

namespace kelo::builtins::arrays {
namespace {

bool allPositive(const std::optional<std::vector<int64_t>>& numbers) {
  return numbers && std::all_of(numbers->begin(), numbers->end(), [](int64_t n) { return n >= 1; });
}

SizeVector sizeVec(const Call& call, const char* signature) {
  const Wording words{signature, "sizeVec", text::kPositiveIntegerVector};
  const NumericArray& array = read::numeric(call, 0, words);
  const auto lengths = read::asIntegers(call.arg(0));
  if (!array.size().isVector() || !allPositive(lengths)) throw words.complaint(call);
  if (lengths->size() < 2) throw Wording{signature, "sizeVec", text::kTwoElements}.complaint(call);
  return SizeVector(*lengths);
}

std::vector<int64_t> positiveIntegers(const Call& call, int position, const Wording& words) {
  auto numbers = read::asIntegers(call.arg(position));
  if (!allPositive(numbers)) throw words.complaint(call);
  return std::move(*numbers);
}

/// The size of an argument once it is read as numbers.
SizeVector sizeInNumbersOf(const Storable& value) { return value.numeric()->toIntArray().size(); }

}  // namespace

NodeValue ind2sub(Call& call) {
  constexpr const char* kSignature = "sizeVec, ind";
  const SizeVector size = sizeVec(call, kSignature);
  const std::vector<int64_t> indexes = positiveIntegers(call, 1, {kSignature, "ind", text::kPositiveIntegers});
  for (const int64_t index : indexes) {
    if (index > size.numElements()) throw problem(text::linearIndexExceeds(index, size.numElements()));
  }
  const SizeVector shape = sizeInNumbersOf(call.arg(1));
  std::vector<Storable> outputs;
  int64_t stride = 1;
  const std::vector<int64_t> lengths = size.broughtTo(call.outputCount());
  for (const int64_t length : lengths) {
    auto subscripts = DoubleArray::uninitialized(shape);
    std::transform(indexes.begin(), indexes.end(), subscripts.writable(),
                   [=](int64_t index) { return static_cast<double>((index - 1) / stride % length + 1); });
    outputs.push_back(std::move(subscripts));
    stride *= length;
  }
  return call.outputs(std::move(outputs));
}

NodeValue sub2ind(Call& call) {
  constexpr const char* kSignature = "sizeVec, sub1, sub2, ..., subN";
  const SizeVector size = sizeVec(call, kSignature);
  const std::vector<int64_t> lengths = size.broughtTo(call.count() - 1);
  std::vector<int64_t> positions;
  int64_t stride = 1;
  for (int k = 1; k < call.count(); ++k) {
    const std::string name = "sub" + std::to_string(k);
    const auto subscripts = positiveIntegers(call, k, {kSignature, name.c_str(), text::kPositiveIntegers});
    if (!(sizeInNumbersOf(call.arg(k)) == sizeInNumbersOf(call.arg(1)))) {
      throw Wording{kSignature, "subi for all i", text::kSameSubscriptSizes}.complaint(call);
    }
    positions.resize(subscripts.size());
    const int64_t length = lengths[static_cast<size_t>(k - 1)];
    for (size_t i = 0; i < subscripts.size(); ++i) {
      if (subscripts[i] > length) throw problem(text::subscriptExceeds(k));
      positions[i] += (subscripts[i] - 1) * stride;
    }
    stride *= length;
  }
  auto indexes = DoubleArray::uninitialized(sizeInNumbersOf(call.arg(1)));
  std::transform(positions.begin(), positions.end(), indexes.writable(),
                 [](int64_t position) { return static_cast<double>(position + 1); });
  return indexes;
}

}  // namespace kelo::builtins::arrays
