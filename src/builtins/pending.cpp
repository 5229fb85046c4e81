// Names of the language that have no handler yet. They are reserved words all the same, and a call
// of one is refused as not supported yet. A row leaves this table when its family brings one with a
// handler.
#include "builtins/library.h"

namespace kelo::builtins {
namespace {

// clang-format off
constexpr Builtin kPending[] = {
    {"grid"}, {"hold"}, {"legend"}, {"plot"}, {"scatter"}, {"stairs"}, {"stem"}, {"surf"},
    {"title"}, {"xlabel"}, {"xlim"}, {"xticks"}, {"ylabel"}, {"ylim"}, {"yticks"}, {"zlabel"},
    {"zlim"}, {"zticks"},
};
// clang-format on

}  // namespace

std::span<const Builtin> pendingTable() { return kPending; }

}  // namespace kelo::builtins
