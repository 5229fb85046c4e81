#include "values/struct_array.h"

#include "expect_failure.h"
#include "values/function_bodies.h"
#include "values/held_name.h"
#include "values/storable.h"

namespace kelo {
namespace {

const Name kA = Name::intern("a"), kB = Name::intern("b"), kC = Name::intern("c");

Storable number(double x) { return Storable(x); }
double numberAt(const StructArray& s, int64_t element, Name field) {
  return s.value(element, s.fieldIndex(field)).doubleScalar();
}

// 1 x n with fields a and b, holding 10k + 1 and 10k + 2.
StructArray numbered(int64_t n) {
  StructArray s({1, n}, {kA, kB});
  for (int64_t k = 0; k < n; ++k) {
    s.writableValue(k, 0) = number(static_cast<double>(10 * k + 1));
    s.writableValue(k, 1) = number(static_cast<double>(10 * k + 2));
  }
  return s;
}

TEST(StructArray, aCopyNeverShowsALaterChange) {
  StructArray s = numbered(2);
  const StructArray copy = s;
  s.writableValue(0, 0) = number(5);
  s.ensureField(kC);
  s.removeField(kB);
  EXPECT_EQ(copy.fields(), std::vector<Name>({kA, kB}));
  EXPECT_EQ(numberAt(copy, 0, kA), 1);
  EXPECT_EQ(s.fields(), std::vector<Name>({kA, kC}));
  EXPECT_EQ(s.reshaped({2, 1}).size(), SizeVector(2, 1));
  EXPECT_EQ(s.size(), SizeVector(1, 2));
}

TEST(Storable, takesAValueFromInsideItself) {
  StructArray outer({1, 1}, {kA});
  outer.writableValue(0, 0) = Storable(numbered(1));
  Storable s = outer;
  outer = StructArray();
  s = std::move(s.structure()->writableValue(0, 0));
  ASSERT_TRUE(s.isStructure());
  s = s.structure()->value(0, 1);
  EXPECT_EQ(s.doubleScalar(), 2);
}

TEST(Storable, isAnArrayWhenMovedFrom) {
  Storable s = numbered(1);
  const Storable t = std::move(s);
  EXPECT_TRUE(s.isNumeric());
  s = t;
  EXPECT_EQ(numberAt(*s.structure(), 0, kB), 2);
}

TEST(Storable, aLongChainOfStructuresIsDestroyedWithoutRecursion) {
  Storable chain = number(1);
  for (int k = 0; k < 1'000'000; ++k) {
    StructArray link({1, 1}, {kA});
    link.writableValue(0, 0) = std::move(chain);
    chain = std::move(link);
  }
  const Storable copy = chain;
  chain = number(2);
  ASSERT_TRUE(copy.isStructure());
}

TEST(Storable, aLongChainOfHandlesIsDestroyedWithoutRecursion) {
  Storable chain = number(1);
  for (int k = 0; k < 1'000'000; ++k) {
    auto function = makeRef<AnonymousFunction>();
    function->values.push_back(std::move(chain));
    chain = FunctionHandle::anonymous(std::move(function));
  }
  chain = number(2);
}

// What one structure remembers of a name must not mislead another one that has it elsewhere.
TEST(StructArray, findsEachOfManyFieldsWhereverOthersHaveThem) {
  constexpr int kFields = 50;
  std::vector<HeldName> names;
  for (int k = 0; k < kFields; ++k) names.push_back(HeldName::of("field" + std::to_string(k)));
  StructArray forwards, backwards;
  for (int k = 0; k < kFields; ++k) {
    forwards.ensureField(names[static_cast<size_t>(k)]);
    backwards.ensureField(names[static_cast<size_t>(kFields - 1 - k)]);
  }
  backwards.removeField(names[20]);
  names.push_back(HeldName::of("of no structure"));
  for (int k = 0; k < kFields; ++k) {
    const Name name = names[static_cast<size_t>(k)];
    EXPECT_EQ(forwards.fieldIndex(name), k);
    EXPECT_EQ(backwards.fieldIndex(name), k == 20 ? -1 : kFields - 1 - k - (k < 20 ? 1 : 0));
    EXPECT_EQ(forwards.ensureField(name), k);
  }
  EXPECT_FALSE(forwards.hasField(names.back()));
  EXPECT_EQ(forwards.ensureField(names.back()), kFields);
  EXPECT_EQ(backwards.ensureField(names[20]), kFields - 1);
}

}  // namespace
}  // namespace kelo
