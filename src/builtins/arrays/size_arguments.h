// The sizes that functions are given as their last arguments: nothing (a scalar), n (n x n), a
// vector of lengths, or several scalars. The functions that make arrays share the rules; each
// family brings the words of its complaints.
#pragma once

#include "interpreter/reader.h"

namespace kelo::builtins {

/// The complaints about sizes.
struct SizeWords {
  Wording notNumeric;        ///< an argument is no numeric array
  Wording notVector;         ///< f(v): neither scalar nor vector
  Wording notIntegers;       ///< f(v): a length is not a whole number from 0
  Wording severalNotScalar;  ///< f(s1, s2, ...): an argument is not a scalar
  Wording severalNotInteger; ///< f(s1, s2, ...): an argument is not a whole number from 0
};

/// The size that the arguments from position `from` on give. Without any it is 1 x 1.
/// throws the complaints; Problem for a vector of fewer than two lengths; FatalFault when the
/// elements cannot be counted
SizeVector sizeArguments(const Call& call, int from, const SizeWords& words);

}  // namespace kelo::builtins
