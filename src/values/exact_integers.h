// Where doubles stop telling whole numbers apart.
#pragma once

namespace kelo {

/// 2^53: every whole number below it in magnitude is a double of its own.
inline constexpr double kExactIntegers = 9007199254740992;

}  // namespace kelo
