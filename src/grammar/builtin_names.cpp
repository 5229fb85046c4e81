#include "grammar/builtin_names.h"

namespace kelo {
namespace {

constexpr std::string_view kNames[] = {
#include "builtin_names.inc"
};

}  // namespace

std::span<const std::string_view> builtinNames() { return kNames; }

}  // namespace kelo
