// The routines for processors with vectors of eight doubles (AVX-512). They give what those of
// vector_math_avx2.h give, bit for bit, but for exp, log and powers. Their source is compiled for such
// processors only, so nothing of it may be called elsewhere.
#pragma once

#include "platform/vector_angle.h"
#include "platform/vector_math.h"
#include "platform/vector_power.h"

namespace kelo::platform {

/// Null where the routines for vectors of four are as fast. REQUIRES: a processor with AVX-512 F
VectorRoutine avx512Routine(VectorFunction function);
/// REQUIRES: as above
PowerRoutine avx512Power();
WholePowerRoutine avx512WholePower();
AngleRoutine avx512Angle();

}  // namespace kelo::platform
