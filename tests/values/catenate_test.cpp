// Concatenation: kinds, empties, text, failures; one pass against the fold from the left.
#include <gtest/gtest.h>

#include "values/arrays.h"
#include "values/operators.h"

namespace kelo {
namespace {

using namespace kelo::testing;

TEST(Catenate, Table) {
  const char* const mismatch = "Dimension lengths mismatch";
  const char* const columns =
      "Attempting to catenate vectors of different lengths when performing data type conversion. This may be caused by "
      "Unicode characters";
  const std::tuple<std::vector<Storable>, int64_t, const char*> rows[] = {
      {{}, 2, "double 0 x 0:"},
      {{text(""), zeros({0, 3})}, 2, "double 0 x 0:"},
      {{zeros({0, 3}), text("ab")}, 2, "char 1 x 2: a b"},
      {{num(1), num(2), num(3)}, 1, "double 3 x 1: 1 2 3"},
      {{text("a"), num(66)}, 2, "double 1 x 2: 97 66"},
      {{text("a"), truth(true)}, 2, "char 1 x 2: a \x01"},
      {{truth(true), text("a"), whole(7)}, 2, "int 1 x 3: 1 97 7"},
      {{whole(1), truth(true), complex(0, 1)}, 2, "complex 1 x 3: 1,0 1,0 0,1"},
      {{text("\U0001F600"), text("\U0001F601"), column({1, 2})}, 2, "double 2 x 3: 55357 56832 55357 56833 1 2"},
      {{text("\U0001F600"), text("b"), num(66)}, 2, columns},
      {{text("abc"), text("de")}, 1, mismatch},
      {{shaped({2, 2}, {1, 2, 3, 4}), shaped({1, 2}, {5, 6})}, 1, "double 3 x 2: 1 2 5 3 4 6"},
      {{shaped({2, 2}, {1, 2, 3, 4}), zeros({2, 2, 2})}, 2, mismatch},
      {{num(1), StructArray()},
       2,
       "Operand types mismatch while catenating arrays | Arrays are expected to have same types"},
      {{num(1), FunctionHandle::builtIn(Name::intern("sin"))}, 2, "Unexpected error occurred while catenating arrays"},
  };
  for (const auto& [list, dim, expected] : rows) {
    std::string input;
    for (const Storable& s : list) input += s.isArray() ? s.kindLabel() + "; " : "handle; ";
    EXPECT_EQ(outcome([&] { return *catenate(list, dim).numeric(); }), expected) << input;
  }
}

TEST(Catenate, StructuresMatchFieldsByName) {
  StructArray a, b;
  a.ensureField(Name::intern("x"));
  a.ensureField(Name::intern("y"));
  b.ensureField(Name::intern("y"));
  b.ensureField(Name::intern("x"));
  a.writableValue(0, 0) = Storable(1.0);
  b.writableValue(0, 1) = Storable(2.0);
  const Storable joined = catenate({a, b}, 1);
  ASSERT_EQ(joined.kindLabel(), "struct (2 x 1)");
  EXPECT_EQ(joined.structure()->value(1, 0).doubleScalar(), 2);
  EXPECT_THROW(catenate({a, StructArray()}, 1), Problem);
}

NumericArray randomPiece(std::mt19937_64& random, const SizeVector& size) {
  DoubleArray numbers = randomArray(random, size);
  for (int64_t i = 0; i < size.numElements(); ++i) numbers.writable()[i] = std::floor(std::abs(numbers[i] * 40)) + 33;
  const Kind kind = Kind(random() % 5);
  return NumericArray(numbers).toKind(kind);
}

TEST(Catenate, OnePassEqualsTheFold) {
  const auto seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937_64 random(seed);
  for (int round = 0; round < 300; ++round) {
    const auto dim = static_cast<int64_t>(1 + random() % 4);
    SizeVector size{int64_t(1 + random() % 2), int64_t(1 + random() % 2), int64_t(1 + random() % 2)};
    std::vector<Storable> list;
    for (auto n = 2 + random() % 5; n > 0; --n) {
      list.emplace_back(randomPiece(random, size.withDimension(dim, static_cast<int64_t>(random() % 4))));
    }
    Storable folded;
    for (const Storable& piece : list) folded = catenate({folded, piece}, dim);
    ASSERT_EQ(describe(*catenate(list, dim).numeric()), describe(*folded.numeric()));
  }
}

TEST(Catenate, ASinglePieceIsItself) {
  const NumericArray a = row({1, 2, 3});
  EXPECT_EQ(catenate({zeros({0, 0}), a}, 2).numeric()->identity(), a.identity());
}

}  // namespace
}  // namespace kelo
