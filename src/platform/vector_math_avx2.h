// The routines for processors with vectors of four doubles (AVX2 and FMA). Their source is compiled
// for such processors only, so nothing of it may be called elsewhere.
#pragma once

#include "platform/vector_angle.h"
#include "platform/vector_math.h"
#include "platform/vector_power.h"

namespace kelo::platform {

/// Null where the C library is faster or more exact. REQUIRES: a processor with AVX2 and FMA
VectorRoutine avx2Routine(VectorFunction function);
/// REQUIRES: as above
PowerRoutine avx2Power();
WholePowerRoutine avx2WholePower();
AngleRoutine avx2Angle();

}  // namespace kelo::platform
