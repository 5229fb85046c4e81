// The handlers of the figure commands, and the selectors of those that serve several names.
#pragma once

#include "figures/axis.h"
#include "interpreter/builtin.h"

namespace kelo::builtins {

enum class Stems { stem, stairs };
enum class FigureFlag { hold, grid };
enum class Label { x, y, z, title };

NodeValue plot(Call& call);
NodeValue stems(Call& call);
NodeValue scatter(Call& call);
NodeValue surf(Call& call);
NodeValue figureFlag(Call& call);
NodeValue legend(Call& call);
NodeValue label(Call& call);
NodeValue axisLimits(Call& call);  ///< selector: figures::Axis
NodeValue axisTicks(Call& call);   ///< selector: figures::Axis

}  // namespace kelo::builtins
