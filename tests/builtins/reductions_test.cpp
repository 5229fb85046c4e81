// Reductions and statistics. Expected values come from hand arithmetic, from identities and, for
// significance and bounds of correlations, from tables of the t distribution and Fisher's
// transformation.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "builtins/calls.h"
#include "builtins/reductions/column_kernels.h"
#include "builtins/slices.h"
#include "builtins/special/gamma.h"

namespace kelo::testing {
namespace {

using builtins::Slices;

const SizeVector kNoRows{0, 3};
const SizeVector kCube{2, 2, 2};

NumericArray cube() { return shaped(kCube, {1, 2, 3, 4, 5, 6, 7, 8}); }

/// Several outputs of a call, each as text, joined by " ; ".
std::string outputTexts(const char* name, std::vector<Storable> args, int n) {
  try {
    std::string result;
    for (const Storable& output : outputsOf(name, std::move(args), n)) {
      result += (result.empty() ? "" : " ; ") + describe(*output.numeric());
    }
    return result;
  } catch (const Problem& problem) {
    return problem.expected.value_or("");
  }
}

TEST(Reductions, RunAlongTheFirstDimensionThatIsNotOne) {
  check({
      {"sum", {cube()}, "double 1 x 2 x 2: 3 7 11 15"},
      {"sum", {cube(), num(3)}, "double 2 x 2: 6 8 10 12"},
      {"sum", {cube(), num(7)}, "double 2 x 2 x 2: 1 2 3 4 5 6 7 8"},
      {"sum", {zeros({0, 0})}, "double 1 x 0:"},
      {"sum", {zeros(kNoRows)}, "double 1 x 3: 0 0 0"},
      {"prod", {zeros(kNoRows)}, "double 1 x 3: 1 1 1"},
      {"mean", {zeros(kNoRows)}, "double 1 x 3: nan nan nan"},
      {"all", {zeros(kNoRows)}, "logical 1 x 3: true true true"},
      {"any", {zeros(kNoRows)}, "logical 1 x 3: false false false"},
      {"max", {zeros(kNoRows)}, "double 0 x 3:"},
  });
}

TEST(Reductions, TakeEveryKindOfNumbers) {
  const NumericArray flags = LogicalArray(SizeVector(1, 3), {true, false, true});
  const NumericArray turns = complexShaped(SizeVector(1, 3), {{0, 1}, {0, 2}, {1, 0}});
  check({
      {"sum", {flags}, "double 1 x 1: 2"},
      {"mean", {LogicalArray(SizeVector(1, 2), {true, false})}, "double 1 x 1: 0.5"},
      {"sum", {text("ab")}, "double 1 x 1: 195"},
      {"sum", {turns}, "complex 1 x 1: 1,3"},
      {"prod", {complex(kInf, 1)}, "complex 1 x 1: inf,1"},
      {"any", {row({0, kNaN})}, "logical 1 x 1: true"},
      {"all", {complexShaped(SizeVector(1, 2), {{0, 1}, {1, 0}})}, "logical 1 x 1: true"},
      {"max", {turns}, "complex 1 x 1: 0,2"},
      {"min", {complexShaped(SizeVector(1, 3), {{kNaN, 0}, {0, 1}, {1, 0}})}, "complex 1 x 1: 1,0"},
      {"max", {flags}, "double 1 x 1: 1"},
      {"cummax", {turns}, "complex 1 x 3: 0,1 0,2 0,2"},
      {"var", {complexShaped(SizeVector(1, 2), {{1, 1}, {-1, -1}})}, "double 1 x 1: 4"},
      {"sum", {StructArray()}, " | sum() expects a numerical array as its input argument"},
  });
}

// One element decides, wherever it stands among the blocks that are looked at together.
TEST(Reductions, AllAndAnyFindTheOneElement) {
  for (const int64_t n : {1, 63, 64, 65, 200}) {
    for (const int64_t place : {int64_t{0}, n / 2, n - 1}) {
      DoubleArray ones(SizeVector(n, 1), 1.0), zeros(SizeVector(n, 1), 0.0);
      LogicalArray yes(SizeVector(n, 1), true), no(SizeVector(n, 1), false);
      ones.writable()[place] = -0.0;
      zeros.writable()[place] = kNaN;
      yes.writable()[place] = false;
      no.writable()[place] = true;
      check({{"all", {ones}, "logical 1 x 1: false"},
             {"any", {zeros}, "logical 1 x 1: true"},
             {"all", {yes}, "logical 1 x 1: false"},
             {"any", {no}, "logical 1 x 1: true"}});
    }
  }
}

TEST(Reductions, OrderStatistics) {
  check({
      {"median", {row({4, 1, 3, 2})}, "double 1 x 1: 2.5"},
      {"median", {row({kInf, kInf})}, "double 1 x 1: inf"},
      {"median", {row({1e308, 1.5e308})}, "double 1 x 1: 1.25e+308"},
      {"median", {row({1, kNaN, 2})}, "double 1 x 1: nan"},
      {"mode", {row({3, 1, 2})}, "double 1 x 1: 1"},
      {"mode", {row({3, 2, 3, 2, kNaN, kNaN, kNaN})}, "double 1 x 1: 2"},
      // Positions of 5 elements: 10, 30, 50, 70, 90 percent.
      {"prctile", {row({5, 3, 1, 4, 2}), row({0, 10, 20, 50, 90, 100})}, "double 1 x 6: 1 1 1.5 3 5 5"},
      {"quantile", {row({5, 3, 1, 4, 2, kNaN}), column({0.25, 0.75})}, "double 2 x 1: 1.75 4.25"},
      {"prctile", {shaped({2, 2}, {1, 2, 3, 4}), row({25, 75})}, "double 2 x 2: 1 2 3 4"},
      {"prctile", {shaped({2, 2}, {1, 2, 3, 4}), row({25, 50, 75}), num(2)}, "double 2 x 3: 1 2 2 3 3 4"},
      {"prctile", {cube(), num(50), text("all")}, "double 1 x 1: 4.5"},
      {"prctile", {cube(), row({50, 100}), row({1, 3})}, "double 2 x 2: 3.5 6 5.5 8"},
      {"prctile", {zeros({0, 2}), num(50)}, "double 1 x 2: nan nan"},
      {"prctile", {zeros({0, 0}), num(50), num(5)}, "double 0 x 0:"},
  });
  EXPECT_EQ(outputTexts("mode", {row({7, 2, 7})}, 2), "double 1 x 1: 7 ; double 1 x 1: 2");
}

TEST(Reductions, ExtremesPassOverNaNAndTellTheFirst) {
  check({
      {"max", {row({-0.0, 0})}, "double 1 x 1: -0"},
      {"min", {row({0, -0.0})}, "double 1 x 1: 0"},
      {"max", {row({1, 5, 3}), row({2, 2, kNaN})}, "double 1 x 3: 2 5 3"},
      {"min", {row({1, 2}), column({0, 3})}, "double 2 x 2: 0 1 0 2"},
      {"max", {row({1, 2}), row({1, 2, 3})}, " | In max(A, B), A and B should have compatible sizes"},
  });
  EXPECT_EQ(outputTexts("max", {row({1, kNaN, 3, 3})}, 2), "double 1 x 1: 3 ; int 1 x 1: 3");
  EXPECT_EQ(outputTexts("min", {row({kNaN, kNaN})}, 2), "double 1 x 1: nan ; int 1 x 1: 1");
  EXPECT_EQ(outputTexts("max", {cube(), zeros({0, 0}), num(2)}, 2),
            "double 2 x 1 x 2: 3 4 7 8 ; int 2 x 1 x 2: 2 2 2 2");
  EXPECT_EQ(outputTexts("max", {complexShaped({1, 3}, {{kNaN, 0}, {3, 4}, {5, 0}})}, 2),
            "complex 1 x 1: 3,4 ; int 1 x 1: 2");
  EXPECT_EQ(outputTexts("max", {num(1), num(2)}, 2), "Function max() must have at most 1 output argument");
}

TEST(Reductions, Scans) {
  check({
      {"cumsum", {cube()}, "double 2 x 2 x 2: 1 3 3 7 5 11 7 15"},
      {"cumsum", {cube(), num(3), text("Reverse")}, "double 2 x 2 x 2: 6 8 10 12 5 6 7 8"},
      {"cumprod", {row({1, 2, 3}), text("reverse")}, "double 1 x 3: 6 6 3"},
      {"cummax", {row({kNaN, 1, kNaN, 3, 2})}, "double 1 x 5: nan 1 1 3 3"},
      {"cummin", {row({2, kNaN, 1}), text("includenan")}, "double 1 x 3: 2 nan nan"},
      {"cummin", {row({2, 3, 1}), text("omitnan"), text("reverse")}, "double 1 x 3: 1 1 1"},
      {"cumsum", {num(1), text("omitnan")}, " | An option for cumsum() must be either 'forward' or 'reverse'"},
  });
}

TEST(Reductions, Spread) {
  check({
      {"var", {row({1, 2, 3, 4})}, "double 1 x 1: 1.6666666666666667"},
      {"var", {row({1, 2, 3, 4}), num(1)}, "double 1 x 1: 1.25"},
      {"std", {shaped({2, 2}, {1, 3, 2, 2}), num(1), num(1)}, "double 1 x 2: 1 0"},
      {"rms", {shaped({2, 2}, {3, 4, kNaN, 5}), text("omitnan")}, "double 1 x 2: 3.5355339059327378 5"},
      {"rms", {row({3, 4}), num(1)}, "double 1 x 2: 3 4"},
      {"rms", {cube(), row({3, 1})}, "double 1 x 2: 4.06201920231798 5.873670062235365"},
      {"cov", {num(4), num(7)}, "double 2 x 2: 0 0 0 0"},
      {"cov", {zeros({0, 0})}, "double 1 x 1: nan"},
      {"cov", {shaped({2, 2}, {1, 3, 2, 6}), num(1), text("omitrows")}, "double 2 x 2: 1 2 2 4"},
      {"cov", {shaped({4, 2}, {1, kNaN, 3, 5, 2, 8, 4, 9}), text("omitrows")}, "double 2 x 2: 4 7 7 13"},
      {"cov", {shaped({4, 2}, {1, kNaN, 2, 3, 0, 3, 3, 6}), text("partialrows")}, "double 2 x 2: 1 3 3 6"},
      {"cov", {complexShaped({1, 2}, {{0, 1}, {0, -1}}), row({1, -1})}, "complex 2 x 2: 2,0 0,2 0,-2 2,0"},
      {"corrcoef", {row({1, 2, 3}), row({5, 5, 5})}, "double 2 x 2: 1 nan nan nan"},
      {"corrcoef", {row({1, 2, 3, kNaN}), row({2, 4, 6, 8}), text("Rows"), text("complete")}, "double 2 x 2: 1 1 1 1"},
  });
}

TEST(Reductions, CorrelationsKnowTheirSignificance) {
  // r = 0.8 over 5 pairs: t = 2.3094 with 3 degrees of freedom, two-sided 0.10409; z' = 1.098612
  // -/+ 1.959964 / sqrt(2).
  const auto outputs = outputsOf("corrcoef", {row({1, 2, 3, 4, 5}), row({1, 3, 2, 5, 4})}, 4);
  const double expected[] = {0.8, 0.10408803866182788,
                             std::tanh(1.0986122886681098 - 1.959963984540054 / std::sqrt(2.0)),
                             std::tanh(1.0986122886681098 + 1.959963984540054 / std::sqrt(2.0))};
  for (size_t k = 0; k < 4; ++k) {
    const DoubleArray& output = outputs[k].numeric()->asDouble();
    EXPECT_NEAR(output[1], expected[k], 1e-13) << k;
    EXPECT_EQ(output[0], 1) << k;
  }
  EXPECT_EQ(outputTexts("corrcoef", {row({1, 2}), row({2, 1})}, 2), "Bad a or b in routine betai");
  EXPECT_NEAR(special::betai(2, 3, 0.25), 0.26171875, 1e-14);   // 1 - 0.75^4 - 4*0.25*0.75^3
  EXPECT_NEAR(special::betai(0.5, 0.5, 0.75), 2.0 / 3, 1e-14);  // 2/pi * asin(sqrt(x))
}

TEST(Slices, EveryLoopGivesWhatThePlainOneGives) {
  std::mt19937_64 random(11);
  // Contiguous, narrow and wide rows; long and short; with a block after.
  for (const SizeVector& size :
       {SizeVector{7, 19}, SizeVector{3, 700, 2}, SizeVector{40, 9, 3}, SizeVector{2000, 3, 2}, SizeVector{600, 11}}) {
    const DoubleArray a = randomArray(random, size);
    for (int64_t d = 1; d <= 3; ++d) {
      const Slices s(size, d);
      const auto at = [&](int64_t k, int64_t l) { return a[s.first(k) + l * s.inner]; };
      const NumericArray sums = called("sum", {a, num(static_cast<double>(d))});
      const NumericArray products = called("cumprod", {a, num(static_cast<double>(d)), text("reverse")});
      const NumericArray medians = called("median", {a, num(static_cast<double>(d))});
      const NumericArray best = called("min", {a, zeros({0, 0}), num(static_cast<double>(d))});
      for (int64_t k = 0; k < s.count(); ++k) {
        double sum = 0;
        std::vector<double> sorted;
        for (int64_t l = 0; l < s.length; ++l) sum += at(k, l), sorted.push_back(at(k, l));
        std::sort(sorted.begin(), sorted.end());
        const size_t n = sorted.size();
        ASSERT_EQ(sums.asDouble()[k], sum) << size.description() << " " << d;
        ASSERT_EQ(best.asDouble()[k], sorted[0]) << size.description() << " " << d;
        ASSERT_EQ(medians.asDouble()[k], n % 2 ? sorted[n / 2] : (sorted[n / 2 - 1] + sorted[n / 2]) / 2)
            << size.description() << " " << d;
        double product = at(k, s.length - 1);
        for (int64_t l = s.length - 2; l >= 0; --l) product *= at(k, l);
        ASSERT_EQ(products.asDouble()[s.first(k)], product) << size.description() << " " << d;
      }
    }
  }
}

/// Pieces in the wrong order, on one thread.
class BackwardsFor : public platform::ParallelFor {
 public:
  void run(int64_t count, int64_t grain, const std::function<void(int64_t, int64_t)>& body) override {
    for (int64_t begin = (count - 1) / grain * grain; begin >= 0; begin -= grain)
      body(begin, std::min(begin + grain, count));
  }
};

TEST(SumInOrder, IsThePlainLoopToTheLastBit) {
  std::mt19937_64 random(5);
  std::normal_distribution<double> normal;
  std::uniform_real_distribution<double> uniform;
  const std::vector<std::function<double(int)>> kinds = {
      [&](int) { return uniform(random); },
      [&](int) { return normal(random); },
      [&](int) { return -1e10 * uniform(random); },
      [&](int) { return std::floor(16 * uniform(random)) / 8 + 0x1p40; },            // sums of few bits
      [&](int i) { return i == 0 ? 0x1p53 : std::floor(4 * uniform(random)) / 2; },  // half-way cases throughout
      [&](int i) { return i == 0 ? 0x1p53 - 5000 : 1.0 + (i % 3) * 0.25; },  // passes a power of 2 among half-way cases
      [&](int i) { return i == 0 ? -0x1p30 : uniform(random) * 600; },       // passes zero
      [&](int i) { return i % 1000 == 999 ? -400 * uniform(random) : uniform(random); },
      [&](int i) { return std::ldexp(uniform(random), i % 90 - 45); },
      [&](int i) { return i == 5000 ? kInf : uniform(random) * 1e300; },
      [&](int) { return uniform(random) * 5e-324 * 1000; },
      [&](int i) { return i == 3000 ? kNaN : 1.0; },
  };
  for (size_t kind = 0; kind < kinds.size(); ++kind) {
    std::vector<double> x;
    for (int i = 0; i < 1500000; ++i) x.push_back(kinds[kind](i));
    double plain = 0;
    for (const double v : x) plain += v;
    const auto n = static_cast<int64_t>(x.size());
    BackwardsFor backwards;
    for (platform::ParallelFor* parallel :
         {static_cast<platform::ParallelFor*>(nullptr), static_cast<platform::ParallelFor*>(&backwards)}) {
      const double sum = builtins::sumInOrder(x.data(), n, parallel);
      EXPECT_TRUE(std::bit_cast<uint64_t>(sum) == std::bit_cast<uint64_t>(plain) ||
                  (std::isnan(sum) && std::isnan(plain)))
          << "kind " << kind << ": " << sum << " " << plain;
    }
    std::erase_if(x, [](double v) { return std::isnan(v); });
    EXPECT_EQ(builtins::largest(x.data(), static_cast<int64_t>(x.size()), &backwards),
              *std::max_element(x.begin(), x.end()));
    EXPECT_EQ(builtins::smallest(x.data(), static_cast<int64_t>(x.size()), &backwards),
              *std::min_element(x.begin(), x.end()));
  }
}

}  // namespace
}  // namespace kelo::testing
