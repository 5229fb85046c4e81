// Every property against arrays of every kind. A row of the table names, by their numbers, the
// properties that hold.
#include <cmath>
#include <set>

#include "expect_failure.h"
#include "values/arrays.h"

namespace kelo {
namespace {

using namespace testing;

constexpr double kTwoTo63 = 9223372036854775808.0;

using Held = std::set<int>;

Held heldBy(const NumericArray& array, Property first, Property last) {
  Held held;
  for (int p = static_cast<int>(first); p <= static_cast<int>(last); ++p) {
    if (array.has(static_cast<Property>(p))) held.insert(p);
  }
  return held;
}

NumericArray complexRow(std::initializer_list<ComplexDouble> values) { return ComplexDoubleArray::row(values); }

// 0 zero, 1 >= 0, 2 <= 0, 3 > 0, 4 < 0, 5 whole, 6 some Inf, 7 some NaN, 8 well defined, 9 real, 10
// nonempty
TEST(Properties, ofElements) {
  const std::pair<NumericArray, Held> rows[] = {
      // clang-format off
      {row({1, 2}), {1, 3, 5, 8, 9, 10}},                        {row({0.0, -0.0}), {0, 1, 2, 5, 8, 9, 10}},
      {row({0, 1.5}), {1, 8, 9, 10}},                            {row({-1, -2.5}), {2, 4, 8, 9, 10}},
      {row({-1, 1}), {5, 8, 9, 10}},                             {row({1, kInf, kNaN}), {1, 3, 5, 6, 7, 9, 10}},
      {row({-1, kInf}), {2, 4, 5, 6, 9, 10}},                    {row({kNaN}), {0, 1, 2, 3, 4, 5, 7, 9, 10}},
      {row({-kInf, kInf}), {0, 1, 2, 3, 4, 5, 6, 9, 10}},        {row({}), {0, 1, 2, 3, 4, 5, 8, 9}},
      {complexRow({{1, 0}, {2, -0.0}}), {1, 3, 5, 8, 9, 10}},    {complexRow({{0, 1}}), {1, 2, 5, 8, 10}},
      {complexRow({{0, 0}, {-1.5, kInf}}), {0, 1, 2, 5, 6, 10}}, {complexRow({{-2, 1}, {1, kNaN}}), {2, 4, 5, 7, 10}},
      {complexRow({{5e-324, 0}}), {1, 3, 8, 9, 10}},             {IntArray({1, 2}, {0, 3}), {1, 5, 8, 9, 10}},
      {whole(-3), {2, 4, 5, 8, 9, 10}},                          {IntArray({1, 0}, {}), {0, 1, 2, 3, 4, 5, 8, 9}},
      {logicals({true, true}), {1, 3, 5, 8, 9, 10}},             {logicals({false, true}), {1, 5, 8, 9, 10}},
      {logicals({false}), {0, 1, 2, 5, 8, 9, 10}},               {logicals({}), {0, 1, 2, 3, 4, 5, 8, 9}},
      {charRow("ab"), {1, 3, 5, 8, 9, 10}},                      {charRow("e\u0301"), {1, 3, 5, 8, 9, 10}},
      {CharArray(Character()), {0, 1, 2, 3, 5, 8, 9, 10}},       {CharArray(), {0, 1, 2, 3, 5, 8, 9}},
      // clang-format on
  };
  for (const auto& [array, held] : rows) {
    EXPECT_EQ(heldBy(array, Property::allZeroMagnitudes, Property::nonempty), held) << describe(array);
  }
}

TEST(Properties, wholeNumberTestBeyond64BitsIsAFault) {
  EXPECT_FATAL((void)row({1, kTwoTo63}).has(Property::allIntegerRealParts));
  EXPECT_FATAL((void)row({-kTwoTo63}).has(Property::allIntegerRealParts));
  EXPECT_FATAL((void)complexRow({{1e300, 1}}).has(Property::allIntegerRealParts));
  EXPECT_TRUE(row({std::nextafter(kTwoTo63, 0)}).has(Property::allIntegerRealParts));
  EXPECT_FALSE(row({0.5, kTwoTo63}).has(Property::allIntegerRealParts));
}

// 11 scalar, 14 row, 17 column, 20 vector, 23 matrix: each plain, in numbers (+1), in chars (+2);
// 26, 27 square in numbers, in chars.
Held inThrees(std::initializer_list<int> shapes, bool square) {
  Held held;
  for (const int shape : shapes) held.insert({shape, shape + 1, shape + 2});
  if (square) held.insert({26, 27});
  return held;
}

TEST(Properties, ofShape) {
  const std::pair<SizeVector, Held> rows[] = {
      {{1, 1}, inThrees({11, 14, 17, 20, 23}, true)},
      {{1, 3}, inThrees({14, 20, 23}, false)},
      {{1, 0}, inThrees({14, 20, 23}, false)},
      {{0, 1}, inThrees({17, 20, 23}, false)},
      {{0, 0}, inThrees({23}, true)},
      {{2, 2}, inThrees({23}, true)},
      {{1, 1, 2}, {}},
  };
  for (const auto& [size, held] : rows) {
    for (const NumericArray& array : {NumericArray(DoubleArray(size, 1.0)), NumericArray(LogicalArray(size, true))}) {
      EXPECT_EQ(heldBy(array, Property::scalar, Property::squareMatrixInChars), held) << array.kindLabel();
    }
  }
}

TEST(Properties, ofTheShapeOfText) {
  const std::pair<CharArray, Held> rows[] = {
      {charRow("a"), inThrees({11, 14, 17, 20, 23}, true)},
      {charRow("ab"), inThrees({14, 20, 23}, false)},
      {CharArray::row({}), {16, 22, 23, 24, 25, 26}},                             // 0 x 0 in numbers
      {charRow("\U0001F600"), {13, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 27}},  // 2 x 1 in numbers
      {charRow("\U0001F600\U0001F600"), {16, 22, 23, 24, 25, 26}},                // 2 x 2 in numbers
      {charRow("a\U0001F600"), {16, 22, 25}},                                     // no numbers at all
  };
  for (const auto& [text, held] : rows) {
    EXPECT_EQ(heldBy(text, Property::scalar, Property::squareMatrixInChars), held) << toUtf8(text);
  }
}

}  // namespace
}  // namespace kelo
