#include "values/size_vector.h"

#include "expect_failure.h"

namespace kelo {
namespace {

constexpr int64_t kHuge = int64_t{1} << 40;

TEST(SizeVector, countsDimensionsAndElements) {
  const struct {
    SizeVector size;
    int64_t count, ndim, numElements;
    const char* description;
  } rows[] = {
      {{2, 3, 1, 1}, 4, 2, 6, "2 x 3"},
      {{2, 1, 0}, 3, 3, 0, "2 x 1 x 0"},
      {{kHuge, kHuge, 0}, 3, 3, 0, "1099511627776 x 1099511627776 x 0"},
  };
  for (const auto& [size, count, ndim, numElements, description] : rows) {
    EXPECT_EQ(size.count(), count) << description;
    EXPECT_EQ(size.ndim(), ndim) << description;
    EXPECT_EQ(size.numElements(), numElements) << description;
    EXPECT_EQ(size.hasZeroLength(), numElements == 0) << description;
    EXPECT_EQ(size.description(), description);
  }
}

TEST(SizeVector, comparesTheDimensionsThatCount) {
  EXPECT_EQ(SizeVector({1, 1, 1}), SizeVector(1, 1));
  EXPECT_EQ(SizeVector({2, 3, 1}), SizeVector({2, 3, 1, 1}));
  EXPECT_FALSE(SizeVector(2, 3) == SizeVector(3, 2));
  EXPECT_FALSE(SizeVector({2, 1, 0}) == SizeVector(2, 0));
}

TEST(SizeVector, refusesWhatCannotBeASize) {
  EXPECT_EQ(problemOf([] { SizeVector(std::span<const int64_t>()); }),
            "A size vector should have at least two numbers");
  EXPECT_FATAL(SizeVector(kHuge, kHuge));
  EXPECT_FATAL(SizeVector({kHuge, 1, kHuge}));
}

TEST(SizeVector, tellsLengthsAndDimensions) {
  EXPECT_EQ(SizeVector(2, 3).dimensionLength(3), 1);
  EXPECT_EQ(SizeVector(0, 3).dimensionLength(1), 0);
  EXPECT_EQ(SizeVector(1, 0).defaultDimension(), 2);
  EXPECT_EQ(SizeVector(1, 1).defaultDimension(), 1);
  EXPECT_EQ(SizeVector({2, 3, 4}).strideOf(3), 6);
  EXPECT_EQ(SizeVector({2, 3, 4}).strideOf(9), 24);
}

TEST(SizeVector, bringsLengthsToANumberOfDimensions) {
  using Lengths = std::vector<int64_t>;
  EXPECT_EQ(SizeVector({2, 3, 4}).broughtTo(1), Lengths({24}));
  EXPECT_EQ(SizeVector({2, 3, 4}).broughtTo(2), Lengths({2, 12}));
  EXPECT_EQ(SizeVector(2, 3).broughtTo(4), Lengths({2, 3, 1, 1}));
  EXPECT_FATAL(SizeVector({0, kHuge, kHuge}).broughtTo(2));
}

TEST(SizeVector, changesLengths) {
  EXPECT_EQ(SizeVector(2, 3).withDimension(4, 5), SizeVector({2, 3, 1, 5}));
  EXPECT_EQ(SizeVector({2, 3, 4}).withDimension(3, 1).count(), 2);
}

}  // namespace
}  // namespace kelo
