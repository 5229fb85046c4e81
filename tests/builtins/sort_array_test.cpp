// Sorting against the library's stable sort with a comparison written out.
#include "builtins/arrays/sort_array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <numeric>

#include "builtins/arrays/radix_sort.h"
#include "values/arrays.h"

namespace kelo::builtins {
namespace {

using Direction = SortOrder::Direction;
using By = SortOrder::ComparisonMethod;
using Missing = SortOrder::MissingPlacement;

// Random numbers of a sort that is hard for sorting by digits; `style` 0 to 5.
double hardNumber(std::mt19937_64& random, int style) {
  constexpr double kSpecial[] = {0.0, -0.0, 1, -1, std::numeric_limits<double>::infinity(),
                                 -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(),
                                 5e-324, -5e-324, 1.7e308};
  switch (style) {
    case 0: return std::uniform_real_distribution<double>()(random);
    case 1: return static_cast<double>(random() % 20) - 10;                          // many equal
    case 2: return 1 + static_cast<double>(random() % 100000) * 2.220446049250313e-16;  // alike but for the last bits
    case 3: return kSpecial[random() % std::size(kSpecial)];
    case 4: return std::bit_cast<double>(random());                                  // any bits
    default:
      return random() % 50 == 0 ? 1e300 : static_cast<double>(random() % 1000) * 1e-300;  // one group of nearly all
  }
}

template <class T, class Less>
std::vector<int64_t> plainOrder(std::span<const T> x, Less less, bool missingFirst, bool (*isMissing)(T)) {
  std::vector<int64_t> order(x.size());
  std::iota(order.begin(), order.end(), int64_t{0});
  std::stable_sort(order.begin(), order.end(), [&](int64_t a, int64_t b) {
    const T u = x[static_cast<size_t>(a)], v = x[static_cast<size_t>(b)];
    if (isMissing(u) || isMissing(v))
      return missingFirst ? isMissing(u) && !isMissing(v) : !isMissing(u) && isMissing(v);
    return less(u, v);
  });
  return order;
}

template <class T, class Less>
void expectSorted(const TypedArray<T>& array, const SortOrder& order, Less less, bool (*isMissing)(T)) {
  const bool missingFirst = order.missingPlacement == Missing::auto_ ? order.isDescending()
                                                                     : order.missingPlacement == Missing::first;
  const auto directed = [&](T u, T v) { return order.isDescending() ? less(v, u) : less(u, v); };
  const std::vector<int64_t> expected = plainOrder<T>(array.values(), directed, missingFirst, isMissing);
  const SortedArray both = sortedAlong(array, array.size().defaultDimension(), order, true);
  const SortedArray alone = sortedAlong(array, array.size().defaultDimension(), order, false);
  for (size_t i = 0; i < expected.size(); ++i) {
    const auto at = static_cast<int64_t>(i);
    ASSERT_EQ(both.positions[at], static_cast<double>(expected[i] + 1)) << "place " << i << " of " << expected.size();
    const T& value = array[expected[i]];
    ASSERT_EQ(std::memcmp(&both.values.as<T>()[at], &value, sizeof(T)), 0) << "place " << i;
    ASSERT_EQ(std::memcmp(&alone.values.as<T>()[at], &value, sizeof(T)), 0) << "place " << i << ", values alone";
  }
}

TEST(SortArray, RealNumbers) {
  std::mt19937_64 random(7);
  for (const int64_t n : {2, 39, 200, 5000, 70000}) {
    for (int style = 0; style < 6; ++style) {
      DoubleArray array = DoubleArray::uninitialized(SizeVector(1, n));
      for (int64_t i = 0; i < n; ++i) array.writable()[i] = hardNumber(random, style);
      const auto isNaN = [](double x) { return x != x; };
      const auto byValue = [](double a, double b) { return a < b; };
      const auto byMagnitude = [](double a, double b) {
        return std::fabs(a) != std::fabs(b) ? std::fabs(a) < std::fabs(b) : a > 0 && b < 0;
      };
      SCOPED_TRACE("style " + std::to_string(style) + ", count " + std::to_string(n));
      expectSorted<double>(array, {}, byValue, isNaN);
      expectSorted<double>(array, {Direction::descend, By::real, Missing::auto_}, byValue, isNaN);
      expectSorted<double>(array, {Direction::ascend, By::abs, Missing::first}, byMagnitude, isNaN);
      expectSorted<double>(array, {Direction::descend, By::abs, Missing::last}, byMagnitude, isNaN);
    }
  }
}

TEST(SortArray, ComplexNumbers) {
  std::mt19937_64 random(8);
  ComplexDoubleArray array = ComplexDoubleArray::uninitialized(SizeVector(3000, 1));
  for (int64_t i = 0; i < 3000; ++i) {  // few values, so that first keys agree
    array.writable()[i] = {static_cast<double>(random() % 7) - 3, static_cast<double>(random() % 7) - 3};
    if (random() % 100 == 0) array.writable()[i].imaginary = std::numeric_limits<double>::quiet_NaN();
  }
  const auto hasNaN = [](ComplexDouble z) { return z.hasNaN(); };
  const auto byMagnitude = [](ComplexDouble a, ComplexDouble b) {
    return std::pair(a.magnitude(), std::atan2(a.imaginary, a.real)) <
           std::pair(b.magnitude(), std::atan2(b.imaginary, b.real));
  };
  const auto byValue = [](ComplexDouble a, ComplexDouble b) {
    return std::pair(a.real, a.imaginary) < std::pair(b.real, b.imaginary);
  };
  expectSorted<ComplexDouble>(array, {}, byMagnitude, hasNaN);
  expectSorted<ComplexDouble>(array, {Direction::descend, By::abs, Missing::auto_}, byMagnitude, hasNaN);
  expectSorted<ComplexDouble>(array, {Direction::ascend, By::real, Missing::first}, byValue, hasNaN);
}

TEST(SortArray, EachSliceOfAnyDimension) {
  std::mt19937_64 random(9);
  const DoubleArray array = testing::randomArray(random, {4, 5, 6});
  for (int64_t dimension = 1; dimension <= 3; ++dimension) {
    const SortedArray sorted = sortedAlong(array, dimension, {}, true);
    const int64_t stride = array.size().strideOf(dimension);
    const int64_t length = array.size().dimensionLength(dimension);
    for (int64_t i = 0; i < array.numElements(); ++i) {
      const int64_t place = i / stride % length;
      const int64_t slice = i - place * stride;
      ASSERT_EQ(sorted.values.asDouble()[i], array[slice + (static_cast<int64_t>(sorted.positions[i]) - 1) * stride]);
      if (place == 0) continue;
      ASSERT_LE(sorted.values.asDouble()[i - stride], sorted.values.asDouble()[i]);
    }
  }
}

}  // namespace
}  // namespace kelo::builtins
