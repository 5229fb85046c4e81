// Runs the measurements of one program, with the memory and the cores of the machine as the shells
// have them.
#include <benchmark/benchmark.h>

#include "platform/native/machine.h"
#include "platform/native/parallel_pool.h"

int main(int argc, char** argv) {
  using namespace kelo::platform;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  native::adaptToMachine();
  native::ParallelPool pool;
  setParallelFor(&pool);
  benchmark::RunSpecifiedBenchmarks();
  setParallelFor(nullptr);
}
