#include "interpreter/reader.h"

#include <algorithm>
#include <cmath>

namespace kelo::read {
namespace {

const Storable& at(const Call& call, int position) { return call.arg(position); }

std::optional<int64_t> wholeNumber(double x) {
  if (!(std::abs(x) < 9223372036854775808.0) || x != std::trunc(x)) return std::nullopt;
  return static_cast<int64_t>(x);
}

std::string lowered(std::string word) {
  std::transform(word.begin(), word.end(), word.begin(), [](unsigned char c) { return std::tolower(c); });
  return word;
}

}  // namespace

bool isNumeric(const Storable& value) { return value.isNumeric(); }

bool isText(const Storable& value) {
  const NumericArray* array = value.numeric();
  return array && array->is(Kind::Char) && (array->size().isRow() || array->isEmpty());
}

std::optional<std::vector<int64_t>> asIntegers(const Storable& value) {
  const NumericArray* array = value.numeric();
  if (!array || !array->has(Property::allReals)) return std::nullopt;
  const DoubleArray numbers = array->toDoubleArray();
  std::vector<int64_t> result;
  result.reserve(static_cast<size_t>(numbers.numElements()));
  for (const double x : numbers.values()) {
    const auto n = wholeNumber(x);
    if (!n) return std::nullopt;
    result.push_back(*n);
  }
  return result;
}

std::optional<int64_t> asInteger(const Storable& value) {
  if (value.isDoubleScalar()) return wholeNumber(value.doubleScalar());
  const auto numbers = asIntegers(value);
  if (!numbers || numbers->size() != 1) return std::nullopt;
  return numbers->front();
}

const NumericArray& numeric(const Call& call, int position, const Wording& words) {
  const NumericArray* array = at(call, position).numeric();
  if (!array) throw words.complaint(call);
  return *array;
}

NumericArray takeNumeric(Call& call, int position, const Wording& words) {
  numeric(call, position, words);
  return std::move(*call.arg(position).numeric());
}

const NumericArray& nonChar(const Call& call, int position, const Wording& words) {
  const NumericArray& array = numeric(call, position, words);
  if (array.is(Kind::Char)) throw words.complaint(call);
  return array;
}

const Storable& array(const Call& call, int position, const Wording& words) {
  if (!at(call, position).isArray()) throw words.complaint(call);
  return at(call, position);
}

const StructArray& structure(const Call& call, int position, const Wording& words) {
  const StructArray* array = at(call, position).structure();
  if (!array) throw words.complaint(call);
  return *array;
}

DoubleArray real(const Call& call, int position, const Wording& words) {
  const NumericArray& array = numeric(call, position, words);
  if (!array.has(Property::allReals)) throw words.complaint(call);
  return array.toDoubleArray();
}

DoubleArray takeReal(Call& call, int position, const Wording& words) {
  NumericArray array = takeNumeric(call, position, words);
  if (!array.has(Property::allReals)) throw words.complaint(call);
  return std::move(array).toDoubleArray();
}

double realScalar(const Call& call, int position, const Wording& words) {
  const DoubleArray number = real(call, position, words);
  if (!number.isScalar()) throw words.complaint(call);
  return number.scalar();
}

int64_t integer(const Call& call, int position, const Wording& words, int64_t least) {
  const auto n = asInteger(at(call, position));
  if (!n || *n < least) throw words.complaint(call);
  return *n;
}

int64_t dimension(const Call& call, int position, const Wording& words) { return integer(call, position, words, 1); }

std::string text(const Call& call, int position, const Wording& words) {
  if (!isText(at(call, position))) throw words.complaint(call);
  return toUtf8(at(call, position).numeric()->asChar());
}

int option(const Call& call, int position, const Wording& words, std::initializer_list<const char*> choices) {
  const std::string word = lowered(text(call, position, words));
  const auto found = std::find_if(choices.begin(), choices.end(), [&](const char* c) { return lowered(c) == word; });
  if (found == choices.end()) throw words.complaint(call);
  return static_cast<int>(found - choices.begin());
}

}  // namespace kelo::read
