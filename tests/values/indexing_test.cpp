// Reading, writing and deleting elements: tables of cases with the arrays as text, and laws on
// random input.
#include "values/indexing.h"

#include <numeric>
#include <random>

#include "expect_failure.h"
#include "messages/catalogue/indexing.h"
#include "platform/memory_hints.h"
#include "values/arrays.h"
#include "values/operators.h"

namespace kelo {
namespace {

using namespace testing;
using Indices = std::vector<Index>;

const Index kNone = Index::from(DoubleArray::row({}));

Index at(double k) { return Index::from(num(k)); }
Index at(List values) { return Index::from(row(values)); }
Index where(const SizeVector& size, std::initializer_list<bool> mask) { return Index::from(LogicalArray(size, mask)); }

/// "double 1 x 3: 1 2 3"; of a structure its kind and size.
std::string shown(const Storable& value) { return value.isNumeric() ? describe(*value.numeric()) : value.kindLabel(); }

using Row = std::tuple<const char*, Storable, Indices, std::string>;  // name, array, subscripts, outcome

TEST(Indexing, ReadsElementsInTheRightShape) {
  const Storable matrix = counting({2, 3});
  const Storable cube = counting({2, 3, 4});
  const Storable x = row({10, 20, 30});
  const Storable y = column({10, 20, 30});
  const Row rows[] = {
      {"row by a column", x, {Index::from(column({3, 1}))}, "double 1 x 2: 30 10"},
      {"column by a row", y, {at({3, 1})}, "double 2 x 1: 30 10"},
      {"row by a matrix", x, {Index::from(shaped({2, 2}, {1, 2, 3, 1}))}, "double 2 x 2: 10 20 30 10"},
      {"a scalar counts as a row", num(5), {Index::from(column({1, 1}))}, "double 1 x 2: 5 5"},
      {"colon of a matrix", matrix, {Index::colon(6)}, "double 1 x 6: 1 2 3 4 5 6"},
      {"colon of a column", y, {Index::colon(3)}, "double 3 x 1: 10 20 30"},
      {"page vector as index", matrix, {Index::from(shaped({1, 1, 3}, {1, 3, 5}))}, "double 1 x 1 x 3: 1 3 5"},
      {"row mask of a matrix", matrix, {where({1, 4}, {true, false, false, true})}, "double 1 x 2: 1 4"},
      {"matrix mask", matrix, {where({2, 2}, {true, false, false, true})}, "double 2 x 1: 1 4"},
      {"row by a matrix mask", x, {where({2, 1}, {false, true})}, "double 1 x 1: 20"},
      {"empty index", x, {kNone}, "double 1 x 0:"},
      {"0 x 0 index", x, {Index::from(Storable())}, "double 0 x 0:"},
      {"text as index", x, {Index::from(charRow("\2"))}, "double 1 x 1: 20"},
      {"across pages", cube, {at(1), at({1, 3}), at({4, 1})}, "double 1 x 2 x 2: 19 23 1 5"},
      {"logical stays", logicals({true, false}), {at({2, 1})}, "logical 1 x 2: false true"},
  };
  for (const auto& [name, a, indices, expected] : rows) EXPECT_EQ(shown(readElements(a, indices)), expected) << name;
}

TEST(Indexing, RefusesWhatIsNoIndex) {
  for (const double bad : {0.0, -1.0, -4503599627370497.0, 1.5, 4503599627370495.5, kInf, -kInf, kNaN}) {
    EXPECT_EQ(problemOf([&] { at(bad); }), text::kIndexNotPositiveWhole) << bad;
    EXPECT_EQ(problemOf([&] { at({1, 2, bad, 5, 4, 3, 2, 1}); }), text::kIndexNotPositiveWhole) << bad;
  }
  EXPECT_EQ(problemOf([&] { at({0, 1, 2}); }), text::kIndexNotPositiveWhole);
  EXPECT_EQ(problemOf([&] { at({0.5, 1.5}); }), text::kIndexNotPositiveWhole);
  EXPECT_EQ(problemOf([&] { Index::from(whole(0)); }), text::kIndexNotPositiveWhole);
  EXPECT_EQ(problemOf([] { Index::from(complex(1, 1)); }), text::kIndexNotPositiveWhole);
  EXPECT_EQ(problemOf([&] { Index::from(StructArray()); }), text::kIndexNotNumeric);
  EXPECT_EQ(problemOf([&] { Index::from(FunctionHandle::builtIn(Name::intern("sin"))); }), text::kIndexNotNumeric);
  EXPECT_THROW(at(1e300), FatalFault);
  EXPECT_EQ(at({7, 9007199254740992.0, 2}).needed(), 9007199254740992);
  EXPECT_EQ(Index::from(complex(3, 0)).needed(), 3);
}

TEST(Indexing, RefusesReadsOutsideTheArray) {
  const Storable matrix = counting({2, 3});
  const std::string past = std::string(text::kIndexExceedsArray) + "|" + text::kIndexExceedsArrayExpected;
  const auto reading = [&](const Indices& indices) { return problemOf([&] { readElements(matrix, indices); }); };
  EXPECT_EQ(reading({at(7)}), past);
  EXPECT_EQ(reading({where({1, 7}, {0, 0, 0, 0, 0, 0, 1})}), past);
  EXPECT_EQ(reading({at(3), at(1)}), "Index exceeds the 1st dimension's length");
  EXPECT_EQ(reading({at(1), at(1), at(2)}), "Index exceeds the 3rd dimension's length");
  EXPECT_EQ(reading({}), text::kNoIndex);
}

using WriteRow = std::tuple<const char*, Storable, Indices, Storable, std::string>;  // the value before the outcome

TEST(Indexing, WritesElements) {
  const Storable none;
  const Index mask = where({1, 4}, {1, 0, 0, 1});
  const Storable matrix = counting({2, 3});
  const WriteRow rows[] = {
      // clang-format off
      {"scalar to a list", row({1, 2, 3}), {at({3, 1})}, num(9), "double 1 x 3: 9 2 9"},
      {"the last of a double position", row({1, 2}), {at({1, 1})}, row({7, 8}), "double 1 x 2: 8 2"},
      {"mask, several", row({1, 2, 3}), {where({1, 3}, {1, 0, 1})}, column({7, 8}), "double 1 x 3: 7 2 8"},
      {"nothing selected", row({1}), {kNone}, num(5), "double 1 x 1: 1"},
      {"row grows", row({1, 2, 3}), {at(5)}, num(9), "double 1 x 5: 1 2 3 0 9"},
      {"scalar grows as a row", num(1), {at(2)}, num(9), "double 1 x 2: 1 9"},
      {"0 x 0 grows as a row", none, {at({1, 3})}, row({8, 9}), "double 1 x 3: 8 0 9"},
      {"0 x 1 grows as a column", shaped({0, 1}, {}), {at(2)}, num(9), "double 2 x 1: 0 9"},
      {"mask grows", row({1}), {where({1, 3}, {0, 0, 1})}, num(9), "double 1 x 3: 1 0 9"},
      {"nothing to matrix", none, {at(2), at(3)}, num(1), "double 2 x 3: 0 0 0 0 0 1"},
      {"matrix grows in columns", matrix, {Index::colon(2), at(4)}, column({7, 8}), "double 2 x 4: 1 2 3 4 5 6 7 8"},
      {"matrix grows in pages", counting({1, 2}), {at(1), at(1), at(2)}, num(9), "double 1 x 2 x 2: 1 2 9 0"},
      {"text grows with blanks", charRow("ab"), {at(4)}, charRow("d"), "char 1 x 4: a b   d"},
      {"logical takes a double", logicals({1, 0}), {at(2)}, num(7), "double 1 x 2: 1 7"},
      {"double takes a character", row({1, 2}), {at(2)}, charRow("A"), "double 1 x 2: 1 65"},
      {"text takes a logical", charRow("AB"), {at(2)}, truth(true), "char 1 x 2: A \x01"},
      {"double takes a complex", row({1, 2}), {at(2)}, complex(0, 1), "complex 1 x 2: 1,0 0,1"},
      {"nothing takes the kind", none, {at(2)}, truth(true), "logical 1 x 2: false true"},
      // a mask fills every kind
      {"doubles", row({1, 2, 3, 4}), {mask}, num(-5), "double 1 x 4: -5 2 3 -5"},
      {"integers", IntArray({1, 4}, {1, 2, 3, 4}), {mask}, whole(-5), "int 1 x 4: -5 2 3 -5"},
      {"logicals", logicals({0, 1, 0, 0}), {mask}, truth(true), "logical 1 x 4: true true false true"},
      {"complex", complexShaped({1, 2}, {{1, 1}, {}}), {where({1, 2}, {0, 1})}, complex(5, 6), "complex 1 x 2: 1,1 5,6"},
      {"text", charRow("abcd"), {mask}, charRow("x"), "char 1 x 4: x b c x"},
      // clang-format on
  };
  for (const auto& [name, before, indices, value, expected] : rows) {
    Storable target = before;
    writeElements(target, indices, value);
    EXPECT_EQ(shown(target), expected) << name;
  }
}

TEST(Indexing, RefusedWritesLeaveTheVariable) {
  const std::string sizes = std::string(text::kArraySizesMismatch) + "|" + text::kSameCountExpected;
  const std::string kinds = std::string(text::kDataTypesMismatch) + "|" + text::kDataTypesMismatchExpected;
  const Storable matrix = counting({2, 3});
  const Storable handle = FunctionHandle::builtIn(Name::intern("sin"));
  const Character wide(U'\U0001F600');
  const WriteRow rows[] = {
      // clang-format off
      {"count", matrix, {at({1, 9})}, row({1, 2, 3}), sizes},
      {"growth of several dimensions at once", counting({2, 3, 4}), {at(1), at(13)}, num(1), text::kIndexExceedsTotal},
      {"growth of several empty dimensions", shaped({2, 0, 0}, {}), {at(1), at(1)}, num(1), text::kIndexExceedsTotal},
      {"scalar wanted", matrix, {at(1), at(9)}, row({1, 2}), text::kScalarExpected},
      {"vector wanted", matrix, {at({1, 2}), at(9)}, row({1, 2, 3}), text::vectorOfElementsExpected(2)},
      {"vector of none", matrix, {kNone, at(1)}, row({1, 2, 3}), text::vectorOfElementsExpected(0)},
      {"no dimension is dropped", counting({2, 2, 2}), {at({1, 2}), at(1), at({1, 2})}, counting({2, 2}), text::subscriptLengthExpected(3)},
      {"structure into numbers", matrix, {at(1)}, StructArray(), kinds},
      {"numbers into a structure", StructArray(), {at(1)}, num(1), kinds},
      {"handle as value", matrix, {at(1)}, handle, text::kAssignedNotArray},
      {"handle as target", handle, {at(1)}, num(1), text::kAssignmentTargetNotArray},
      {"a character of two numbers", matrix, {at(1)}, CharArray(wide), text::kSameLengthsExpected},
      // clang-format on
  };
  for (const auto& [name, before, indices, value, expected] : rows) {
    Storable target = before;
    EXPECT_EQ(problemOf([&] { writeElements(target, indices, value); }), expected) << name;
    if (!before.isArray()) continue;
    EXPECT_EQ(shown(target), shown(before)) << name;
    if (before.isNumeric()) {
      EXPECT_EQ(target.numeric()->identity(), before.numeric()->identity()) << name;
    }
  }
}

TEST(Indexing, DeletesElements) {
  const Storable matrix = counting({2, 3});
  const Row rows[] = {
      {"twice the same", row({1, 2, 3}), {at({3, 3, 1})}, "double 1 x 1: 2"},
      {"all", column({1, 2}), {Index::colon(2)}, "double 0 x 1:"},
      {"a scalar", num(5), {at(1)}, "double 1 x 0:"},
      {"matrix becomes a row", matrix, {at({2, 5})}, "double 1 x 4: 1 3 4 6"},
      {"nothing", matrix, {kNone}, "double 2 x 3: 1 2 3 4 5 6"},
      {"a row, spelled out", matrix, {at(1), at({3, 1, 2})}, "double 1 x 3: 2 4 6"},
      {"everything", matrix, {Index::colon(2), at({1, 2, 3})}, "double 2 x 0:"},
      {"no slice", matrix, {kNone, Index::colon(3)}, "double 2 x 3: 1 2 3 4 5 6"},
  };
  for (const auto& [name, before, indices, expected] : rows) {
    Storable target = before;
    deleteElements(target, indices);
    EXPECT_EQ(shown(target), expected) << name;
  }
  Storable target = matrix;
  EXPECT_EQ(problemOf([&] { deleteElements(target, Indices{at(7)}); }), text::kDeletionExceedsArray);
  EXPECT_EQ(problemOf([&] { deleteElements(target, Indices{at(1), at(4)}); }), text::deletionExceedsDimension(2));
  EXPECT_EQ(problemOf([&] { deleteElements(target, Indices{at(1), at(2)}); }), text::kOnePartialDimension);
  EXPECT_EQ(shown(target), shown(matrix));
}

TEST(Indexing, WritesStructureElements) {
  const Name a = Name::intern("a");
  const Name b = Name::intern("b");
  StructArray element(SizeVector(1, 1), {a, b});
  element.writableValue(0, 1) = num(7);
  StructArray turned(SizeVector(1, 1), {b, a});
  turned.writableValue(0, 0) = num(8);
  Storable target = StructArray(SizeVector(0, 0), {});
  writeElements(target, Indices{at(2)}, element);         // the first element gives the fields
  writeElements(target, Indices{at({3, 1})}, turned);     // in place, the fields in another order
  writeElements(target, Indices{at(2), at(2)}, element);  // spread out
  EXPECT_EQ(target.kindLabel(), "struct (2 x 3)");
  const StructArray& array = *target.structure();
  EXPECT_EQ(array.fields(), (std::vector<Name>{a, b}));
  std::string second;
  for (int64_t k = 0; k < array.numElements(); ++k) second += shown(array.value(k, 1)) + ";";
  EXPECT_EQ(second, "double 1 x 1: 8;double 0 x 0:;double 1 x 1: 7;double 1 x 1: 7;double 1 x 1: 8;double 0 x 0:;");
  EXPECT_EQ(shown(readElements(target, Indices{at(2), at(2)}).structure()->value(0, 1)), "double 1 x 1: 7");
  EXPECT_EQ(problemOf([&] { writeElements(target, Indices{at(1)}, StructArray(SizeVector(1, 1), {a})); }),
            text::kSameFieldsExpected);
  const Storable two = readElements(target, Indices{at({1, 2})});
  EXPECT_EQ(problemOf([&] { writeElements(target, Indices{at({1, 2, 3})}, two); }),
            std::string(text::kArraySizesMismatch) + "|" + text::kSameCountExpectedOfStructures);
  deleteElements(target, Indices{Index::colon(2), at({1, 3})});
  EXPECT_EQ(target.kindLabel(), "struct (2 x 1)");
}

TEST(Indexing, CopiesOnlyWhatIsShared) {
  Storable x = counting({1, 100});
  const void* block = x.numeric()->identity();
  writeElements(x, Indices{at(3)}, num(0));
  writeElements(x, Indices{at({4, 9})}, row({1, 2}));
  EXPECT_TRUE(writeScalar(*x.numeric(), 5, 0.0));
  EXPECT_EQ(x.numeric()->identity(), block);

  const Storable copy = x;
  EXPECT_FALSE(writeScalar(*x.numeric(), 5, 1.0));
  writeElements(x, Indices{at(5)}, num(1));
  EXPECT_EQ(copy.numeric()->asDouble()[4], 0);
  EXPECT_EQ(copy.numeric()->identity(), block);
  writeElements(x, Indices{at({2, 1})}, readElements(x, Indices{at({1, 2})}));
  writeElements(x, Indices{Index::range(1, 99)}, readElements(x, Indices{Index::range(0, 99)}));
  EXPECT_EQ(x.numeric()->asDouble()[2], 1);  // the old elements were moved up, not the first repeated

  Storable list;
  int64_t blocks = 0;
  for (int64_t k = 0; k < 10000; ++k) {
    const void* before = list.numeric()->identity();
    writeElements(list, Indices{Index::one(k)}, num(static_cast<double>(k)));
    blocks += before != list.numeric()->identity();
  }
  EXPECT_LT(blocks, 40);
  EXPECT_EQ(list.numeric()->asDouble()[9999], 9999);
}

// Laws, on random sizes and subscripts.

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  int64_t upTo(int64_t n) { return std::uniform_int_distribution<int64_t>(0, n)(engine_); }

