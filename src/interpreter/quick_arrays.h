// The quick built-ins of small arrays and texts. Each is one of QuickCall's and gives what the
// built-in gives, or says false.
#pragma once

#include "interpreter/quick_calls.h"

namespace kelo {

bool isAscii(const CharArray& text);

/// sum, mean, all, any, find, and max and min of one argument, of a small vector.
bool quickReduction(QuickCall function, const Storable& x, Storable* result);
/// fliplr of a small row, flipud of a small column.
bool quickReversal(QuickCall function, const Storable& x, Storable* result);
/// double, isletter and isspace of ASCII characters.
bool quickCharacters(QuickCall function, const Storable& x, Storable* result);
/// The text of a small vector of ASCII codes.
bool quickText(const Storable& codes, Storable* result);
/// The product of two short vectors of one size.
bool quickDot(const Storable& x, const Storable& y, Storable* result);

}  // namespace kelo
