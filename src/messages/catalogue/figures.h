// Texts of figures: models, commands, documents.
#pragma once

namespace kelo::text {

inline constexpr const char* kLimitsReversed = "Lower limit should not exceed the upper one";

}  // namespace kelo::text
