// How many numbers an element draws, and in which order, is part of the stream: a seed must go on
// giving the same arrays.
#include "builtins/random/kl_rand.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>
#include <utility>

#include "builtins/random/random_blocks.h"
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

// Whether a candidate for a normal deviate, q outside, is taken.
bool isAccepted(double u, double v, double q) {
  if (q <= 0.27597) return true;
  return q <= 0.27846 && v * v <= -4 * std::log(u) * u * u;
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
    if (isAccepted(u1, v1, q)) break;
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

/// Uniform numbers of a stream, drawn a block ahead; words() tells where the stream stands after
/// those taken.
class UniformBlocks {
 public:
  explicit UniformBlocks(const RandomWords& words) : before_(words), behind_(words) {}

  /// The next numbers in a row, at least one pair, at most `most` pairs.
  std::span<const double> pairs(size_t most) {
    if (next_ == kDrawsOfBlock) {
      before_ = behind_;
      drawUniformBlock(behind_, fractions_);
      next_ = 0;
    }
    return {fractions_ + next_, std::min(2 * most, kDrawsOfBlock - next_)};
  }
  void take(size_t count) { next_ += count; }
  RandomWords words() const { return next_ == kDrawsOfBlock ? behind_ : wordsAfter(before_, next_); }

 private:
  RandomWords before_, behind_;  // of the block
  size_t next_ = kDrawsOfBlock;
  double fractions_[kDrawsOfBlock];
};

/// Candidates for normal deviates, from pairs of uniform numbers.
struct NormalCandidates {
  static constexpr size_t kMost = kDrawsOfBlock / 2;
  double u[kMost], v[kMost];
  double q[kMost];  // how far outside they lie
};

KELO_WIDE_CLONES void candidatesOf(const double* uniform, size_t count, NormalCandidates* out) {
  for (size_t k = 0; k < count; ++k) {
    const double u = uniform[2 * k], v = (uniform[2 * k + 1] - 0.5) * 1.7156;
    const double x = u - 0.449871, y = std::abs(v) + 0.386595;
    out->u[k] = u;
    out->v[k] = v;
    out->q[k] = x * x + y * (0.196 * y - 0.25472 * x);
  }
}

/// Normal deviates of mean 0 and deviation 1 as quotients v / u, all that are wanted.
///
/// OPTIMIZATION: candidates are tested many at a time; each is written to the place of the next one
/// that is taken, so that the choice is no branch.
/// NOTE: intended: the tenth candidate is taken, whatever the tests say.
void drawNormals(UniformBlocks& stream, std::span<double> u, std::span<double> v) {
  constexpr int kLast = 10;
  NormalCandidates candidates;
  int candidate = 1;
  size_t done = 0;
  while (done < u.size()) {
    const std::span<const double> uniform = stream.pairs(NormalCandidates::kMost);
    const size_t count = uniform.size() / 2;
    candidatesOf(uniform.data(), count, &candidates);
    size_t k = 0;
    for (; k < count && done < u.size(); ++k) {
      u[done] = candidates.u[k];
      v[done] = candidates.v[k];
      bool taken = candidates.q[k] <= 0.27597;
      if (candidates.q[k] > 0.27597 && candidates.q[k] <= 0.27846) [[unlikely]] {
        taken = isAccepted(candidates.u[k], candidates.v[k], candidates.q[k]);
      }
      if (candidate == kLast) [[unlikely]] taken = true;
      done += taken;
      candidate = taken ? 1 : candidate + 1;
    }
    stream.take(2 * k);
  }
}

KELO_WIDE_CLONES void quotients(const double* u, const double* v, double mean, double std, double* out, size_t count) {
  for (size_t k = 0; k < count; ++k) out[k] = mean + std * v[k] / u[k];
}

__extension__ using Wide = unsigned __int128;

/// x % divisor by products, for one divisor many times.
class Remainder {
 public:
  explicit Remainder(uint64_t divisor) : divisor_(divisor), reciprocal_(~uint64_t{0} / divisor) {}

  uint64_t of(uint64_t x) const {
    const auto quotient = static_cast<uint64_t>(static_cast<Wide>(x) * reciprocal_ >> 64);
    // OPTIMIZATION: the quotient may be one or two too small, which no branch could foresee. Below
    // the divisor the difference wraps around and is the greater one.
    const uint64_t rest = x - quotient * divisor_, once = std::min(rest, rest - divisor_);
    return std::min(once, once - divisor_);
  }

 private:
  uint64_t divisor_, reciprocal_;
};

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
  withWords([=](RandomWords& words) {
    size_t k = 0;
    for (; k + kDrawsOfBlock <= array.size(); k += kDrawsOfBlock) drawUniformBlock(words, array.data() + k);
    for (; k < array.size(); ++k) array[k] = words.uniform();
  });
}

void KLRand::randomIntegerArray(int64_t max, std::span<double> array) {
  const Remainder remainder(static_cast<uint64_t>(max));
  withWords([=](RandomWords& words) {
    uint64_t bits[kDrawsOfBlock];
    size_t k = 0;
    for (; k + kDrawsOfBlock <= array.size(); k += kDrawsOfBlock) {
      drawBlock(words, bits);
      for (size_t i = 0; i < kDrawsOfBlock; ++i) {
        array[k + i] = static_cast<double>(static_cast<int64_t>(remainder.of(bits[i])) + 1);
      }
    }
    for (; k < array.size(); ++k) array[k] = static_cast<double>(words.intMax(max));
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
  constexpr size_t kFew = 64;  // are drawn as quickly one by one
  withWords([=](RandomWords& words) {
    if (array.size() < kFew) {
      for (size_t i = 0; i < array.size(); ++i) array[i] = mean[i] + normal(words, std[i]);
      return;
    }
    constexpr size_t kPiece = 256;
    double u[kPiece], v[kPiece];
    UniformBlocks stream(words);
    for (size_t begin = 0; begin < array.size(); begin += kPiece) {
      const size_t count = std::min(kPiece, array.size() - begin);
      drawNormals(stream, {u, count}, {v, count});
      if (mean.isOne() && std.isOne()) {
        quotients(u, v, mean[0], std[0], array.data() + begin, count);
      } else {
        for (size_t k = 0; k < count; ++k) array[begin + k] = mean[begin + k] + std[begin + k] * v[k] / u[k];
      }
    }
    words = stream.words();
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
