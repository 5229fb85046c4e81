// What the evaluator finds out once about a node of the tree and keeps there. It is the evaluator's own; the front end
// neither fills nor reads it.
#pragma once

namespace kelo {

struct NodeCache {};

}  // namespace kelo
