// Reading fields, and writing along chains of fields and subscripts.
#include "values/chains.h"

#include <vector>

#include "expect_failure.h"
#include "messages/catalogue/indexing.h"
#include "values/indexing.h"

namespace kelo {
namespace {

const Name kS = Name::intern("s");
const Name kA = Name::intern("a");
const Name kB = Name::intern("b");
const Name kC = Name::intern("c");

/// "{a: 1, b: [1 x 2 {c: 3} {c: []}]}": numbers as such, an empty array as [], a structure in
/// braces.
std::string describe(const Storable& value) {
  if (const NumericArray* numbers = value.numeric()) {
    std::string result;
    const DoubleArray doubles = numbers->toDoubleArray();
    for (const double x : doubles.values()) result.append(result.empty() ? "" : " ").append(std::to_string(int(x)));
    return numbers->isScalar() ? result : std::string("[").append(result).append("]");
  }
  if (!value.isStructure()) return "@";
  const StructArray& array = *value.structure();
  std::string result;
  for (int64_t k = 0; k < array.numElements(); ++k) {
    std::string element;
    for (int64_t f = 0; f < array.fieldCount(); ++f) {
      element += (f ? ", " : "") + array.fields()[static_cast<size_t>(f)].text() + ": " + describe(array.value(k, f));
    }
    result += std::string(k ? " {" : "{").append(element).append("}");
  }
  return array.size().isScalar() ? result : std::string("[").append(array.size().description() + " " + result + "]");
}

/// "s(2).a.b(3)" as a chain: subscripts are single digits, names single letters.
FieldChain chainOf(const std::string& text, bool byNumbers = false) {
  FieldChain chain(Name::intern(text.substr(0, 1)));
  std::vector<Index> indices;
  std::vector<double> numbers;
  for (size_t k = 1; k < text.size(); ++k) {
    const char c = text[k];
    if (c == '.') chain.addField(Name::intern(text.substr(++k, 1)));
    if (c >= '0' && c <= '9') {
      indices.push_back(Index::one(c - '1'));
      numbers.push_back(c - '0');
    }
    if (c != ')') continue;
    if (!byNumbers || numbers.size() > 2 || !chain.addSubscripts(numbers)) chain.addIndices(indices);
    indices.clear();
    numbers.clear();
  }
  return chain;
}

using Write = std::pair<const char*, Storable>;

/// The variable after all writes, with subscripts of both kinds.
Storable written(const std::vector<Write>& writes) {
  Storable root, other;
  bool isNew = true;
  for (const auto& [chain, value] : writes) {
    chainOf(chain).assign(root, isNew, value);
    chainOf(chain, /*byNumbers=*/true).assign(other, isNew, value);
    isNew = false;
  }
  EXPECT_EQ(describe(root), describe(other));
  return root;
}

TEST(Chains, WritesMakeWhatIsMissing) {
  const Storable one(1.0), two(2.0);
  const std::pair<std::vector<Write>, const char*> rows[] = {
      {{{"s.a", one}, {"s.b", two}, {"s.a", two}}, "{a: 2, b: 2}"},
      {{{"s.a.b.c", one}, {"s.a.b.a", two}}, "{a: {b: {c: 1, a: 2}}}"},
      {{{"s.a", one}, {"s(3).b", two}}, "[1 x 3 {a: 1, b: []} {a: [], b: []} {a: [], b: 2}]"},
      {{{"s(1).a", one}, {"s(2,2).a", two}}, "[2 x 2 {a: 1} {a: []} {a: []} {a: 2}]"},
      {{{"s(2).a(2).b(2,2)", one}}, "[1 x 2 {a: []} {a: [1 x 2 {b: []} {b: [0 0 0 1]}]}]"},
      {{{"s.a(2).b", one}, {"s.a(1).b", two}, {"s.a(2).c", two}}, "{a: [1 x 2 {b: 2, c: []} {b: 1, c: 2}]}"},
  };
  for (const auto& [writes, expected] : rows) EXPECT_EQ(describe(written(writes)), expected);
}

TEST(Chains, RefusedWritesLeaveTheVariable) {
  const Storable one(1.0);
  const Storable nested = written({{"s.a.b", one}, {"s.c", one}});
  const Storable several = written({{"s(2).a", one}});
  const std::tuple<Storable, const char*, Storable, std::string> rows[] = {
      {one, "s.a", one, text::shouldBeStructure("s")},
      {nested, "s.c.a", one, text::notAStructure("c")},
      {nested, "s.a.b(2).c", one, text::notAStructure("b")},
      {several, "s.a", one, text::kStructureScalarExpected},
      {StructArray(SizeVector(), {}), "s.a", one, text::kStructureScalarExpected},
      {written({{"s(2,2).a", one}}), "s(9).a", one, text::kIndexExceedsTotal},
      {nested, "s.b.c(2)", FunctionHandle::builtIn(kA), text::kAssignedNotArray},
      {several, "s(3).b(2)", FunctionHandle::builtIn(kA), text::kAssignedNotArray},
      {nested, "s.a(1)", one, std::string(text::kDataTypesMismatch) + "|" + text::kDataTypesMismatchExpected},
  };
  for (const auto& [before, chain, value, expected] : rows) {
    Storable root = before;
    EXPECT_EQ(problemOf([&] { chainOf(chain).assign(root, false, value); }), expected) << chain;
    EXPECT_EQ(describe(root), describe(before)) << chain;
  }
  FieldChain ranged(kS);
  ranged.addIndices({Index::range(0, 2)});
  ranged.addField(kA);
  Storable root = several;
  EXPECT_EQ(problemOf([&] { ranged.assign(root, false, one); }), text::kStructureScalarExpected);
}

TEST(Chains, CopiesOnlyWhatIsShared) {
  Storable s = written({{"s(2).a.b", DoubleArray(SizeVector(1, 50), 1.0)}});
  const auto inner = [&]() -> const NumericArray& { return *plainField(s.structure()->value(1, 0), kB)->numeric(); };
  const void* block = inner().identity();
  chainOf("s(2).a.b(7)").assign(s, false, Storable(9.0));
  EXPECT_EQ(inner().identity(), block);

  const Storable copy = s;
  chainOf("s(2).a.c").assign(s, false, Storable(5.0));
  EXPECT_EQ(inner().identity(), block);  // a sibling is shared, not copied
  chainOf("s(2).a.b(7)").assign(s, false, Storable(8.0));
  EXPECT_NE(inner().identity(), block);
  EXPECT_EQ(plainField(copy.structure()->value(1, 0), kB)->numeric()->asDouble()[6], 9);
  EXPECT_EQ(plainField(copy.structure()->value(1, 0), kC), nullptr);

  chainOf("s(2).a").assign(s, false, s);  // a structure in itself is a copy of what it was
  EXPECT_EQ(s.structure()->value(1, 0).kindLabel(), "struct (1 x 2)");
}

TEST(Chains, TellWhatTheyHaveReached) {
  const Storable s = written({{"s(2).a.b", DoubleArray(SizeVector(1, 5), 1.0)}});
  EXPECT_EQ(chainOf("s").reached(&s), &s);
  EXPECT_EQ(chainOf("s(2).a.b").reached(&s)->numElements(), 5);
  EXPECT_EQ(chainOf("s(1).a").reached(&s)->numElements(), 0);
  EXPECT_EQ(chainOf("s(9).a").reached(&s), nullptr);
  EXPECT_EQ(chainOf("s(2).a.c").reached(&s), nullptr);
  EXPECT_EQ(chainOf("s.a").reached(nullptr), nullptr);
}

TEST(Chains, FieldsAreRead) {
  const Storable s = written({{"s(1).a", Storable(1.0)}, {"s(2).a", Storable(2.0)}, {"s(3).a", Storable(3.0)}});
  const StructArray& array = *s.structure();
  const Storable all = readField(array, kA);
  ASSERT_EQ(all.list().size(), 3u);
  EXPECT_EQ(describe(all.list()[2]), "3");
  EXPECT_EQ(describe(readField(array.element(1), kA)), "2");
  EXPECT_EQ(problemOf([] { fieldNameOf(CharArray(charRow(""))); }), text::kFieldNameNotText);
}

TEST(Chains, EraseAtTheirEnd) {
  Storable s = written({{"s.a", DoubleArray::row(std::vector<double>{1, 2, 3})}});
  chainOf("s.a(2)").erase(s, false);
  EXPECT_EQ(describe(s), "{a: [1 3]}");
  EXPECT_EQ(problemOf([&] { chainOf("s.a(5)").erase(s, false); }), text::kDeletionExceedsArray);
}

TEST(Chains, PlainFieldsTakeTheShortWay) {
  Storable s = written({{"s.a", Storable(1.0)}});
  const Storable copy = s;
  *writablePlainField(s, kA) = Storable(2.0);
  EXPECT_EQ(describe(s), "{a: 2}");
  EXPECT_EQ(describe(copy), "{a: 1}");
  EXPECT_EQ(writablePlainField(s, kB), nullptr);
  Storable number(1.0);
  EXPECT_EQ(writablePlainField(number, kA), nullptr);
}

TEST(Chains, AMillionLinksAreNoRecursion) {
  FieldChain chain(kS);
  for (int k = 0; k < 1000000; ++k) chain.addField(kA);
  Storable s;
  chain.assign(s, true, Storable(1.0));
  chain.assign(s, false, Storable(2.0));
  EXPECT_EQ(describe(*chain.reached(&s)), "2");
}

}  // namespace
}  // namespace kelo
