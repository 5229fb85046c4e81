// Arrays of random numbers. Each operation takes up the stream where the last one left it and
// leaves it after its last draw, also when the array has no elements.
#pragma once

#include <span>

#include "builtins/random/random_words.h"
#include "interpreter/random_state.h"
#include "platform/clock.h"
#include "values/numeric_array.h"

namespace kelo {

/// A parameter of a distribution for each element of an array: one for all, or one each.
class EachParameter {
 public:
  /// REQUIRES: `values` outlives this
  EachParameter(const DoubleArray& values) : values_(values.data()), stride_(values.isScalar() ? 0 : 1) {}
  bool isOne() const { return stride_ == 0; }
  double operator[](size_t i) const { return values_[static_cast<int64_t>(i) * stride_]; }

 private:
  const double* values_;
  int64_t stride_;
};

class KLRand {
 public:
  /// REQUIRES: both outlive this. clock: gives the seed of a stream that was never seeded
  KLRand(RandState& state, platform::Clock& clock) : state_(state), clock_(clock) {}

  void resetStateWithSeed(uint64_t seed);

  void randomDoubleArray(std::span<double> array);                ///< uniform in [0, 1)
  void randomIntegerArray(int64_t max, std::span<double> array);  ///< whole numbers from 1 to max
  void randomPermutation(std::span<double> array);                ///< of the numbers from 1
  /// source: Leva (1992), ratio of uniforms; at most ten candidates an element
  void randomNormalArray(EachParameter mean, EachParameter std, std::span<double> array);
  /// REQUIRES: every mean > 0
  void randomExponArray(EachParameter mean, std::span<double> array);
  /// source: product of uniforms below a rate of 5, ratio of uniforms with squeezes from there on.
  /// REQUIRES: lambda > 0
  void randomPoissonArray(EachParameter lambda, std::span<double> array);

 private:
  bool readState();  // false when no words are stored
  void writeState();
  /// draw(words) with the words in a local, so that they stay in registers, between reading and
  /// writing of the state.
  template <class Draw>
  void withWords(Draw draw);

  RandomWords words_;
  RandState& state_;
  platform::Clock& clock_;
};

}  // namespace kelo
