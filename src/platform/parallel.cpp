#include "platform/parallel.h"

namespace kelo::platform {

namespace {
ParallelFor* g_parallel = nullptr;
}

void setParallelFor(ParallelFor* parallel) { g_parallel = parallel; }
ParallelFor* currentParallelFor() { return g_parallel; }

}  // namespace kelo::platform