  SizeVector size() {
    std::vector<int64_t> lengths;
    for (int64_t k = 2 + upTo(2); k > 0; --k) lengths.push_back(upTo(9) == 0 ? 0 : 1 + upTo(3));
    return SizeVector(lengths).trimmed();
  }
  /// A subscript into a dimension, or past it by no more than `beyond`, and the positions that it
  /// stands for.
  Index subscript(int64_t extent, int64_t beyond, std::vector<int64_t>* positions) {
    const int64_t form = upTo(4);
    const int64_t length = extent + upTo(beyond);
    positions->clear();
    if (form == 0) {
      for (int64_t k = 0; k < extent; ++k) positions->push_back(k);
      return Index::colon(extent);
    }
    LogicalArray chosen(SizeVector(1, length), false);
    if (form == 1) {
      for (int64_t k = 0; k < length; ++k) chosen.writable()[k] = upTo(1) == 1;
      for (int64_t k = 0; k < length; ++k)
        if (chosen[k]) positions->push_back(k);
      return Index::from(chosen);
    }
    if (form == 4 && length > 0) {  // even steps
      const int64_t first = upTo(length - 1), step = upTo(4) - 2;
      for (int64_t p = first; p >= 0 && p < length && positions->size() < 4; p += step) positions->push_back(p);
      if (positions->size() > 1) {
        return Index::even({first, static_cast<int32_t>(step), static_cast<uint32_t>(positions->size())});
      }
      positions->clear();
    }
    for (int64_t k = upTo(3); length > 0 && k > 0; --k) positions->push_back(upTo(length - 1));
    if (form == 3 && length > 0) positions->assign({upTo(length - 1)});
    std::vector<double> subscripts(positions->begin(), positions->end());
    for (double& x : subscripts) ++x;
    return Index::from(DoubleArray::row(subscripts));
  }

