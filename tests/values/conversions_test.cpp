#include <gtest/gtest.h>

#include "values/arrays.h"

namespace kelo {
namespace {

using namespace testing;

constexpr double kTwoTo63 = 9223372036854775808.0;
const char* const kNaNIsNone = "NaN is not convertible to a logical";

TEST(Conversions, ofNumbers) {
  const NumericArray large = IntArray({1, 2}, {-3, INT64_MAX});
  const struct {
    NumericArray array;
    Kind kind;
    const char* expected;
  } rows[] = {
      // clang-format off
      {large, Kind::Double, "double 1 x 2: -3 9.2233720368547758e+18"},
      {logicals({true, false}), Kind::Double, "double 1 x 2: 1 0"},
      {complexShaped({1, 2}, {{1, 2}, {-0.5, kNaN}}), Kind::Double, "double 1 x 2: 1 -0.5"},
      {row({2.9, -2.9}), Kind::Int, "int 1 x 2: 2 -2"},
      {row({kInf, -kInf}), Kind::Int, "int 1 x 2: 9223372036854775807 -9223372036854775808"},
      {num(-kTwoTo63), Kind::Int, "int 1 x 1: -9223372036854775808"},
      {complex(-7.5, 1), Kind::Int, "int 1 x 1: -7"},
      {row({1, kNaN}), Kind::Int, "NaN is not convertible to an integer"},
      {row({0, -0.0, 0.5, -kInf}), Kind::Logical, "logical 1 x 4: false false true true"},
      {complexShaped({1, 2}, {{2, 0}, {0, -0.0}}), Kind::Logical, "logical 1 x 2: true false"},
      {row({1, kNaN}), Kind::Logical, kNaNIsNone},
      {complex(kNaN, 0), Kind::Logical, kNaNIsNone},
      {complex(kNaN, 1), Kind::Logical, "A complex number is not convertible to a logical"},
      // clang-format on
  };
  for (const auto& r : rows) {
    EXPECT_EQ(outcome([&] { return r.array.toKind(r.kind); }), r.expected) << describe(r.array);
  }
  EXPECT_THROW(num(kTwoTo63).toIntArray(), FatalFault);
  EXPECT_THROW(complex(-1e19, 0).toIntArray(), FatalFault);
}

TEST(Conversions, toCharactersTakesUtf16Units) {
  const CharArray text = row({97.9, -1, kNaN, 1e9, kInf, 0xD83D}).toCharArray();
  std::vector<uint32_t> words;
  for (const Character c : text.values()) words.push_back(c.word());
  EXPECT_EQ(words, std::vector<uint32_t>({97, 0, 0, 0xFFFF, 0xFFFF, 0xD83D}));
  EXPECT_EQ(whole(INT64_MIN).toCharArray().scalar().word(), 0u);
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
      {charRow("\U00010000"), {2, 1}, {0xD800, 0xDC00}},
      {charRow("\uFFFF"), {1, 1}, {0xFFFF}},
      {charRow("e\u0301"), {2, 1}, {0x65, 0x301}},
      {charRow("a\U0001F600").reshaped({2, 1}), {3, 1}, {97, 0xD83D, 0xDE00}},
      {charRow("a\U0001F600\U0001F600a").reshaped({2, 2}), {3, 2}, {97, 0xD83D, 0xDE00, 0xD83D, 0xDE00, 97}},
      {charRow("\U0001F600\U0001F600").reshaped({1, 1, 2}), {2, 1, 2}, {0xD83D, 0xDE00, 0xD83D, 0xDE00}},
      {CharArray::row({}), {0, 0}, {}},
      {CharArray(SizeVector{3, 0}, Character()), {0, 0}, {}},
  };
  for (const auto& row : rows) {
    const NumericArray text = row.text, numbers = DoubleArray(row.size, row.numbers);
    for (const Kind kind : {Kind::Double, Kind::Int, Kind::Complex}) {
      EXPECT_EQ(describe(text.toKind(kind).toDoubleArray()), describe(numbers)) << toUtf8(row.text);
    }
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
    EXPECT_EQ(describe(converted.toDoubleArray()), describe(a.toDoubleArray()));
    EXPECT_EQ(converted.emptyLike().kind(), kind);
    EXPECT_EQ(converted.emptyLike().size(), SizeVector(0, 0));
  }
}

TEST(ComplexDouble, comparesRealPartsUnlessThereIsANaN) {
  const ComplexDouble a{1, 5}, b{1, 6}, c{2, -1}, n{1, kNaN};
  EXPECT_TRUE(a < c && c > a && a <= b && b <= a && !(a < b) && a != b);
  EXPECT_TRUE(!(n == n) && n != n && !(n < c) && !(n <= n) && !(c > n) && !(n >= n));
}

}  // namespace
}  // namespace kelo
