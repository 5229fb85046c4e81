// What makes structures with very many fields fast.
#pragma once

#include "values/name.h"

namespace kelo {

/// Where some list of fields had the name last: a hint, which may be wrong.
uint32_t& fieldPlaceOf(Name name);
/// Whether it is a name that a run made, which somebody holds and nobody else.
bool isHeldOnce(Name name);

}  // namespace kelo
