// The names of the built-in functions, each a reserved word. They stand in builtin_names.txt, from
// which the build makes this table and the alternatives of BUILT_IN_FUNC.
#pragma once

#include <string_view>

namespace kelo {

/// All names, sorted by their bytes.
inline constexpr std::string_view kBuiltinNames[] = {
#include "builtin_names.inc"
};

}  // namespace kelo
