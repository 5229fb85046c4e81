// Tick positions of an axis.
#pragma once

#include <vector>

#include "figures/axis.h"

namespace kelo::figures {

/// Ticks from lower to upper, both included, with a spacing of a whole number from 1 to 10 times a
/// power of ten and at most five intervals between the round ticks. Limits whose width is no finite
/// number, or too narrow for their distance from 0, give the two ends alone. An end that is a round
/// tick stands there twice. NOTE: intended.
std::vector<double> autoTicks(const Limits& limits);

}  // namespace kelo::figures
