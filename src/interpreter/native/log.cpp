#include "interpreter/native/log.h"

#include <fmt/format.h>

#include "frontend/node_text.h"
#include "grammar/kelo_node.h"
#include "interpreter/code_listing.h"
#include "platform/native_code.h"

namespace kelo::native {

void logLine(const Code& code, int32_t pc, const std::string& text) {
  if (!platform::nativeCode.log) return;
  KeloNode* place = code.places[static_cast<size_t>(pc)];
  platform::nativeCode.log(fmt::format("line {}: {}", place ? positionOf(*place).line : 0, text));
}

void logObstacle(const Code& code, int32_t pc, const LoopGraph& graph) {
  const int32_t obstacle = graph.obstacle();
  const Op op = code.instructions[static_cast<size_t>(obstacle < 0 ? pc : obstacle)].op;
  logLine(code, pc, fmt::format("instruction {} ({}) stands in the way", obstacle, operationName(op)));
}

}  // namespace kelo::native
