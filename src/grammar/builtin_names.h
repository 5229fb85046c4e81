// The names of the built-in functions, each a reserved word. They stand in builtin_names.txt, from which the build
// makes this table; the alternatives of BUILT_IN_FUNC in the grammar are the same, which a test checks.
#pragma once

#include <span>
#include <string_view>

namespace kelo {

/// All names, sorted by their bytes.
std::span<const std::string_view> builtinNames();

}  // namespace kelo
