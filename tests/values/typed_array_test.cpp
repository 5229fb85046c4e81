// The laws of copy on write, the shapes of arrays and the limits of memory.
#include "values/typed_array.h"

#include "expect_failure.h"
#include "values/memory.h"
#include "values/numeric_array.h"
#include "values/storable.h"

namespace kelo {
namespace {

std::vector<double> valuesOf(const DoubleArray& array) { return {array.values().begin(), array.values().end()}; }
using Values = std::vector<double>;

TEST(TypedArray, aCopyNeverShowsALaterChange) {
  DoubleArray a({2, 2}, {1, 2, 3, 4});
  const DoubleArray copy = a;
  EXPECT_EQ(copy.identity(), a.identity());
  a.writable()[0] = 9;
  EXPECT_EQ(valuesOf(copy), Values({1, 2, 3, 4}));
  EXPECT_EQ(valuesOf(a), Values({9, 2, 3, 4}));

  DoubleArray empty, scalar(5.0);
  empty.writable();
  EXPECT_EQ(DoubleArray().size(), SizeVector(0, 0));
  const DoubleArray other = scalar;
  scalar.writable()[0] = 6;
  EXPECT_EQ(other.scalar(), 5);
}

TEST(TypedArray, anUnsharedWriteStaysInPlace) {
  DoubleArray a({1, 3}, {1, 2, 3});
  const void* const block = a.identity();
  { const DoubleArray gone = a; }
  a.writable()[1] = 7;
  EXPECT_EQ(a.identity(), block);
  a = std::move(a).reshaped({3, 1});
  EXPECT_EQ(a.identity(), block);
  EXPECT_EQ(a.size(), SizeVector(3, 1));
}

TEST(TypedArray, largeReshapedCopiesShareTheirElements) {
  DoubleArray a({1, 4096}, 1.0);
  const int64_t blocks = blocksAllocated();
  DoubleArray square = a.reshaped({64, 64});
  std::optional<DoubleArray> most = square.shown(1000, {3096, 1});
  ASSERT_TRUE(most);
  EXPECT_EQ(most->data(), a.data() + 1000);
  EXPECT_EQ(blocksAllocated(), blocks + 2);
  EXPECT_FALSE(a.shown(0, {1, 1500})) << "a small part would keep a large block";
  EXPECT_FALSE(a.isUnshared() || square.isUnshared() || most->isUnshared());
  a.writable()[2000] = 2;
  square.writable()[2000] = 3;
  EXPECT_TRUE(most->isUnshared()) << "the others have copies now";
  most->resizeVector({3097, 1});
  most->writable()[1000] = 4;
  EXPECT_EQ(a[2000] + 10 * square[2000] + 100 * (*most)[1000], 432);
  EXPECT_EQ(a[1999] + square[1999] + (*most)[999], 3);
}

TEST(TypedArray, dropsTrailingOnes) {
  EXPECT_EQ(DoubleArray({2, 1, 1}, {1, 2}).size().count(), 2);
  EXPECT_EQ(DoubleArray({1, 2}, {1, 2}).reshaped({2, 1, 1}).size().count(), 2);
  EXPECT_TRUE(DoubleArray(SizeVector{1, 1, 1}, 3.0).isScalar());
}

TEST(TypedArray, refusesAWrongCountInItsOwnWords) {
  const std::string text = "Number of elements is inconsistent with the array size when creating ";
  EXPECT_EQ(problemOf([] { DoubleArray({2, 2}, {1.0}); }), text + "a double array");
  EXPECT_EQ(problemOf([] { IntArray({1, 1}, {1, 2}); }), text + "array of integer values");
  EXPECT_EQ(problemOf([] { LogicalArray({0, 0}, {true}); }), text + "a logical array");
  EXPECT_EQ(problemOf([] { ComplexDoubleArray({1, 2}, {ComplexDouble{}}); }), text + "a complex array");
  EXPECT_EQ(problemOf([] { CharArray({1, 2}, {Character(U'a')}); }), text + "a character array");
}

TEST(TypedArray, aGrownCopyIsIndependent) {
  DoubleArray x({1, 2}, {1, 2});
  x.resizeVector({1, 3});
  x.writable()[2] = 3;
  const DoubleArray copy = x;
  x.resizeVector({1, 4});
  x.writable()[3] = 4;
  x.writable()[0] = 9;
  EXPECT_EQ(valuesOf(copy), Values({1, 2, 3}));
  EXPECT_EQ(valuesOf(x), Values({9, 2, 3, 4}));
}

TEST(TypedArray, shrinksToAScalarAndToNothing) {
  DoubleArray x({3, 1}, {1, 2, 3});
  x.resizeVector({2, 1});
  EXPECT_EQ(valuesOf(x), Values({1, 2}));
  x.resizeVector({1, 1});
  EXPECT_TRUE(x.isScalar());
  EXPECT_EQ(x.scalar(), 1);
  x.resizeVector({0, 1});
  EXPECT_EQ(x.size(), SizeVector(0, 1));
  x.resizeVector({1, 1, 2});
  EXPECT_EQ(x.size(), SizeVector({1, 1, 2}));
}

TEST(TypedArray, survivesMovesOfEverySort) {
  DoubleArray a({1, 2}, {1, 2});
  DoubleArray& same = a;
  a = std::move(same);
  EXPECT_EQ(valuesOf(a), Values({1, 2}));
  a = *&same;
  EXPECT_EQ(valuesOf(a), Values({1, 2}));
  const DoubleArray b = std::move(a);
  EXPECT_EQ(a.numElements(), 1);  // some scalar
  a = b;
  EXPECT_EQ(a.identity(), b.identity());
}

TEST(TypedArray, refusesWhatCannotBeHeld) {
  const int64_t limit = std::exchange(platform::memoryHints.arrayByteLimit, 10000);
  EXPECT_THROW(DoubleArray::uninitialized({1, 1251}), OutOfMemory);
  EXPECT_THROW(StructArray({1, 1000}, {Name::intern("a")}), OutOfMemory);
  EXPECT_THROW(DoubleArray::uninitialized({1, INT64_MAX}), OutOfMemory);  // its bytes pass 64 bits
  DoubleArray nearlyFull({1, 1000}, 1.0);
  nearlyFull.resizeVector({1, 1100});  // fits, though half as much again does not
  EXPECT_EQ(nearlyFull.numElements(), 1100);
  EXPECT_THROW(nearlyFull.resizeVector({1, 5000}), OutOfMemory);
  EXPECT_EQ(nearlyFull.numElements(), 1100);
  platform::memoryHints.arrayByteLimit = limit;
  EXPECT_FATAL(DoubleArray::uninitialized({-1, 2}));
}

TEST(Memory, keepsLargeBlocksForTheNextArray) {
  const SizeVector size{1, 1 << 17};
  const void* block = DoubleArray::uninitialized(size).data();
  EXPECT_EQ(DoubleArray::uninitialized(size).data(), block);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 16, 0u);
  std::vector<DoubleArray> many(300, DoubleArray());
  for (auto& array : many) array = DoubleArray::uninitialized({1, 1 << 15});
  many.clear();  // more than are kept
  releaseKeptBlocks();
}

}  // namespace
}  // namespace kelo
