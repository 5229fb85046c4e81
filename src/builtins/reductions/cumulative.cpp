// cumsum, cumprod, cummin, cummax: scans along a dimension, in one pass, in the memory of the
// argument where that is free.
#include "builtins/reductions/handlers.h"
#include "builtins/reductions/order_statistics.h"
#include "messages/catalogue/reductions.h"

namespace kelo::builtins {
namespace {

struct Option {
  enum class Direction { forward, reverse };
  enum class NaN { includeNaN, omitNaN };

  std::optional<Direction> direction;
  std::optional<NaN> nan;
};

/// The form of the call, by the number of its arguments and of the options among them.
const char* signatureOf(int count, int options) {
  static constexpr const char* kForms[3][2] = {
      {"A", "A, dim"}, {"A, option", "A, dim, option"}, {"A, option1, option2", "A, dim, option1, option2"}};
  return kForms[options][count - options - 1];
}

int countOptions(const Call& call) {
  int options = 0;
  for (int k = 1; k < call.count(); ++k) {
    const NumericArray* array = call.arg(k).numeric();
    if (k >= 2 || (array && array->is(Kind::Char))) ++options;
  }
  if (options > 2) throw expectation(text::kInvalidOptions);
  return options;
}

Problem unknownOption(const Call& call, const Option& known) {
  const bool wantsNaN = call.selector<Cumulative>() >= Cumulative::cummin && known.direction;
  return Wording::sentence(wantsNaN ? text::kNaNOption : text::kDirectionOption).complaint(call);
}

template <class T>
void setOnce(std::optional<T>& option, T value) {
  if (option) throw expectation(text::kInvalidOptions);
  option = value;
}

void readOption(const Call& call, int position, Option& option) {
  const Storable& argument = call.arg(position);
  if (!read::isText(argument)) throw unknownOption(call, option);
  static constexpr Wording kNone{"", "", ""};
  int word = 0;
  try {
    word = read::option(call, position, kNone, {"forward", "reverse", "includenan", "omitnan"});
  } catch (const Problem&) {
    throw unknownOption(call, option);
  }
  if (word < 2) return setOnce(option.direction, static_cast<Option::Direction>(word));
  if (call.selector<Cumulative>() < Cumulative::cummin) throw unknownOption(call, option);
  setOnce(option.nan, static_cast<Option::NaN>(word - 2));
}

template <class T, class Step>
TypedArray<T> scanned(TypedArray<T> a, int64_t d, bool reverse, Step step) {
  if (a.isEmpty()) return a;
  const Slices s(a.size(), d);
  if (a.isUnshared()) {
    T* own = a.writable();
    scanSlices(s, own, own, reverse, step);
    return a;
  }
  auto result = TypedArray<T>::uninitialized(a.size());
  scanSlices(s, a.data(), result.writable(), reverse, step);
  return result;
}

/// The best so far gives way to a better one. NaN gives way to anything, or stays for good once
/// met.
template <class T, class Better>
TypedArray<T> bestSoFar(TypedArray<T> a, int64_t d, bool reverse, bool omitNaN, Better better) {
  if (omitNaN) {
    return scanned(std::move(a), d, reverse,
                   [better](T best, T x) { return isNaN(best) || better(x, best) ? x : best; });
  }
  return scanned(std::move(a), d, reverse,
                 [better](T best, T x) { return !isNaN(best) && (isNaN(x) || better(x, best)) ? x : best; });
}

template <class T>
TypedArray<T> cumulate(Cumulative which, TypedArray<T> a, int64_t d, const Option& option) {
  const bool reverse = option.direction == Option::Direction::reverse;
  const bool omitNaN = option.nan != Option::NaN::includeNaN;
  switch (which) {
    case Cumulative::cumsum: return scanned(std::move(a), d, reverse, [](T sum, T x) { return sum + x; });
    case Cumulative::cumprod: return scanned(std::move(a), d, reverse, [](T product, T x) { return product * x; });
    case Cumulative::cummin:
      return bestSoFar(std::move(a), d, reverse, omitNaN, [](T x, T best) { return isBefore(x, best); });
    case Cumulative::cummax: break;
  }
  return bestSoFar(std::move(a), d, reverse, omitNaN, [](T x, T best) { return isBefore(best, x); });
}

}  // namespace

NodeValue cumulative(Call& call) {
  const int options = countOptions(call);
  const char* signature = signatureOf(call.count(), options);
  NumericArray a = read::takeNumeric(call, 0, {signature, "A", predicate::kNumericArray});
  int64_t d = a.size().defaultDimension();
  if (call.count() - options == 2) d = read::dimension(call, 1, {signature, "dim", text::kPositiveDimension});
  Option option;
  for (int k = call.count() - options; k < call.count(); ++k) readOption(call, k, option);
  const auto which = call.selector<Cumulative>();
  if (a.is(Kind::Complex)) return cumulate(which, std::move(a).toComplexArray(), d, option);
  return cumulate(which, std::move(a).toDoubleArray(), d, option);
}

}  // namespace kelo::builtins
