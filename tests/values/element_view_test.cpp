// Views against the plain formula: element (i, j, ...) of the result is the source at first + i*s1
// + j*s2 + ...
#include "values/element_view.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "values/arrays.h"

namespace kelo {
namespace {

using testing::describe;
using testing::shaped;

std::vector<int64_t> plainView(const std::vector<ViewAxis>& axes, int64_t first) {
  std::vector<int64_t> places{first};
  for (const ViewAxis axis : axes) {
    std::vector<int64_t> grown;
    for (int64_t i = 0; i < axis.length; ++i) {
      for (const int64_t place : places) grown.push_back(place + i * axis.stride);
    }
    places = std::move(grown);
  }
  return places;
}

// Lengths and strides that meet every loop: short and long runs, tiles with remainders, repeats at
// every level, backwards.
TEST(ElementView, EqualsThePlainFormula) {
  std::mt19937_64 random(20240229);
  const auto pick = [&](std::initializer_list<int64_t> from) { return from.begin()[random() % from.size()]; };
  for (int round = 0; round < 400; ++round) {
    std::vector<ViewAxis> axes;
    int64_t lowest = 0, highest = 0, count = 1;
    const size_t dimensions = 1 + random() % 4;
    for (size_t d = 0; d < dimensions; ++d) {
      const ViewAxis axis{count < 3000 ? pick({1, 2, 3, 7, 8, 17, 70}) : 2, pick({0, 1, -1, 1, 5, -40, 70, 490})};
      axes.push_back(axis);
      count *= axis.length;
      (axis.stride < 0 ? lowest : highest) += (axis.length - 1) * axis.stride;
    }
    std::vector<int64_t> source(static_cast<size_t>(highest - lowest + 1));
    std::iota(source.begin(), source.end(), int64_t{0});
    std::vector<int64_t> result(static_cast<size_t>(count));
    copyView(result.data(), source.data() - lowest, axes);
    ASSERT_EQ(result, plainView(axes, -lowest)) << "round " << round;
  }
}

TEST(ElementView, CopiesNothingThatStaysInOrder) {
  Storable array = shaped({2, 3}, {1, 2, 3, 4, 5, 6});
  const void* block = array.numeric()->identity();
  const Storable reshaped = viewed(std::move(array), {3, 2}, {{1, 0}, {2, 1}, {3, 2}});
  EXPECT_EQ(reshaped.numeric()->identity(), block);
  EXPECT_EQ(describe(*reshaped.numeric()), "double 3 x 2: 1 2 3 4 5 6");
}

}  // namespace
}  // namespace kelo
