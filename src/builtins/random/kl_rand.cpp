// How many numbers an element draws, and in which order, is part of the stream: a seed must go on
// giving the same arrays.
#include "builtins/random/kl_rand.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>
#include <utility>

#include "builtins/special/gamma.h"
#include "platform/vector_clones.h"

namespace kelo {
namespace {

uint64_t secondsOf(const platform::CalendarTime& time) {
  using namespace std::chrono;
  const sys_days day = year_month_day(year(time.year), month(static_cast<unsigned>(time.month)),
                                      std::chrono::day(static_cast<unsigned>(time.day)));
  const int64_t minutes = (int64_t{day.time_since_epoch().count()} * 24 + time.hour) * 60 + time.minute;
  return static_cast<uint64_t>(minutes * 60 + static_cast<int64_t>(time.seconds));
}

/// One normal deviate of mean 0 and deviation `std`.
double normal(RandomWords& words, double std) {
  double u1, v1;
  for (int candidate = 1;; ++candidate) {
    u1 = words.uniform();
    v1 = (words.uniform() - 0.5) * 1.7156;
    if (candidate == 10) break;  // NOTE: intended, whatever the tests below would say
    const double x = u1 - 0.449871, y = std::abs(v1) + 0.386595;
    const double q = x * x + y * (0.196 * y - 0.25472 * x);
    if (q <= 0.27597) break;
    if (q <= 0.27846 && v1 * v1 <= -4 * std::log(u1) * u1 * u1) break;
  }
  return std * v1 / u1;
}

double exponential(RandomWords& words, double mean) {
  double u;
  do {
    u = words.uniform();
  } while (u == 0);
  return std::log(u) / (-1 / mean);
}

/// Poisson deviates of one rate.
class Poisson {
 public:
  explicit Poisson(double rate) : rate_(rate), root_(std::sqrt(rate)), log_(std::log(rate)), limit_(std::exp(-rate)) {}

  double rate() const { return rate_; }
  double next(RandomWords& words) const { return rate_ < 5 ? byProduct(words) : byRatio(words); }

 private:
  double byProduct(RandomWords& words) const {
    double k = -1, p = 1;
    do {
      k = k + 1;
      p = p * words.uniform();
    } while (p > limit_);
    return k;
  }

  double byRatio(RandomWords& words) const {
    const bool isBig = rate_ > 13.5;  // the squeezes hold from there on
    for (;;) {
      const double u = 0.64 * words.uniform();
      const double v = -0.68 + 1.28 * words.uniform();
      const double v2 = v * v;
      if (isBig && isOutside(u, v, v2)) continue;
      const double k = std::floor(root_ * (v / u) + rate_ + 0.5);
      if (k < 0) continue;
      if (isBig && isInside(u, v, v2)) return k;
      const double p = root_ * std::exp(k * log_ - rate_ - special::gammln(k + 1));
      if (u * u < p) return k;
    }
  }
  static bool isOutside(double u, double v, double v2) {
    return v >= 0 ? v2 > 6.5 * u * (0.64 - u) * (u + 0.2) : v2 > 9.6 * u * (0.66 - u) * (u + 0.07);
  }
  static bool isInside(double u, double v, double v2) {
    return v >= 0 ? v2 < 15.2 * u * u * (0.61 - u) * (0.8 - u) : v2 < 6.76 * u * u * (0.62 - u) * (1.4 - u);
  }

  double rate_, root_, log_, limit_;
};

/// The words of a run of draws, one after the other.
struct WordBlock {
  static constexpr size_t kSize = 512;
  uint64_t u[kSize], v[kSize], w[kSize];
};

/// out[i] is the double in [0, 1) of the block's i-th words.
KELO_VECTOR_CLONES void fractionsOf(const WordBlock& block, size_t n, double* out) {
  for (size_t i = 0; i < n; ++i) out[i] = RandomWords::fraction(RandomWords::mixed(block.u[i], block.v[i], block.w[i]));
}

}  // namespace

bool KLRand::readState() {
  if (!state_.randStateU || !state_.randStateV || !state_.randStateW) return false;
  words_ = {*state_.randStateU, *state_.randStateV, *state_.randStateW};
  return true;
}

void KLRand::writeState() {
  state_.randStateU = words_.u;
  state_.randStateV = words_.v;
  state_.randStateW = words_.w;
}

void KLRand::resetStateWithSeed(uint64_t seed) {
  words_ = RandomWords::fromSeed(seed);
  writeState();
}

template <class Draw>
void KLRand::withWords(Draw draw) {
  if (!readState()) resetStateWithSeed(secondsOf(clock_.localTime()));
  RandomWords words = words_;
  draw(words);
  words_ = words;
  writeState();
}

void KLRand::randomDoubleArray(std::span<double> array) {
  // OPTIMIZATION: the words go on in a loop of their own, a block at a time, so that mixing and
  // conversion vectorise.
  withWords([=](RandomWords& words) {
    WordBlock block;
    for (size_t begin = 0; begin < array.size(); begin += WordBlock::kSize) {
      const size_t n = std::min(WordBlock::kSize, array.size() - begin);
      for (size_t i = 0; i < n; ++i) {
        words.step();
        block.u[i] = words.u;
        block.v[i] = words.v;
        block.w[i] = words.w;
      }
      fractionsOf(block, n, array.data() + begin);
    }
  });
}

void KLRand::randomIntegerArray(int64_t max, std::span<double> array) {
  withWords([=](RandomWords& words) {
    for (double& x : array) x = static_cast<double>(words.intMax(max));
  });
}

void KLRand::randomPermutation(std::span<double> array) {
  std::iota(array.begin(), array.end(), 1.0);
  withWords([=](RandomWords& words) {
    for (size_t n = array.size(); n > 1; --n) {
      const auto i = static_cast<size_t>(words.intMax(static_cast<int64_t>(n)) - 1);
      std::swap(array[n - 1], array[i]);
    }
  });
}

void KLRand::randomNormalArray(EachParameter mean, EachParameter std, std::span<double> array) {
  withWords([=](RandomWords& words) {
    for (size_t i = 0; i < array.size(); ++i) array[i] = mean[i] + normal(words, std[i]);
  });
}

void KLRand::randomExponArray(EachParameter mean, std::span<double> array) {
  withWords([=](RandomWords& words) {
    for (size_t i = 0; i < array.size(); ++i) array[i] = exponential(words, mean[i]);
  });
}

void KLRand::randomPoissonArray(EachParameter lambda, std::span<double> array) {
  withWords([=](RandomWords& words) {
    Poisson poisson(1);
    for (size_t i = 0; i < array.size(); ++i) {
      if (poisson.rate() != lambda[i]) poisson = Poisson(lambda[i]);
      array[i] = poisson.next(words);
    }
  });
}

}  // namespace kelo
