// Names of the language that have no handler yet. They are reserved words all the same, and a call of one is refused as
// not supported yet. A row leaves this table when its family brings one with a handler.
#include "builtins/library.h"

namespace kelo::builtins {
namespace {

constexpr Builtin kPending[] = {
    {"grid", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"hold", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"legend", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"plot", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"scatter", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"stairs", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"stem", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"surf", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"title", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"xlabel", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"xlim", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"xticks", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"ylabel", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"ylim", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"yticks", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"zlabel", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"zlim", nullptr, 0, {0, kAny}, kAny, "", "", ""},
    {"zticks", nullptr, 0, {0, kAny}, kAny, "", "", ""},
};

}  // namespace

std::span<const Builtin> pendingTable() { return kPending; }

}  // namespace kelo::builtins
