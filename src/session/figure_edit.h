// Changes of a figure by the keys of its coded form.
#pragma once

#include "figures/figure_panel.h"
#include "session/json_rpc.h"

namespace kelo::session {

/// The figure with changes {KEY: VALUE}; a key inside another record is a path: "lines/0/attribute/lineWidth". Points
/// are no subject of it. Limits, ticks and their flags follow the commands' rules: limits that are set clear their
/// flag, a flag that is set computes anew.
///
/// throws Refusal, and nothing has changed: no figure, an unknown key, a value that its key does not take
figures::Figure editedFigure(const figures::Figure& figure, const Json& changes);

}  // namespace kelo::session
