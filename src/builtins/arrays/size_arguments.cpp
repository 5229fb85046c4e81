// Reading of sizes. One or two plain scalars, the forms of every user's loop, are answered without
// allocating.
#include "builtins/arrays/size_arguments.h"

#include <algorithm>

namespace kelo::builtins {
namespace {

std::optional<int64_t> asLength(const Storable& value) {
  const auto n = read::asInteger(value);
  return n && *n >= 0 ? n : std::nullopt;
}

const NumericArray& numeric(const Call& call, int position, const SizeWords& words) {
  return read::numeric(call, position, words.notNumeric);
}

SizeVector sizeOfOne(const Call& call, int position, const SizeWords& words) {
  const NumericArray& v = numeric(call, position, words);
  if (!v.size().isVector()) throw words.notVector.complaint(call);
  const auto lengths = read::asIntegers(call.arg(position));
  if (!lengths || std::any_of(lengths->begin(), lengths->end(), [](int64_t n) { return n < 0; })) {
    throw words.notIntegers.complaint(call);
  }
  if (v.isScalar()) return SizeVector(lengths->front(), lengths->front());
  return SizeVector(*lengths);
}

int64_t oneOfSeveral(const Call& call, int position, const SizeWords& words) {
  if (const auto n = asLength(call.arg(position))) return *n;
  if (!numeric(call, position, words).isScalar()) throw words.severalNotScalar.complaint(call);
  throw words.severalNotInteger.complaint(call);
}

}  // namespace

SizeVector sizeArguments(const Call& call, int from, const SizeWords& words) {
  const int count = call.count() - from;
  if (count <= 0) return SizeVector::scalar();
  if (count == 1) {
    const Storable& only = call.arg(from);
    if (!only.isDoubleScalar()) return sizeOfOne(call, from, words);
    const auto n = asLength(only);
    if (!n) throw words.notIntegers.complaint(call);
    return SizeVector(*n, *n);
  }
  if (count == 2) return SizeVector(oneOfSeveral(call, from, words), oneOfSeveral(call, from + 1, words));
  std::vector<int64_t> lengths;
  for (int k = from; k < call.count(); ++k) lengths.push_back(oneOfSeveral(call, k, words));
  return SizeVector(lengths);
}

}  // namespace kelo::builtins
