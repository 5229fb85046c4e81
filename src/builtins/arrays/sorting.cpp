// sort: the reading of its arguments. Up to three stand by position (the array, a dimension, a
// direction); pairs of a name and a value may follow.
#include <algorithm>
#include <fmt/format.h>

#include "builtins/arrays/handlers.h"
#include "builtins/arrays/sort_array.h"
#include "interpreter/reader.h"
#include "messages/catalogue/arrays.h"

namespace kelo::builtins::arrays {
namespace {

/// What is asked for besides the array.
struct Args : SortOrder {
  explicit Args(int64_t dimension) : dim(dimension) {}
  int64_t dim;
};

constexpr const char* kNames[] = {"comparisonmethod", "missingplacement"};

/// Which of the words a text is, without regard to case; -1: none, or no text.
template <size_t N>
int wordIndex(const Storable& value, const char* const (&words)[N]) {
  if (!read::isText(value)) return -1;
  std::string word = toUtf8(value.numeric()->asChar());
  std::ranges::transform(word, word.begin(), [](unsigned char c) { return std::tolower(c); });
  const auto found = std::ranges::find(words, word);
  return found == std::end(words) ? -1 : static_cast<int>(found - std::begin(words));
}

bool isChar(const Storable& value) { return value.isNumeric() && value.numeric()->is(Kind::Char); }

SortOrder::Direction direction(const Call& call, int position, const char* signature) {
  constexpr const char* kDirections[] = {"ascend", "descend"};
  const int index = wordIndex(call.arg(position), kDirections);
  if (index < 0) throw Wording{signature, "direction", text::kSortDirections}.complaint(call);
  return static_cast<SortOrder::Direction>(index);
}

int positionOfFirstName(const Call& call) {
  int position = 1;
  while (position < call.count() && wordIndex(call.arg(position), kNames) < 0) ++position;
  return position;
}

// The arguments from 1 to `end` - 1: a dimension, a direction or both.
void readByPosition(const Call& call, int end, Args& args) {
  if (end > 3) throw expectation(end < call.count() ? text::kSortManyBeforePair : text::kSortMany);
  if (end < 2) return;
  if (isChar(call.arg(1))) {
    args.direction = direction(call, 1, "A, direction");
    if (end == 2) return;
    if (isChar(call.arg(2))) throw problem(text::kSortOptionName, text::kSortOptionNames);
    throw Wording::sentence(text::kSortInvalid).complaint(call);
  }
  if (!call.arg(1).isNumeric()) throw Wording::sentence(text::kSortInvalid).complaint(call);
  const char* signature = end == 2 ? "A, dim" : "A, dim, direction";
  args.dim = read::dimension(call, 1, {signature, "dim", text::kSortDimension});
  if (end == 3) args.direction = direction(call, 2, signature);
}

void readPair(const Call& call, int position, Args& args) {
  const int name = wordIndex(call.arg(position), kNames);
  if (name < 0) throw problem(text::kSortOptionName, text::kSortOptionNames);
  if (position + 1 == call.count()) {
    throw expectation(fmt::format(text::kSortNoValue, toUtf8(call.arg(position).numeric()->asChar())));
  }
  constexpr const char* kMethods[] = {"real", "abs", "auto"};
  constexpr const char* kPlaces[] = {"last", "first", "auto"};
  const Storable& choice = call.arg(position + 1);
  const int value = name == 0 ? wordIndex(choice, kMethods) : wordIndex(choice, kPlaces);
  if (value < 0) throw Wording::sentence(text::kSortInvalid).complaint(call);
  if (name == 0)
    args.comparisonMethod = static_cast<SortOrder::ComparisonMethod>(value);
  else
    args.missingPlacement = static_cast<SortOrder::MissingPlacement>(value);
}

}  // namespace

NodeValue sort(Call& call) {
  const Wording words = Wording::sentence(call.count() == 1 ? text::kSortFirst : text::kSortFirstOfSeveral);
  const NumericArray& array = read::numeric(call, 0, words);
  Args args(array.size().defaultDimension());
  const int firstName = positionOfFirstName(call);
  readByPosition(call, firstName, args);
  for (int position = firstName; position < call.count(); position += 2) readPair(call, position, args);

  SortedArray sorted = sortedAlong(array, args.dim, args, call.outputCount() > 1);
  if (call.outputCount() == 1) return std::move(sorted.values);
  return call.outputs({std::move(sorted.values), std::move(sorted.positions)});
}

}  // namespace kelo::builtins::arrays
