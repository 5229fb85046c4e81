// Comparisons of many elements at a time against those of single ones.
#include "values/comparison.h"

#include <gtest/gtest.h>

#include "values/arrays.h"

namespace kelo {
namespace {

using namespace testing;

constexpr BinaryOp kComparisons[] = {BinaryOp::lt, BinaryOp::le, BinaryOp::gt,
                                     BinaryOp::ge, BinaryOp::eqeq, BinaryOp::neq};
constexpr int64_t kLengths[] = {2, 63, 64, 65, 300, 70000};

/// Elements of `values` in some order, the same at every run.
template <class T>
TypedArray<T> mixed(int64_t n, const std::vector<T>& values, uint32_t seed) {
  std::minstd_rand random(seed);
  auto result = TypedArray<T>::uninitialized(SizeVector(1, n));
  for (int64_t i = 0; i < n; ++i) result.writable()[i] = values[random() % values.size()];
  return result;
}

template <class T>
void expectElementsOf(BinaryOp op, const TypedArray<T>& a, const TypedArray<T>& b) {
  const std::optional<LogicalArray> together = comparedAtOnce(op, a, b);
  ASSERT_TRUE(together.has_value());
  for (int64_t i = 0; i < together->numElements(); ++i) {
    const TypedArray<T> x(a[a.isScalar() ? 0 : i]), y(b[b.isScalar() ? 0 : i]);
    ASSERT_EQ((*together)[i], elementwise(op, x, y).asLogical().scalar()) << "element " << i;
  }
}

TEST(Comparison, GivesWhatSingleDoublesGive) {
  const std::vector<double> values = {0.0, -0.0, 1.0, -1.0, kInf, -kInf, kNaN, 5e-324};
  for (const int64_t n : kLengths) {
    const DoubleArray a = mixed(n, values, 1), b = mixed(n, values, 2);
    for (const BinaryOp op : kComparisons) {
      expectElementsOf(op, a, b);
      expectElementsOf(op, a, DoubleArray(0.0));
      expectElementsOf(op, DoubleArray(kNaN), b);
    }
  }
}

TEST(Comparison, expandsRowsAndColumns) {
  const std::vector<double> values = {0.0, 1.0, -1.0, kInf, kNaN};
  constexpr int64_t kRows = 300, kColumns = 301;
  const DoubleArray across = mixed(kColumns, values, 3);
  const DoubleArray down = mixed(kRows, values, 4).reshaped(SizeVector(kRows, 1));
  const DoubleArray matrix = mixed(kRows * kColumns, values, 5).reshaped(SizeVector(kRows, kColumns));
  const auto at = [](const DoubleArray& x, int64_t i, int64_t j) {
    return x[x.size().rows() == 1 ? j : x.size().columns() == 1 ? i : i + j * kRows];
  };
  for (const BinaryOp op : kComparisons) {
    for (const auto& [a, b] : {std::pair(across, down), {down, across}, {matrix, across}, {down, matrix}}) {
      const LogicalArray together = comparedAtOnce(op, a, b).value();
      ASSERT_EQ(together.size(), SizeVector(kRows, kColumns));
      for (int64_t i = 0; i < kRows; ++i) {
        for (int64_t j = 0; j < kColumns; ++j) {
          const DoubleArray x(at(a, i, j)), y(at(b, i, j));
          ASSERT_EQ(together[i + j * kRows], elementwise(op, x, y).asLogical().scalar()) << i << ", " << j;
        }
      }
    }
  }
}

// "é" as one code point and as two; a block that holds one is compared character by character.
TEST(Comparison, GivesWhatSingleCharactersGive) {
  const Character composed(U'\u00e9'), decomposed = charactersOf("e\u0301").front();
  for (const int64_t n : kLengths) {
    CharArray a = mixed<Character>(n, {Character(U'a'), Character(U'b')}, 1);
    CharArray b = mixed<Character>(n, {Character(U'a'), Character(U'b')}, 2);
    a.writable()[n - 1] = composed;
    b.writable()[n - 1] = decomposed;
    for (const BinaryOp op : {BinaryOp::eqeq, BinaryOp::neq}) {
      expectElementsOf(op, a, b);
      expectElementsOf(op, a, CharArray(decomposed));
      expectElementsOf(op, CharArray(Character(U'b')), b);
    }
  }
}

TEST(Comparison, LeavesTheRestToTheGeneralLoop) {
  EXPECT_FALSE(comparedAtOnce(BinaryOp::lt, num(1), num(2)));
  EXPECT_FALSE(comparedAtOnce(BinaryOp::lt, row({1, 2}), text("ab")));
  EXPECT_FALSE(comparedAtOnce(BinaryOp::lt, text("ab"), text("ab")));
  EXPECT_FALSE(comparedAtOnce(BinaryOp::plus, row({1, 2}), row({1, 2})));
  EXPECT_FALSE(comparedAtOnce(BinaryOp::lt, zeros({0, 0}), num(1)));
}

}  // namespace
}  // namespace kelo
