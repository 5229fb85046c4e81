// Many draws at once.
//
// The draws of a block are those of the generator, in its order. Eight states that stand a whole
// number of draws apart go on side by side, in the lanes of vectors. To find where they start, each
// of the three words can be taken many draws ahead at once: the congruential word by a product and
// a sum, the xor-shift by a table, since it is linear over single bits, and the multiply-with-carry
// by a product modulo p = a * 2^32 - 1, in which it is a plain power of a.
#pragma once

#include <cstddef>

#include "builtins/random/random_words.h"

namespace kelo {

inline constexpr size_t kDrawsOfBlock = 512;

/// The next kDrawsOfBlock draws, as int64() gives them; `words` is taken after the last.
void drawBlock(RandomWords& words, uint64_t* bits);
/// The same as uniform() gives them.
void drawUniformBlock(RandomWords& words, double* fractions);

/// The words after so many more draws, below kDrawsOfBlock.
RandomWords wordsAfter(RandomWords words, size_t draws);

}  // namespace kelo
