// The log of translations, for those who want to see them.
#pragma once

#include <string>

#include "interpreter/native/loop_graph.h"

namespace kelo::native {

/// Of what stands at an instruction.
void logLine(const Code& code, int32_t pc, const std::string& text);
void logObstacle(const Code& code, int32_t pc, const LoopGraph& graph);

}  // namespace kelo::native
