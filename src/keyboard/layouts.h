// The three layouts: rows from top to bottom, keys from left to right, and the width units of each
// key.
#pragma once

#include <vector>

#include "keyboard/key_identifier.h"

namespace kelo {

using KeyRows = std::vector<std::vector<KeyIdentifier>>;
using KeyWidthUnits = std::vector<std::vector<int>>;

/// All rows of all layouts are this many units wide, so the keys of a layout keep their places in
/// the next one.
inline constexpr int kRowUnits = 46;

const KeyRows& alphaKeyboard();
/// NOTE: intended: its third row ends with an `equal` that the lower-case row lacks.
const KeyRows& alphaCapKeyboard();
const KeyRows& symbolKeyboard();

/// Of one of the three.
KeyWidthUnits keyWidthUnits(const KeyRows& keyboard);

}  // namespace kelo
