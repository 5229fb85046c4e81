// Random numbers: the streams of seeds to the last bit, the state between draws, sizes and
// complaints.
//
// The expected streams come from a program in Python, whose whole numbers have no bounds and whose
// doubles round as ours do:
//   def next(s):
//     s.u = (s.u * 2862933555777941757 + 7046029254386353087) % 2**64
//     s.v ^= s.v >> 17; s.v ^= (s.v << 31) % 2**64; s.v ^= s.v >> 8
//     s.w = (4294957665 * (s.w % 2**32) + (s.w >> 32)) % 2**64
//     x = s.u ^ ((s.u << 21) % 2**64); x ^= x >> 35; x ^= (x << 4) % 2**64
//     return ((x + s.v) % 2**64) ^ s.w
// with doub = next / 2**64 and the deviates written down from their description, math.lgamma in
// place of gammln.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "builtins/calls.h"
#include "builtins/random/random_blocks.h"
#include "interpreter/test_app.h"

namespace kelo {
namespace {

using namespace kelo::testing;

struct Drawing : TestApp {
  NodeValue answer(const char* name, std::vector<Storable> args) {
    const Builtin* row = builtins::library().find(Name::intern(name));
    const CallSite site;
    Call call(*row, args, std::nullopt, site, app.environment, nullptr);
    return row->handler(call);
  }
  std::string draw(const char* name, const std::vector<Storable>& args) {
    return outcome([&] { return *answer(name, args).storable().numeric(); });
  }
  std::vector<double> numbers(const char* name, const std::vector<Storable>& args) {
    const NodeValue drawn = answer(name, args);
    const auto values = drawn.storable().numeric()->asDouble().values();
    return {values.begin(), values.end()};
  }
  void seed(double n) { answer("rng", {num(n)}); }
};

struct Step {
  double seed;  ///< below 0: goes on with the stream
  const char* name;
  std::vector<Storable> args;
  const char* expected;
};

TEST(Random, streamsOfSeeds) {
  const Step steps[] = {
      {0, "rand", {num(1), num(3)}, "double 1 x 3: 0.078828080402809975 0.057498921391277109 0.50464114886097067"},
      {1, "rand", {row({3, 1})}, "double 3 x 1: 0.97174865688381606 0.41118928377299052 0.63582627271639858"},
      {0x1p53, "rand", {num(1), num(1)}, "double 1 x 1: 0.25315708639642842"},
      {-1, "rand", {}, "double 1 x 1: 0.75527886680156231"},
      {42, "randi", {num(10), num(1), num(8)}, "double 1 x 8: 2 10 7 7 4 6 1 6"},
      {-1, "randi", {num(1e9), row({1, 3})}, "double 1 x 3: 906511326 960948116 626982914"},
      {7, "randn", {row({3, 1})}, "double 3 x 1: 0.31719358068057146 0.14430398731615474 0.69215335381989418"},
      {-1, "randn", {}, "double 1 x 1: 0.57821999086560016"},
      {-1, "normrnd", {row({10, -5}), row({2, 0.5})}, "double 1 x 2: 11.313105305151279 -4.3843606315980654"},
      {3, "exprnd", {row({1, 2, 0.5})}, "double 1 x 3: 1.2610351368185662 1.7023952399409326 0.19680833944551149"},
      {5, "poissrnd", {num(4.9), num(1), num(6)}, "double 1 x 6: 5 4 6 6 7 5"},
      {-1, "poissrnd", {num(5), num(1), num(6)}, "double 1 x 6: 4 1 6 4 6 5"},
      {-1, "poissrnd", {num(100), num(1), num(6)}, "double 1 x 6: 89 110 95 92 106 108"},
      {-1, "poissrnd", {row({2, 50, 2, 7})}, "double 1 x 4: 2 57 2 7"},
      {-1, "rand", {}, "double 1 x 1: 0.88194758158285713"},
      {9, "randperm", {num(10)}, "double 1 x 10: 9 10 4 2 7 6 1 8 5 3"},
      {-1, "rand", {}, "double 1 x 1: 0.20043238340699851"},
      {9, "randperm", {num(10), num(3)}, "double 1 x 3: 9 10 4"},
      {-1, "rand", {}, "double 1 x 1: 0.20043238340699851"},
  };
  Drawing app;
  for (const Step& s : steps) {
    if (s.seed >= 0) app.seed(s.seed);
    EXPECT_EQ(app.draw(s.name, s.args), s.expected) << s.name << " after " << s.seed;
  }
}

TEST(Random, longStreams) {
  Drawing app;
  app.seed(7);
  EXPECT_EQ(app.numbers("randn", {num(100000), num(1)}).back(), -0.5866114419863456);
  EXPECT_EQ(app.numbers("rand", {}).front(), 0.1305691815594493);
  app.seed(5);
  std::vector<double> rates;
  for (int k = 0; k < 5000; ++k) rates.insert(rates.end(), {0.3, 4.99, 5, 13.5, 13.6, 1000});
  double sum = 0;
  for (const double k : app.numbers("poissrnd", {DoubleArray::row(rates)})) sum += k;
  EXPECT_EQ(sum, 5183508);
  EXPECT_EQ(app.numbers("rand", {}).front(), 0.9232847385056433);
  std::vector<double> order = app.numbers("randperm", {num(1000)});
  std::sort(order.begin(), order.end());
  for (size_t i = 0; i < order.size(); ++i) ASSERT_EQ(order[i], static_cast<double>(i + 1));
}

// Blocks of draws go on as single draws do, also from words that no draw leaves behind.
TEST(Random, blocksAreTheStream) {
  for (const RandomWords& start : {RandomWords::fromSeed(9), RandomWords{1, 2, ~uint64_t{0}}, RandomWords{0, 0, 0}}) {
    RandomWords single = start, words = start, uniform = start;
    for (int block = 0; block < 3; ++block) {
      const RandomWords before = words;
      uint64_t bits[kDrawsOfBlock];
      double fractions[kDrawsOfBlock];
      drawBlock(words, bits);
      drawUniformBlock(uniform, fractions);
      for (size_t k = 0; k < kDrawsOfBlock; ++k) {
        const RandomWords after = wordsAfter(before, k);
        ASSERT_TRUE(after.u == single.u && after.v == single.v && after.w == single.w) << k;
        const uint64_t next = single.int64();
        ASSERT_EQ(bits[k], next) << k;
        ASSERT_EQ(fractions[k], RandomWords::fraction(next)) << k;
      }
      EXPECT_TRUE(words.w == single.w && uniform.v == single.v);
    }
  }
}

// The remainder of a draw, for small and for large numbers.
TEST(Random, wholeNumbersOfBlocks) {
  for (const double most : {1.0, 2.0, 10.0, 1e9, 0x1p53}) {
    Drawing app;
    app.seed(3);
    const std::vector<double> drawn = app.numbers("randi", {num(most), num(1), num(1500)});
    RandomWords words = RandomWords::fromSeed(3);
    for (const double x : drawn) ASSERT_EQ(x, static_cast<double>(words.intMax(static_cast<int64_t>(most))));
  }
}

TEST(Random, fractionsAreRoundedOnce) {
  const uint64_t cases[] = {0,          1,           0x8000000000000000, 0x80000000000003FF, 0x8000000000000400,
                            0xFFFFFFFF, 0x100000000, 0x8000000000000C00, 0x7FFFFFFFFFFFFE01, 0xFFFFFFFFFFFFFFFF};
  for (const uint64_t bits : cases) EXPECT_EQ(RandomWords::fraction(bits), static_cast<double>(bits) * 0x1p-64) << bits;
}

TEST(Random, stateIsKept) {
  Drawing app;
  app.draw("rand", {num(0)});  // seeds from the clock: 29 February 2024, 12:30:15
  ASSERT_TRUE(app.app.environment.randState.randStateW.has_value());
  EXPECT_EQ(app.app.environment.randState.randStateU, RandomWords::fromSeed(1709209815).u);

  app.seed(1);
  app.draw("rand", {});
  app.duringRun([] {});
  app.app.startCommand("");  // the end of a run puts the words into the store
  Drawing restarted;
  restarted.app.environment.randState.load(app.store);
  EXPECT_EQ(restarted.numbers("rand", {}).front(), 0.4111892837729905);

  app.app.environment.randState.randStateV.reset();  // a word that is missing: a new seed
  app.draw("rand", {num(0)});
  EXPECT_EQ(app.app.environment.randState.randStateU, RandomWords::fromSeed(1709209815).u);
}

TEST(Random, sizesAndComplaints) {
  const NumericArray three = row({1, 2, 3}), minus = num(-1);
  const CallRow rows[] = {
      // clang-format off
      {"rand", {num(0)}, "double 0 x 0:"},
      {"rand", {row({2, 0, 3})}, "double 2 x 0 x 3:"},
      {"normrnd", {num(4), column({0, 0})}, "double 2 x 1: 4 4"},
      {"normrnd", {num(4), num(0), row({1, 2})}, "double 1 x 2: 4 4"},
      {"rand", {num(1e10), num(1e10)}, "fatal: integer overflow in a multiplication"},
      {"rand", {minus}, " | In rand(n), n should be a scalar or a vector of real integers >= 0"},
      {"rand", {zeros({2, 2})}, " | In rand(n), n should be a scalar or a vector of real integers >= 0"},
      {"rand", {num(2), num(1.5)}, "The 2nd input argument is invalid | It should be a scalar of real integer >= 0"},
      {"randi", {num(0)}, " | In randi(imax), imax should be a real integer of finite value > 0"},
      {"randi", {num(5), minus}, " | In randi(imax, n), n should be a scalar of real integer >= 0"},
      {"randi", {num(5), row({1, -1})}, " | In randi(imax, sizeVec), sizeVec should be a vector of real integers >= 0"},
      {"exprnd", {row({1, 0})}, "The 1st input argument is invalid | It should be an array of real positive numbers not equal to Inf nor NaN"},
      {"exprnd", {three, num(2)}, " | In exprnd(mu, n), mu should be a scalar or an array of size equal to sz or [n, n]"},
      {"poissrnd", {three, num(2), num(1)}, " | In poissrnd(mu, sz1, ..., szN), mu should be a scalar or an array of size equal to [sz1, ..., szN]"},
      {"normrnd", {complex(1, 1), num(1)}, " | The mean should be a real scalar or an array of real numbers not equal to Inf nor NaN"},
      {"normrnd", {num(1), minus}, " | The standard deviation should be a real scalar or an array of real numbers >= 0 not equal to Inf nor NaN"},
      {"normrnd", {three, row({1, 2})}, " | In normrnd(mu, sigma), it is expected that both mu and sigma have the same sizes, or that one of them is a scalar"},
      {"normrnd", {three, num(1), num(2)}, " | In normrnd(mu, sigma, n), it is expected that both mu and sigma are n x n arrays, or that one of them is a scalar and the other one is an n x n array"},
      {"normrnd", {num(1), three, row({1, 2})}, " | In normrnd(mu, sigma, sizeVec), it is expected that both mu and sigma have sizes equal to sizeVec, or that one of them is a scalar and the other one has size equal to sizeVec"},
      {"rng", {num(0.5)}, " | In rng(n), n should be a real integer scalar >= 0"},
      {"randperm", {num(0)}, " | In randperm(n), n should be an integer scalar >= 1"},
      {"randperm", {num(3), num(0)}, " | In randperm(n, k), k should be an integer scalar >= 1"},
      {"randperm", {num(3), num(4)}, " | In randperm(n, k), k should not exceed n"},
      // clang-format on
  };
  Drawing app;
  for (const CallRow& r : rows) EXPECT_EQ(app.draw(r.name, r.args), r.expected) << r.name;
}

}  // namespace
}  // namespace kelo