 private:
  std::mt19937 engine_;
};

struct Access {
  Indices indices;
  std::vector<std::vector<int64_t>> positions;

  Access(Random& random, const SizeVector& size, int64_t beyond) : positions(static_cast<size_t>(1 + random.upTo(4))) {
    const auto extents = indexExtents(size, static_cast<int64_t>(positions.size()));
    for (size_t k = 0; k < positions.size(); ++k)
      indices.push_back(random.subscript(extents[k], beyond, &positions[k]));
  }
  /// Linear positions in an array whose extents for these subscripts are given, in the order of a
  /// read.
  std::vector<int64_t> linear(const std::vector<int64_t>& extents) const {
    std::vector<int64_t> result{0};
    for (size_t k = positions.size(); k-- > 0;) {
      std::vector<int64_t> outer;
      std::swap(outer, result);
      for (const int64_t o : outer) {
        for (const int64_t p : positions[k]) result.push_back(o * extents[k] + p);
      }
    }
    return result;
  }
};

TEST(IndexingLaws, ReadsAreLinearReads) {
  const unsigned seed = std::random_device{}();
  Random random(seed);
  for (int round = 0; round < 3000; ++round) {
    const SizeVector size = random.size();
    const Storable array = counting(size);
    const Access access(random, size, 0);
    const Storable result = readElements(array, access.indices);
    const auto expected = access.linear(indexExtents(size, static_cast<int64_t>(access.indices.size())));
    ASSERT_EQ(result.numElements(), static_cast<int64_t>(expected.size())) << "seed " << seed << " round " << round;
    for (size_t k = 0; k < expected.size(); ++k) {
      ASSERT_EQ(result.numeric()->asDouble()[static_cast<int64_t>(k)], expected[k] + 1)
          << "seed " << seed << " round " << round;
    }
  }
}

TEST(IndexingLaws, WritesAreLinearWritesAndGrowthKeepsTheOldElements) {
  const unsigned seed = std::random_device{}();
  Random random(seed);
  int grown = 0;
  for (int round = 0; round < 3000; ++round) {
    const SizeVector size = random.size();
    const Storable before = counting(size);
    const Access access(random, size, 2);
    Storable after = before;
    const bool scalar = random.upTo(1) == 1;
    Storable value(-1.0);
    if (!scalar) {  // in the shape of the subscripts
      std::vector<int64_t> lengths;
      for (const Index& index : access.indices) lengths.push_back(index.count());
      if (lengths.size() == 1) lengths.push_back(1);
      value = counting(SizeVector(lengths));
    }
    if (problemOf([&] { writeElements(after, access.indices, value); }) != "none") continue;
    const SizeVector& now = after.size();
    std::vector<double> expected(static_cast<size_t>(now.numElements()), 0);
    for (int64_t k = 0; k < size.numElements(); ++k) {
      expected[static_cast<size_t>(positionOf(now, subscriptsOf(size, k)))] = static_cast<double>(k + 1);
    }
    double next = 0;
    const auto written = access.linear(indexExtents(now, static_cast<int64_t>(access.indices.size())));
    for (const int64_t p : written)
      expected[static_cast<size_t>(p)] = value.size().isScalar() && scalar ? -1.0 : ++next;
    const auto values = after.numeric()->asDouble().values();
    ASSERT_EQ(std::vector<double>(values.begin(), values.end()), expected) << "seed " << seed << " round " << round;
    grown += !(now == size);
  }
  EXPECT_GT(grown, 300);
}

// Arrays that show each other's elements, beside plain lists of what each must hold.
TEST(IndexingLaws, WritesToSharedElementsAreSeenByNobodyElse) {
  const auto hints = platform::memoryHints;
  platform::memoryHints.leastShownBytes = 1;
  platform::memoryHints.mostKeptTimes = 1000;
  const unsigned seed = std::random_device{}();
  Random random(seed);
  std::vector<Storable> arrays(6);
  std::vector<std::vector<double>> expected(arrays.size());
  int64_t shared = 0;
  for (int round = 0; round < 20000; ++round) {
    const auto from = static_cast<size_t>(random.upTo(5)), to = static_cast<size_t>(random.upTo(5));
    const auto count = static_cast<int64_t>(expected[from].size());
    const int64_t first = count == 0 ? 0 : random.upTo(count - 1), length = count == 0 ? 0 : random.upTo(count - first);
    const double value = round;
    switch (count == 0 ? 0 : random.upTo(6)) {
      case 0:
        arrays[to] = counting({1, 24});
        expected[to].resize(24);
        std::iota(expected[to].begin(), expected[to].end(), 1.0);
        break;
      case 1:
        arrays[to] = readElements(arrays[from], Indices{Index::range(first, length)});
        expected[to] = {expected[from].begin() + first, expected[from].begin() + first + length};
        break;
      case 2:
        arrays[to] = Storable(arrays[from].numeric()->asDouble().reshaped(SizeVector(count, 1)));
        expected[to] = expected[from];
        break;
      case 3:
        arrays[to] = unary(UnaryOp::minus, *arrays[from].numeric());
        expected[to] = expected[from];
        for (double& x : expected[to]) x = -x;
        break;
      case 4:
        writeElements(arrays[from], Indices{Index::range(first, length)}, num(value));
        std::fill_n(expected[from].begin() + first, length, value);
        break;
      case 5:
        if (arrays[from].isEmpty()) break;
        writeElements(arrays[from], Indices{Index::one(count)}, num(value));  // one more
        expected[from].push_back(value);
        break;
      default:
        deleteElements(arrays[from], Indices{Index::range(first, length)});
        expected[from].erase(expected[from].begin() + first, expected[from].begin() + first + length);
        break;
    }
    shared += arrays[to].numeric()->asDouble().data() == arrays[from].numeric()->asDouble().data() + first && to != from;
    for (size_t k = 0; k < arrays.size(); ++k) {
      const auto values = arrays[k].numeric()->asDouble().values();
      ASSERT_EQ(std::vector<double>(values.begin(), values.end()), expected[k]) << "seed " << seed << " round " << round;
    }
  }
  EXPECT_GT(shared, 500);
  platform::memoryHints = hints;
}

TEST(IndexingLaws, FastPathsDoWhatPlainPathsDo) {
  const unsigned seed = std::random_device{}();
  Random random(seed);
  for (int round = 0; round < 2000; ++round) {
    const SizeVector size = random.size();
    Storable array = counting(size);
    const double i = static_cast<double>(random.upTo(20)) / 2;
    const double j = static_cast<double>(random.upTo(8)) / 2;
    double fast = 0;
    const bool one = readScalar(*array.numeric(), i, &fast);
    const std::string refused = problemOf([&] {
      const double plain = readElements(array, Indices{at(i)}).doubleScalar();
      EXPECT_TRUE(one && plain == fast) << "seed " << seed;
    });
    EXPECT_EQ(one, refused == "none") << "seed " << seed;
    const bool two = readScalar(*array.numeric(), i, j, &fast);
    if (two) {
      EXPECT_EQ(readElements(array, Indices{at(i), at(j)}).doubleScalar(), fast) << "seed " << seed;
    }
    Storable plain = counting(size);
    if (writeScalar(*array.numeric(), i, j, -1)) writeElements(plain, Indices{at(i), at(j)}, num(-1));
    if (writeScalar(*array.numeric(), i, -2)) writeElements(plain, Indices{at(i)}, num(-2));
    EXPECT_EQ(shown(array), shown(plain)) << "seed " << seed;
  }
}

}  // namespace
}  // namespace kelo
