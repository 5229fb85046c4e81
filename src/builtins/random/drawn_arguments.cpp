#include "builtins/random/drawn_arguments.h"

#include <algorithm>

#include "interpreter/reader.h"
#include "messages/catalogue/random.h"

namespace kelo::builtins {
namespace {

bool isLength(int64_t n) { return n >= 0; }

SizeVector sizeOfOne(const Call& call, int position, Complaint complaint) {
  const auto lengths = read::asIntegers(call.arg(position));
  if (!lengths || !call.arg(position).size().isVector() || !std::all_of(lengths->begin(), lengths->end(), isLength)) {
    throw complaint(call, position);
  }
  if (call.arg(position).size().isScalar()) return SizeVector(lengths->front(), lengths->front());
  return SizeVector(*lengths);
}

}  // namespace

SizeVector drawnSize(const Call& call, int from, Complaint complaint) {
  if (call.count() == from) return SizeVector::scalar();
  if (call.count() == from + 1) return sizeOfOne(call, from, complaint);
  std::vector<int64_t> lengths;
  for (int k = from; k < call.count(); ++k) {
    const auto n = read::asInteger(call.arg(k));
    if (!n || !isLength(*n)) throw complaint(call, k);
    lengths.push_back(*n);
  }
  return SizeVector(lengths);
}

Problem sizeComplaint(const Call& call, int position) {
  if (position + 1 < call.count() || position > call.builtin.inputs.least) {
    return problem(text::argumentInvalid(position), text::kLengthHint);
  }
  static constexpr const char* kSignatures[] = {"n", "mu, n", "mu, sigma, n"};
  return argumentComplaint(call.name(), kSignatures[position], "n", text::kScalarOrVectorSize);
}

DoubleArray drawnParameters(const Call& call, int position, bool (*allowed)(double), Complaint complaint) {
  const NumericArray* array = call.arg(position).numeric();
  if (!array || !array->has(Property::allReals)) throw complaint(call, position);
  DoubleArray numbers = array->toDoubleArray();
  if (!std::all_of(numbers.values().begin(), numbers.values().end(), allowed)) throw complaint(call, position);
  return numbers;
}

}  // namespace kelo::builtins
