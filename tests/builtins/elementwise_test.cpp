// Element-wise mathematics: values from tables and identities, the real and the complex path,
// signed zeros, NaN, Inf, empties, kinds, and the complaints.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "builtins/calls.h"

namespace kelo {
namespace {

using namespace kelo::testing;
using C = std::complex<double>;

Storable structure() { return StructArray(); }

TEST(Trigonometry, valuesFromTables) {
  const struct {
    const char* name;
    double x, expected;
  } rows[] = {
      // clang-format off
      {"cos", 1, 0.54030230586813977},      {"sin", 1, 0.8414709848078965},       {"tan", 1, 1.5574077246549023},
      {"cosh", 1, 1.5430806348152437},      {"sinh", 1, 1.1752011936438014},      {"tanh", 1, 0.76159415595576485},
      {"acos", 0.5, 1.0471975511965976},    {"asin", 0.5, 0.52359877559829893},   {"atan", 1, 0.78539816339744828},
      {"acosh", 2, 1.3169578969248168},     {"asinh", 1, 0.88137358701954305},    {"atanh", 0.5, 0.54930614433405489},
      {"cosd", 60, 0.5},                    {"sind", 30, 0.5},                    {"tand", 45, 1},
      {"acosd", 0.5, 60},                   {"asind", 0.5, 30},                   {"atand", 1, 45},
      {"deg2rad", 180, 3.141592653589793},  {"degtorad", 180, 3.141592653589793}, {"rad2deg", 1, 57.29577951308232},
      {"radtodeg", 1, 57.29577951308232},   {"csc", 1, 1.1883951057781212},       {"sec", 1, 1.8508157176809255},
      {"cot", 1, 0.64209261593433076},      {"cscd", 30, 2},                      {"secd", 60, 2},
      {"cotd", 45, 1},                      {"csch", 1, 0.85091812823932156},     {"sech", 1, 0.64805427366388535},
      {"coth", 1, 1.3130352854993312},      {"acsc", 2, 0.52359877559829893},     {"asec", 2, 1.0471975511965979},
      {"acot", 2, 0.46364760900080609},     {"acscd", 2, 30},                     {"asecd", 2, 60},
      {"acotd", 1, 45},                     {"acsch", 1, 0.88137358701954305},    {"asech", 0.5, 1.3169578969248168},
      {"acoth", 2, 0.54930614433405489},
      // clang-format on
  };
  for (const auto& r : rows) {
    const NumericArray y = called(r.name, {num(r.x)});
    ASSERT_TRUE(y.isDoubleScalar()) << r.name;
    EXPECT_NEAR(y.asDouble().scalar(), r.expected, 4e-16 * std::fabs(r.expected)) << r.name;
  }
}

TEST(Trigonometry, degreesAreProducts) {
  check({
      {"cosd", {num(90)}, "double 1 x 1: 6.123233995736766e-17"},
      {"sind", {num(180)}, "double 1 x 1: 1.2246467991473532e-16"},
      {"csc", {row({0.0, -0.0})}, "double 1 x 2: inf -inf"},
      {"acot", {row({0.0, -0.0})}, "double 1 x 2: 1.5707963267948966 -1.5707963267948966"},
      {"sin", {row({-0.0, kInf, kNaN})}, "double 1 x 3: -0 nan nan"},
      {"asech", {num(0)}, "double 1 x 1: inf"},
      {"atanh", {row({1, -1})}, "double 1 x 2: inf -inf"},
  });
  EXPECT_GT(called("tand", {num(90)}).asDouble().scalar(), 1e16);
}

// One element outside the real domain makes the whole array complex; NaN does not, except in asech.
TEST(Trigonometry, domains) {
  const auto isComplex = [](const char* name, List x) { return called(name, {row(x)}).is(Kind::Complex); };
  for (const char* name : {"acos", "acosd", "asin", "asind", "atanh"}) {
    EXPECT_FALSE(isComplex(name, {-1, 1, kNaN})) << name;
    EXPECT_TRUE(isComplex(name, {0, -1.5})) << name;
    EXPECT_TRUE(isComplex(name, {kInf})) << name;
  }
  for (const char* name : {"acsc", "acscd", "asec", "asecd", "acoth"}) {
    EXPECT_FALSE(isComplex(name, {-1, 1, kInf, kNaN})) << name;
    EXPECT_TRUE(isComplex(name, {2, 0.5})) << name;
  }
  EXPECT_FALSE(isComplex("acosh", {1, kInf, kNaN}));
  EXPECT_TRUE(isComplex("acosh", {2, 0.5}));
  EXPECT_FALSE(isComplex("asech", {0, 0.5, 1}));
  for (const double x : {2.0, -0.5, kNaN}) EXPECT_TRUE(isComplex("asech", {1, x})) << x;
  for (const char* name : {"cos", "tan", "sinh", "asinh", "atan", "acsch", "acot", "sec"})
    EXPECT_FALSE(isComplex(name, {-9, 9}));
  volatile double two = 2;  // else the compiler works it out with more digits
  const C expected = std::acos(C(two, 0));
  const NumericArray y = called("acos", {row({0, 2})});
  EXPECT_EQ(y.asComplex()[1], (ComplexDouble{expected.real(), expected.imag()}));
}

TEST(Trigonometry, complexArguments) {
  const C z(0.3, -1.7);
  const double degree = std::acos(-1.0) / 180;
  const std::pair<const char*, C> rows[] = {
      {"sin", std::sin(z)},           {"cosh", std::cosh(z)},           {"atanh", std::atanh(z)},
      {"sec", 1.0 / std::cos(z)},     {"acot", std::atan(1.0 / z)},     {"acoth", std::atanh(1.0 / z)},
      {"tand", std::tan(z * degree)}, {"asind", std::asin(z) / degree}, {"rad2deg", z / degree},
  };
  for (const auto& [name, expected] : rows) {
    const ComplexDouble w = called(name, {complex(0.3, -1.7)}).asComplex().scalar();
    EXPECT_LT(std::abs(C(w.real, w.imaginary) - expected), 1e-14 * std::abs(expected)) << name;
  }
  check({{"csc", {complex(0, 0)}, "complex 1 x 1: nan,nan"}, {"acsc", {num(0)}, "complex 1 x 1: nan,nan"}});
}

TEST(Elementwise, kindsSizesAndComplaints) {
  check({
      {"sin", {zeros({0, 3})}, "double 0 x 3:"},
      {"cos", {shaped({1, 1, 2}, {0, 0})}, "double 1 x 1 x 2: 1 1"},
      {"sqrt", {whole(9)}, "double 1 x 1: 3"},
      {"sqrt", {text("1")}, "double 1 x 1: 7"},
      {"sin", {structure()}, " | In sin(A), A should be a numeric array"},
      {"exp", {structure()}, " | exp() expects a numeric array as input argument"},
      {"ceil", {structure()}, " | ceil() expects numeric array as its input argument"},
      {"eps", {structure()}, " | In eps(A), A should be a numerical array"},
      {"eq", {num(1), structure()}, " | In eq(A, B), B should be a numeric array"},
  });
}

// Whatever it is given, a function answers with an array of the size of its argument, or complains.
TEST(Elementwise, answersOrComplainsOfAnything) {
  const double huge = std::numeric_limits<double>::max();
  const NumericArray specials = shaped({1, 2, 2}, {kInf, -kInf, kNaN, -0.0});
  // clang-format off
  const Storable values[] = {zeros({0, 0}),        zeros({0, 3, 2}),    specials,         row({huge, -5e-324}),
                             complex(kNaN, -kInf), complex(huge, huge), whole(INT64_MIN), truth(true),
                             text("a\u00e9"),      text("\U0001F600"),  text(""),         structure(),
                             FunctionHandle::builtIn(Name::intern("sin"))};
  // clang-format on
  std::vector<Builtin> rows;
  for (const auto table : {builtins::trigonometryTable(), builtins::complexPartsTable(), builtins::exponentialsTable(),
                           builtins::roundingTable(), builtins::sequencesTable(), builtins::constantsTable(),
                           builtins::arithmeticTable(), builtins::logicTable()}) {
    rows.insert(rows.end(), table.begin(), table.end());
  }
  for (const Builtin& r : rows) {
    for (const Storable& a : values) {
      const std::vector<Storable> args(static_cast<size_t>(r.inputs.least), a);
      try {
        const NumericArray result = called(r.name, args);
        const bool isMatrixOperator = std::string_view(r.arguments).find('b') != std::string_view::npos;
        if (args.empty() || isMatrixOperator || std::string_view(r.name) == "mtimes") continue;
        // `eq` and `ne` compare characters, the others the numbers that a character gives.
        EXPECT_TRUE(result.numElements() == a.numElements() ||
                    result.numElements() == a.numeric()->toDoubleArray().numElements())
            << r.name << " of " << describe(*a.numeric());
      } catch (const Problem&) {
      } catch (const FatalFault& fault) {
        EXPECT_TRUE(a.numeric() && a.numeric()->is(Kind::Int)) << r.name << ": " << fault.what;
      }
    }
  }
}

// Memory of a temporary serves the result; that of a variable does not.
TEST(Elementwise, leavesVariablesAlone) {
  const NumericArray kept = row({4, 9});
  for (const char* name : {"sqrt", "abs", "sin", "floor", "sign", "factorial", "conj"}) {
    called(name, {kept});
    EXPECT_EQ(describe(kept), "double 1 x 2: 4 9") << name;
  }
}

TEST(Exponentials, realAndComplex) {
  check({
      {"exp", {row({0, 1, -kInf, 710})}, "double 1 x 4: 1 2.7182818284590451 0 inf"},
      {"log2", {row({8, 0, -8})}, "double 1 x 3: 3 -inf nan"},
      {"log10", {row({1000, -1})}, "double 1 x 2: 3 nan"},
      {"log", {row({1, 0.0, -0.0, kNaN, kInf})}, "double 1 x 5: 0 -inf -inf nan inf"},
      {"log", {row({1, -1})}, "complex 1 x 2: 0,0 0,3.1415926535897931"},
      {"log2", {complex(-8, 0)}, "complex 1 x 1: 3,4.5323601418271942"},
      {"log10", {complex(0, 100)}, "complex 1 x 1: 2,0.6821881769209206"},
      {"sqrt", {num(-4)}, "complex 1 x 1: 0,2"},
      {"sqrt", {row({-0.0, kNaN, kInf})}, "double 1 x 3: -0 nan inf"},
      {"sqrt", {complex(-3, 4)}, "complex 1 x 1: 1,2"},
      {"reallog", {num(0)}, "double 1 x 1: -inf"},
      {"realsqrt", {num(-1)}, " | realsqrt() expects non-negative inputs"},
      {"reallog", {row({1, -1})}, " | reallog() expects non-negative inputs"},
      {"realsqrt", {complex(1, 0)}, " | realsqrt() expects a real input"},
      {"reallog", {complex(1, 1)}, " | reallog() expects a real input"},
  });
}

// The loops over many against the C library, bit for bit.
TEST(Exponentials, rootsOfManyComplexNumbersAreThoseOfTheLibrary) {
  std::mt19937_64 random(4);
  std::vector<double> parts = {0.0, -0.0, 1, -1, 0.3, 5e-324, -1e-300, 1e308, kInf, -kInf, kNaN};
  while (parts.size() < 60) {
    parts.push_back(std::exp2(static_cast<int>(random() % 600) - 300) * (random() % 2 ? 1 : -1));
  }
  const auto n = static_cast<int64_t>(parts.size());
  auto z = ComplexDoubleArray::uninitialized(SizeVector(n, n));
  for (int64_t i = 0; i < n * n; ++i) {
    z.writable()[i] = {parts[static_cast<size_t>(i % n)], parts[static_cast<size_t>(i / n)]};
  }
  const NumericArray roots = called("sqrt", {z}), ofReals = called("sqrt", {DoubleArray::row(parts)});
  const auto same = [](double x, double y) { return std::memcmp(&x, &y, sizeof x) == 0 || (x != x && y != y); };
  const auto expectRoot = [&](ComplexDouble given, ComplexDouble root) {
    const std::complex<double> expected = std::sqrt(std::complex<double>(given.real, given.imaginary));
    EXPECT_TRUE(same(root.real, expected.real()) && same(root.imaginary, expected.imag())) << given.real << " + i*"
                                                                                           << given.imaginary;
  };
  for (int64_t i = 0; i < n * n; ++i) expectRoot(z[i], roots.asComplex()[i]);
  for (int64_t i = 0; i < n; ++i) expectRoot({parts[static_cast<size_t>(i)], 0}, ofReals.asComplex()[i]);
}

TEST(Rounding, awayFromZeroAtHalves) {
  const NumericArray x = row({2.5, -2.5, 0.49999999999999994, -0.3, 1.7, -1.7, kInf, kNaN, -0.0});
  check({
      {"round", {x}, "double 1 x 9: 3 -3 0 -0 2 -2 inf nan -0"},
      {"fix", {x}, "double 1 x 9: 2 -2 0 -0 1 -1 inf nan -0"},
      {"ceil", {x}, "double 1 x 9: 3 -2 1 -0 2 -1 inf nan -0"},
      {"floor", {x}, "double 1 x 9: 2 -3 0 -1 1 -2 inf nan -0"},
      {"round", {complex(2.5, -0.7)}, "complex 1 x 1: 3,-1"},
      {"fix", {complex(2.5, -1.7)}, "complex 1 x 1: 2,-1"},
  });
}

TEST(ComplexParts, ofRealAndComplex) {
  const NumericArray x = row({-2, 0.0, -0.0, 3, kNaN, -kInf});
  check({
      {"abs", {x}, "double 1 x 6: 2 0 0 3 nan inf"},
      {"sign", {x}, "double 1 x 6: -1 0 0 1 nan -1"},
      {"angle", {x}, "double 1 x 6: 3.1415926535897931 0 0 0 nan 3.1415926535897931"},
      {"conj", {x}, "double 1 x 6: -2 0 -0 3 nan -inf"},
      {"imag", {x}, "double 1 x 6: 0 0 0 0 0 0"},
      {"abs", {complex(3, -4)}, "double 1 x 1: 5"},
      {"abs", {complex(1e200, 0)}, "double 1 x 1: inf"},
      {"sign", {complex(3, -4)}, "complex 1 x 1: 0.6,-0.8"},
      {"sign", {complex(0, 0)}, "complex 1 x 1: nan,nan"},
      {"angle", {complex(0, -2)}, "double 1 x 1: -1.5707963267948966"},
      {"conj", {complex(1, 2)}, "complex 1 x 1: 1,-2"},
      {"imag", {complex(1, 2)}, "double 1 x 1: 2"},
      {"complex", {num(2)}, "complex 1 x 1: 2,0"},
      {"complex", {row({1, 2}), num(3)}, "complex 1 x 2: 1,3 2,3"},
      {"complex", {row({1, 2}), row({1, 2, 3})}, "Incompatible array sizes"},
      {"complex", {complex(1, 2), num(3)}, " | In complex(A, B), A should be a numeric array of real numbers"},
  });
}

TEST(Remainders, plainDivision) {
  check({
      {"mod", {row({5, -1, 5, -5, 5.5}), row({0, 3, -3, 3, 2})}, "double 1 x 5: 5 2 -1 1 1.5"},
      {"rem", {row({5, -1, 5, -5, 5.5}), row({0, 3, -3, 3, 2})}, "double 1 x 5: nan -1 2 -2 1.5"},
      {"mod", {num(0.3), num(0.1)}, "double 1 x 1: 0.099999999999999978"},
      {"mod", {num(5), num(kInf)}, "double 1 x 1: nan"},
      {"mod", {row({1, 5}), column({2, 3})}, "double 2 x 2: 1 1 1 2"},
      {"mod", {text("a"), num(10)}, "double 1 x 1: 7"},
      {"rem", {num(1), complex(1, 1)}, " | In rem(A, B), A and B should be real numeric arrays"},
      {"mod", {row({1, 2}), row({1, 2, 3})}, " | In mod(A, B), A and B should have compatible sizes"},
  });
}

TEST(Sequences, factorialAndFibonacci) {
  const char* const wrong = " should be an array of non-negative real integers, not equal to Inf nor NaN";
  check({
      {"factorial", {row({0, 1, 5, 20})}, "double 1 x 4: 1 1 120 2.43290200817664e+18"},
      {"factorial", {row({170, 171, 1e300})}, "double 1 x 3: 7.257415615307994e+306 inf inf"},
      {"factorial", {zeros({0, 2})}, "double 0 x 2:"},
      {"fibonacci", {row({0, 1, 2, 3, 10})}, "double 1 x 5: 0 1 1 2 55"},
      {"fibonacci", {row({78, 79, 100})}, "double 1 x 3: 8944394323791464 14472334024676220 3.5422484817926193e+20"},
      {"fibonacci", {row({1000, 1476, 1477})}, "double 1 x 3: 4.3466557686937455e+208 1.3069892237633993e+308 inf"},
  });
  for (const double x : {2.5, -1.0, kInf, kNaN}) {
    for (const char* name : {"factorial", "fibonacci"}) {
      EXPECT_EQ(outcomeOf(name, {num(x)}), std::string(" | In ") + name + "(A), A" + wrong) << x;
    }
  }
  EXPECT_EQ(outcomeOf("factorial", {complex(1, 1)}), std::string(" | In factorial(A), A") + wrong);
}

TEST(Constants, piAndEps) {
  check({
      {"pi", {}, "double 1 x 1: 3.1415926535897931"},
      {"eps", {}, "double 1 x 1: 2.2204460492503131e-16"},
      {"eps", {row({1, -1000, kNaN})}, "double 1 x 3: 2.2204460492503131e-16 1.1368683772161603e-13 nan"},
      {"eps", {complex(3, 4)}, "double 1 x 1: 8.8817841970012523e-16"},
  });
  EXPECT_EQ(called("eps", {num(-0.0)}).asDouble().scalar(), 5e-324);
}

TEST(OperatorsByName, followTheOperators) {
  check({
      {"and", {row({1, 0}), num(1)}, "logical 1 x 2: true false"},
      {"or", {row({1, 0}), num(0)}, "logical 1 x 2: true false"},
      {"xor", {row({1, 0}), column({1, 0})}, "logical 2 x 2: false true true false"},
      {"not", {row({1, 0})}, "logical 1 x 2: false true"},
      {"eq", {text("ab"), text("ac")}, "logical 1 x 2: true false"},
      {"ne", {num(kNaN), num(kNaN)}, "logical 1 x 1: true"},
      {"lt", {row({1, 2, 3}), num(2)}, "logical 1 x 3: true false false"},
      {"le", {row({1, 2, 3}), num(2)}, "logical 1 x 3: true true false"},
      {"gt", {row({1, 2, 3}), num(2)}, "logical 1 x 3: false false true"},
      {"ge", {row({1, 2, 3}), num(2)}, "logical 1 x 3: false true true"},
      {"xor", {num(1), num(kNaN)}, "NaN is not convertible to a logical"},
      {"times", {row({1, 2}), row({3, 4})}, "double 1 x 2: 3 8"},
      {"mtimes", {row({1, 2}), column({3, 4})}, "double 1 x 1: 11"},
      {"ldivide", {num(2), row({1, 4})}, "double 1 x 2: 0.5 2"},
      {"rdivide", {row({1, 4}), num(2)}, "double 1 x 2: 0.5 2"},
      {"mldivide", {shaped({2, 2}, {2, 0, 0, 4}), column({4, 4})}, "double 2 x 1: 2 1"},
      {"mrdivide", {row({4, 4}), shaped({2, 2}, {2, 0, 0, 4})}, "double 1 x 2: 2 1"},
      {"power", {row({1, 2, 3}), num(2)}, "double 1 x 3: 1 4 9"},
      {"mpower", {shaped({2, 2}, {1, 1, 1, 0}), num(10)}, "double 2 x 2: 89 55 55 34"},
      {"realpow", {row({4, -2}), num(3)}, "double 1 x 2: 64 -8"},
      {"realpow", {row({4, -4}), num(0.5)}, " | realpow() expects inputs that give real results"},
  });
}

TEST(Kinds, answers) {
  // A value and the questions that it answers with yes.
  const std::pair<Storable, const char*> rows[] = {
      {num(1), " iscolumn ismatrix isnumeric isreal isrow isscalar isvector"},
      {whole(1), " iscolumn ismatrix isnumeric isreal isrow isscalar isvector"},
      {truth(true), " iscolumn islogical ismatrix isreal isrow isscalar isvector"},
      {complex(1, 0), " iscolumn ismatrix isnumeric isrow isscalar isvector"},
      {text("ab"), " ischar ismatrix isreal isrow isvector"},
      {zeros({0, 0}), " isempty ismatrix isnumeric isreal"},
      {zeros({1, 0}), " isempty ismatrix isnumeric isreal isrow"},
      {zeros({3, 1}), " iscolumn ismatrix isnumeric isreal isvector"},
      {zeros({1, 1, 2}), " isnumeric isreal"},
      {StructArray(), " iscolumn ismatrix isrow isscalar isstruct isvector"},
      {FunctionHandle::builtIn(Name::intern("sin")), ""},
  };
  for (const auto& [value, expected] : rows) {
    std::string yes;
    for (const char* name : {"ischar", "iscolumn", "isempty", "islogical", "ismatrix", "isnumeric", "isreal", "isrow",
                             "isscalar", "isstruct", "isvector"}) {
      if (called(name, {value}).asLogical().scalar()) yes.append(" ").append(name);
    }
    EXPECT_EQ(yes, expected);
  }
}

TEST(Kinds, elementsAndConversions) {
  check({
      {"isnan", {row({1, kNaN, kInf})}, "logical 1 x 3: false true false"},
      {"isinf", {row({1, kNaN, -kInf})}, "logical 1 x 3: false false true"},
      {"isinf", {complex(1, kInf)}, "logical 1 x 1: true"},
      {"isnan", {text("ab")}, "logical 1 x 2: false false"},
      {"isnan", {structure()}, "logical 1 x 1: false"},
      {"isletter", {text("a1 é")}, "logical 1 x 4: true false false true"},
      {"isspace", {text("a b\n")}, "logical 1 x 4: false true false true"},
      {"isletter", {row({97, 98})}, "logical 1 x 2: false false"},
      {"double", {text("ab")}, "double 1 x 2: 97 98"},
      {"double", {complex(1, 2)}, "complex 1 x 1: 1,2"},
      {"double", {logicals({true, false})}, "double 1 x 2: 1 0"},
      {"logical", {row({2, 0, kInf})}, "logical 1 x 3: true false true"},
      {"logical", {row({1, kNaN})}, "NaN is not convertible to a logical"},
  });
}

}  // namespace
}  // namespace kelo
