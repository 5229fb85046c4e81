#include <cmath>
#include <limits>

#include "expect_failure.h"
#include "values/numeric_array.h"

namespace kelo {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
constexpr int64_t kMin = std::numeric_limits<int64_t>::min();

constexpr const char* kUneven =
    "Attempting to catenate vectors of different lengths when performing data type conversion. "
    "This may be caused by Unicode characters";

template <class T>
std::vector<T> valuesOf(const TypedArray<T>& array) {
  return {array.values().begin(), array.values().end()};
}

NumericArray row(std::initializer_list<double> values) { return DoubleArray::row(values); }
NumericArray row(std::initializer_list<ComplexDouble> values) { return ComplexDoubleArray::row(values); }
std::vector<double> doublesOf(const NumericArray& array) { return valuesOf(array.toDoubleArray()); }

TEST(Conversions, toDoubles) {
  EXPECT_EQ(doublesOf(IntArray::row(std::vector<int64_t>{-3, kMax})), std::vector<double>({-3, kTwoTo63}));
  EXPECT_EQ(doublesOf(LogicalArray({1, 2}, {true, false})), std::vector<double>({1, 0}));
  EXPECT_EQ(doublesOf(row({ComplexDouble{1, 2}, {-0.5, kNaN}})), std::vector<double>({1, -0.5}));
  EXPECT_EQ(doublesOf(charRow("abc")), std::vector<double>({97, 98, 99}));
}

TEST(Conversions, toIntegersTruncates) {
  EXPECT_EQ(valuesOf(row({2.9, -2.9, kInf, -kInf, -kTwoTo63}).toIntArray()),
            std::vector<int64_t>({2, -2, kMax, kMin, kMin}));
  EXPECT_EQ(valuesOf(row({ComplexDouble{-7.5, 1}}).toIntArray()), std::vector<int64_t>({-7}));
  EXPECT_EQ(reasonOf([] { row({1, kNaN}).toIntArray(); }), "NaN is not convertible to an integer");
  EXPECT_FATAL(row({kTwoTo63}).toIntArray());
  EXPECT_FATAL(row({ComplexDouble{-1e19, 0}}).toIntArray());
}

TEST(Conversions, toLogicals) {
  EXPECT_EQ(valuesOf(row({0, -0.0, 0.5, -kInf}).toLogicalArray()), std::vector<bool>({false, false, true, true}));
  EXPECT_EQ(valuesOf(row({ComplexDouble{2, 0}, {0, -0.0}}).toLogicalArray()), std::vector<bool>({true, false}));
  EXPECT_EQ(reasonOf([] { row({1, kNaN}).toLogicalArray(); }), "NaN is not convertible to a logical");
  EXPECT_EQ(reasonOf([] { row({ComplexDouble{kNaN, 0}}).toLogicalArray(); }), "NaN is not convertible to a logical");
  EXPECT_EQ(reasonOf([] {
              row({ComplexDouble{kNaN, 1}}).toLogicalArray();
            }),
            "A complex number is not convertible to a logical");
}

TEST(Conversions, toCharactersTakesUtf16Units) {
  const CharArray text = row({97.9, -1, kNaN, 1e9, kInf, 0xD83D}).toCharArray();
  std::vector<uint32_t> words;
  for (const Character c : text.values()) words.push_back(c.word());
  EXPECT_EQ(words, std::vector<uint32_t>({97, 0, 0, 0xFFFF, 0xFFFF, 0xD83D}));
  EXPECT_EQ(NumericArray(IntArray(kMin)).toCharArray().scalar().word(), 0u);
  EXPECT_EQ(NumericArray(LogicalArray(true)).toCharArray().scalar().word(), 1u);
}

TEST(Conversions, textGivesItsUnitsColumnByColumn) {
  const struct {
    CharArray text;
    SizeVector size;
    std::vector<double> numbers;
  } rows[] = {
      {charRow("ab"), {1, 2}, {97, 98}},
      {charRow("abcd").reshaped({2, 2}), {2, 2}, {97, 98, 99, 100}},
      {charRow("\U0001F600\U0001F601"), {2, 2}, {0xD83D, 0xDE00, 0xD83D, 0xDE01}},
      {charRow("\U0001F600"), {2, 1}, {0xD83D, 0xDE00}},
      {charRow("a\U0001F600").reshaped({2, 1}), {3, 1}, {97, 0xD83D, 0xDE00}},
      {charRow("a\U0001F600\U0001F600a").reshaped({2, 2}), {3, 2}, {97, 0xD83D, 0xDE00, 0xD83D, 0xDE00, 97}},
      {charRow("\U0001F600\U0001F600").reshaped({1, 1, 2}), {2, 1, 2}, {0xD83D, 0xDE00, 0xD83D, 0xDE00}},
      {CharArray::row({}), {0, 0}, {}},
      {CharArray(SizeVector{3, 0}, Character()), {0, 0}, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(toUtf8(row.text));
    const NumericArray text = row.text;
    EXPECT_EQ(text.toDoubleArray().size(), row.size);
    EXPECT_EQ(doublesOf(text), row.numbers);
    EXPECT_EQ(doublesOf(text.toIntArray()), row.numbers);
    EXPECT_EQ(doublesOf(text.toComplexArray()), row.numbers);
    EXPECT_EQ(text.toLogicalArray().size(), row.size);
  }
}

TEST(Conversions, sameKindSharesOrMoves) {
  NumericArray a = row({1, 2});
  const void* const block = a.identity();
  EXPECT_EQ(a.toDoubleArray().identity(), block);
  EXPECT_EQ(a.toKind(Kind::Double).identity(), block);
  const DoubleArray moved = std::move(a).toDoubleArray();
  EXPECT_EQ(moved.identity(), block);
  EXPECT_TRUE(moved.isUnshared());
}

TEST(Conversions, keepKindAndSize) {
  const NumericArray a = LogicalArray(SizeVector{2, 1, 3}, true);
  for (const Kind kind : {Kind::Double, Kind::Int, Kind::Logical, Kind::Complex, Kind::Char}) {
    const NumericArray converted = a.toKind(kind);
    EXPECT_EQ(converted.kind(), kind);
    EXPECT_EQ(converted.size(), a.size());
    EXPECT_EQ(doublesOf(converted), std::vector<double>(6, 1));
    EXPECT_EQ(converted.emptyLike().kind(), kind);
    EXPECT_EQ(converted.emptyLike().size(), SizeVector(0, 0));
  }
}

TEST(ComplexDouble, comparesRealPartsUnlessThereIsANaN) {
  const ComplexDouble a{1, 5}, b{1, 6}, c{2, -1}, n{1, kNaN};
  EXPECT_TRUE(a < c && c > a && a <= b && b <= a && !(a < b) && a != b);
  EXPECT_TRUE(!(n == n) && n != n && !(n < c) && !(n <= n) && !(c > n) && !(n >= n));
  EXPECT_EQ(hashOf({0.0, -0.0}), hashOf({-0.0, 0.0}));
}

}  // namespace
}  // namespace kelo
