// Operators: kinds, implicit expansion, failures as tables; reuse of temporaries and broadcasting
// against plain paths.
#include "values/operators.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <complex>
#include <cstring>

#include "values/arrays.h"

namespace kelo {
namespace {

using namespace kelo::testing;
using Op = BinaryOp;
const char* const kIncompatible = "Incompatible array sizes";

struct BinaryRow {
  NumericArray a;
  Op op;
  NumericArray b;
  const char* expected;
};

void check(std::initializer_list<BinaryRow> rows) {
  for (const BinaryRow& r : rows) {
    EXPECT_EQ(outcome([&] { return elementwise(r.op, r.a, r.b); }), r.expected)
        << describe(r.a) << " op " << static_cast<int>(r.op) << " " << describe(r.b);
  }
}

TEST(Operators, KindsOfArithmetic) {
  check({
      {truth(true), Op::plus, truth(true), "double 1 x 1: 2"},
      {text("a"), Op::plus, text("b"), "double 1 x 1: 195"},
      {whole(3), Op::minus, truth(true), "int 1 x 1: 2"},
      {whole(3), Op::plus, num(0.5), "double 1 x 1: 3.5"},
      {whole(7), Op::rdivide, whole(2), "double 1 x 1: 3.5"},
      {complex(1, 2), Op::dmult, complex(1, -2), "complex 1 x 1: 5,0"},
      {complex(4, 2), Op::rdivide, complex(1, 1), "complex 1 x 1: 3,-1"},
      {num(1), Op::rdivide, num(-0.0), "double 1 x 1: -inf"},
      {num(kInf), Op::minus, num(kInf), "double 1 x 1: nan"},
      {whole(INT64_MAX), Op::plus, whole(1), "fatal: integer overflow in an addition"},
      {whole(INT64_MIN), Op::minus, whole(1), "fatal: integer overflow in a subtraction"},
      {whole(INT64_MAX), Op::dmult, whole(2), "fatal: integer overflow in a multiplication"},
  });
}

TEST(Operators, Expansion) {
  check({
      {row({1, 2}), Op::plus, column({1, 2}), "double 2 x 2: 2 3 3 4"},
      {row({1, 2, 3}), Op::plus, row({1, 2}), kIncompatible},
      {shaped({2, 1, 2}, {1, 2, 3, 4}), Op::dmult, row({10, 100}), "double 2 x 2 x 2: 10 20 100 200 30 40 300 400"},
      {shaped({1, 1, 2}, {1, 2}), Op::minus, shaped({2, 2}, {1, 2, 3, 4}), "double 2 x 2 x 2: 0 -1 -2 -3 1 0 -1 -2"},
      {zeros({0, 3}), Op::plus, num(5), "double 0 x 3:"},
      {num(5), Op::plus, zeros({0, 3}), "double 0 x 0:"},
      {zeros({0, 3}), Op::plus, zeros({2, 0}), "double 0 x 3:"},
      {zeros({0, 0}), Op::plus, whole(1), "int 0 x 0:"},
      {row({1, 2}), Op::plus, zeros({0, 0}), kIncompatible},
      {text("\U0001F600"), Op::minus, num(0), "double 2 x 1: 55357 56832"},
  });
}

TEST(Operators, Comparisons) {
  check({
      {complex(1, 2), Op::lt, complex(1, 5), "logical 1 x 1: false"},
      {complex(1, 2), Op::le, complex(1, 5), "logical 1 x 1: true"},
      {complex(1, kNaN), Op::ge, num(0), "logical 1 x 1: false"},
      {complex(1, 0), Op::eqeq, num(1), "logical 1 x 1: true"},
      {num(0.0), Op::eqeq, num(-0.0), "logical 1 x 1: true"},
      {text("abc"), Op::eqeq, text("axc"), "logical 1 x 3: true false true"},
      {text("\u00e9"), Op::eqeq, text("e\u0301"), "logical 1 x 1: true"},
      {text("\x01"), Op::eqeq, truth(true), "logical 1 x 1: true"},
      {row({1, 2}), Op::lt, column({2, 3}), "logical 2 x 2: true true false true"},
  });
}

TEST(Operators, Logic) {
  const char* const nanText = "NaN is not convertible to a logical";
  check({
      {row({0, 2, kInf}), Op::and_, num(1), "logical 1 x 3: false true true"},
      {row({0, 2}), Op::or_, truth(false), "logical 1 x 2: false true"},
      {num(kNaN), Op::or_, truth(true), nanText},
      {zeros({0, 0}), Op::and_, num(kNaN), "logical 0 x 0:"},
      {complex(0, 1), Op::and_, num(1), "A complex number is not convertible to a logical"},
      {text("ab"), Op::and_, truth(true), "logical 1 x 2: true true"},
  });
}

TEST(Operators, Powers) {
  check({
      {num(2), Op::dpower, row({0, 1, 10}), "double 1 x 3: 1 2 1024"},
      {num(0), Op::dpower, row({0, -1, 2}), "double 1 x 3: 1 inf 0"},
      {num(-2), Op::dpower, num(kInf), "double 1 x 1: inf"},
      {row({4, 9}), Op::dpower, num(0.5), "double 1 x 2: 2 3"},
      {row({-1, 9}), Op::dpower, row({2, 0.5}), "double 1 x 2: 1 3"},
      {row({-2, 9}), Op::dpower, row({2, -0.5}), "double 1 x 2: 4 0.33333333333333331"},
      {complex(1, 2), Op::dpower, num(2), "complex 1 x 1: -3,4"},
      {complex(3, 0), Op::dpower, num(2), "double 1 x 1: 9"},
      {num(0), Op::dpower, complex(1, 1), "complex 1 x 1: 0,0"},
      {complex(0, 1), Op::dpower, num(0), "complex 1 x 1: 1,0"},
  });
  // One element outside the real domain takes the whole array with it; the others keep their real
  // values exactly.
  const NumericArray mixed = elementwise(Op::dpower, row({-4, 9}), num(0.5));
  ASSERT_TRUE(mixed.is(Kind::Complex));
  EXPECT_NEAR(mixed.asComplex()[0].imaginary, 2, 1e-15);
  EXPECT_EQ(mixed.asComplex()[1], (ComplexDouble{3, 0}));
  const ComplexDouble z = complexPower({1.5, -0.5}, {0.25, 2});  // against exp(b log a) by the C library
  const std::complex<double> expected = std::pow(std::complex<double>(1.5, -0.5), std::complex<double>(0.25, 2));
  EXPECT_NEAR(z.real, expected.real(), 1e-15);
  EXPECT_NEAR(z.imaginary, expected.imag(), 1e-15);
}

// Sums, products and squares of many complex numbers are loops of their own.
TEST(Operators, OfManyComplexNumbersAreThoseOfEach) {
  const double parts[] = {0.0, -0.0, 1.5, -2.25, 1e200, kInf, -kInf, kNaN};
  auto a = ComplexDoubleArray::uninitialized(SizeVector(1, 64)), b = a;
  for (int64_t i = 0; i < 64; ++i) {
    a.writable()[i] = {parts[i % 8], parts[i / 8]};
    b.writable()[i] = {parts[(i + 3) % 8], parts[(i * 5 + i / 8) % 8]};
  }
  const auto same = [](double x, double y) { return (x != x && y != y) || std::memcmp(&x, &y, sizeof x) == 0; };
  for (const Op op : {Op::plus, Op::minus, Op::dmult, Op::dpower}) {
    const NumericArray right = op == Op::dpower ? num(2) : NumericArray(b), together = elementwise(op, a, right);
    for (int64_t i = 0; i < 64; ++i) {
      const NumericArray y = op == Op::dpower ? num(2) : NumericArray(ComplexDoubleArray(b[i]));
      const ComplexDouble z = together.asComplex()[i];
      const ComplexDouble alone = elementwise(op, ComplexDoubleArray(a[i]), y).toComplexArray().scalar();
      EXPECT_TRUE(same(z.real, alone.real) && same(z.imaginary, alone.imaginary)) << describe(ComplexDoubleArray(a[i]));
    }
  }
}

TEST(Operators, Unary) {
  const std::tuple<UnaryOp, NumericArray, const char*> rows[] = {
      {UnaryOp::plus, text("a"), "char 1 x 1: a"},
      {UnaryOp::minus, text("a"), "double 1 x 1: -97"},
      {UnaryOp::minus, row({0, -1}), "double 1 x 2: -0 1"},
      {UnaryOp::minus, complex(1, -2), "complex 1 x 1: -1,2"},
      {UnaryOp::minus, whole(INT64_MIN), "fatal: integer overflow in a subtraction"},
      {UnaryOp::not_, row({0, 2}), "logical 1 x 2: true false"},
      {UnaryOp::not_, num(kNaN), "NaN is not convertible to a logical"},
  };
  for (const auto& [op, a, expected] : rows) EXPECT_EQ(outcome([&] { return unary(op, a); }), expected) << describe(a);
}

TEST(Operators, CommonKindBesideEmpties) {
  EXPECT_EQ(commonKind(zeros({0, 0}), text("a")), Kind::Char);
  EXPECT_EQ(commonKind(text("a"), zeros({0, 0})), Kind::Char);
  EXPECT_EQ(commonKind(complex(1, 1).emptyLike(), zeros({0, 3})), Kind::Double);
}

TEST(Operators, TemporaryReceivesTheResult) {
  NumericArray kept = row({1, 2, 3});
  NumericArray temporary = row({10, 20, 30});
  const void* block = temporary.identity();
  const NumericArray sum = elementwise(Op::plus, kept, std::move(temporary));
  EXPECT_EQ(sum.identity(), block);
  EXPECT_EQ(describe(sum), "double 1 x 3: 11 22 33");
  EXPECT_NE(elementwise(Op::plus, kept, sum).identity(), block) << "a value that is still held must not be written";
  EXPECT_EQ(describe(elementwise(Op::dmult, kept, kept)), "double 1 x 3: 1 4 9");
  EXPECT_EQ(describe(kept), "double 1 x 3: 1 2 3");
  // A temporary that is smaller than the result cannot hold it.
  EXPECT_EQ(describe(elementwise(Op::plus, row({1, 2}), column({1, 2}))), "double 2 x 2: 2 3 3 4");
}

// Arrays of all small lengths, and one that is worked on by several cores, against single elements.
TEST(Operators, LengthsAgainstSingleElements) {
  const double special[] = {0.0, -0.0, kNaN, kInf, -kInf, 1, -2.5, 1e308};
  const auto element = [&](int64_t i) { return i % 3 == 0 ? special[i % 8] : static_cast<double>(i) - 20; };
  for (const int64_t n : {2, 3, 7, 8, 9, 31, 33, 70000}) {
    auto a = DoubleArray::uninitialized(SizeVector(1, n)), b = a;
    auto p = LogicalArray::uninitialized(SizeVector(1, n)), q = p;
    for (int64_t i = 0; i < n; ++i) {
      a.writable()[i] = element(i);
      b.writable()[i] = element(n + 1 - i);
      p.writable()[i] = i % 3 == 0;
      q.writable()[i] = i % 5 < 2;
    }
    for (const Op op : {Op::plus, Op::minus, Op::dmult, Op::rdivide}) {
      const NumericArray scalar = num(3);
      const DoubleArray both = elementwise(op, a, b).asDouble();
      const DoubleArray right = elementwise(op, a, scalar).asDouble(), left = elementwise(op, scalar, b).asDouble();
      for (int64_t i = 0; i < n; ++i) {
        double expected[3];
        scalarArithmetic(op, a[i], b[i], expected);
        scalarArithmetic(op, a[i], 3, expected + 1);
        scalarArithmetic(op, 3, b[i], expected + 2);
        const double given[] = {both[i], right[i], left[i]};
        for (int k = 0; k < 3; ++k) {
          ASSERT_TRUE(std::bit_cast<uint64_t>(given[k]) == std::bit_cast<uint64_t>(expected[k]) ||
                      (std::isnan(given[k]) && std::isnan(expected[k])))
              << static_cast<int>(op) << " of " << n << " at " << i;
        }
      }
    }
    const LogicalArray some = elementwise(Op::or_, p, q).asLogical(), all = elementwise(Op::and_, p, q).asLogical();
    const LogicalArray none = unary(UnaryOp::not_, p).asLogical();
    for (int64_t i = 0; i < n; ++i) {
      ASSERT_TRUE(some[i] == (p[i] || q[i]) && all[i] == (p[i] && q[i]) && none[i] == !p[i]) << n << " at " << i;
    }
  }
}

// Texts longer than the pieces they are compared in, with a composed letter and its decomposed
// spelling among them.
TEST(Operators, LongTexts) {
  const std::string plain(600, 'x');
  const CharArray a = charRow(plain + "\u00e9" + plain), b = charRow(plain + "e\u0301" + plain + "");
  const LogicalArray same = elementwise(Op::eqeq, a, b).asLogical(), other = elementwise(Op::neq, a, b).asLogical();
  const LogicalArray letters = elementwise(Op::eqeq, a, text("x")).asLogical();
  for (int64_t i = 0; i < a.numElements(); ++i) {
    ASSERT_TRUE(same[i] && !other[i]) << i;
    ASSERT_EQ(letters[i], i != 600) << i;
  }
}

// The same operation on operands replicated by subscripts.
DoubleArray byReplication(Op op, const DoubleArray& a, const DoubleArray& b, const SizeVector& size) {
  const auto read = [](const DoubleArray& x, const std::vector<int64_t>& subscripts) {
    std::vector<int64_t> own;
    for (size_t d = 0; d < subscripts.size(); ++d) {
      own.push_back(x.size().dimensionLength(static_cast<int64_t>(d) + 1) == 1 ? 0 : subscripts[d]);
    }
    return x[positionOf(x.size(), own)];
  };
  DoubleArray result = DoubleArray::uninitialized(size);
  for (int64_t i = 0; i < size.numElements(); ++i) {
    const auto subscripts = subscriptsOf(size, i);
    EXPECT_TRUE(scalarArithmetic(op, read(a, subscripts), read(b, subscripts), result.writable() + i));
  }
  return result;
}

TEST(Operators, BroadcastEqualsReplication) {
  const auto seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937_64 random(seed);
  for (int round = 0; round < 200; ++round) {
    std::vector<int64_t> sizeA, sizeB, size;
    for (int d = 0; d < 4; ++d) {
      const auto n = static_cast<int64_t>(1 + random() % 4);
      const auto form = random() % 3;
      sizeA.push_back(form == 1 ? 1 : n);
      sizeB.push_back(form == 2 ? 1 : n);
      size.push_back(n);
    }
    const DoubleArray a = randomArray(random, SizeVector(sizeA));
    const DoubleArray b = randomArray(random, SizeVector(sizeB));
    const Op op = std::array{Op::plus, Op::minus, Op::dmult, Op::rdivide, Op::ldivide}[random() % 5];
    const std::string expected = describe(byReplication(op, a, b, SizeVector(size)));
    ASSERT_EQ(describe(elementwise(op, a, b)), expected) << a.size().description() << " and " << b.size().description();
    DoubleArray x(a), y(b);  // and with operands that nobody else holds
    x.writable(), y.writable();
    ASSERT_EQ(describe(elementwise(op, std::move(x), std::move(y))), expected);
  }
}

TEST(Operators, Transposes) {
  const std::tuple<Storable, bool, const char*> rows[] = {
      {shaped({2, 3}, {1, 2, 3, 4, 5, 6}), false, "double 3 x 2: 1 3 5 2 4 6"},
      {text("ab"), true, "char 2 x 1: a b"},
      {zeros({0, 3}), true, "double 3 x 0:"},
      {complexShaped({1, 2}, {{1, 2}, {3, -4}}), true, "complex 2 x 1: 1,-2 3,4"},
      {complexShaped({1, 2}, {{1, 2}, {3, -4}}), false, "complex 2 x 1: 1,2 3,-4"},
      {zeros({1, 1, 2}), false, "Transpose should be applied to a scalar, vector or matrix"},
      {FunctionHandle::builtIn(Name::intern("sin")), false, "Transpose should be performed on an array"},
  };
  for (const auto& [a, conjugate, expected] : rows) {
    EXPECT_EQ(outcome([&] { return *transpose(a, conjugate).numeric(); }), expected);
  }
  std::mt19937_64 random(1);
  for (const SizeVector& size : {SizeVector(37, 70), SizeVector(64, 64), SizeVector(3, 1000), SizeVector(129, 33)}) {
    const DoubleArray a = randomArray(random, size);
    const Storable once = transpose(a, true);
    ASSERT_EQ(once.numeric()->asDouble()[size.columns()], a[1]);
    ASSERT_EQ(describe(*transpose(once, true).numeric()), describe(a));
  }
}

}  // namespace
}  // namespace kelo
