// Search in the help pages as they are built: words that stand in many pages, in few and in none.
#include <benchmark/benchmark.h>

#include "docs/doc_search.h"
#include "platform/native/disk.h"

namespace kelo::docs {
namespace {

void search(benchmark::State& state, DocSearch::Scope scope, const char* text) {
  const platform::native::Disk resources(KELO_RESOURCES);
  const DocSearch pages(resources);
  size_t found = 0;
  for (auto _ : state) found = pages.find(scope, text).size();
  state.counters["found"] = static_cast<double>(found);
}
BENCHMARK_CAPTURE(search, titles, DocSearch::Scope::title, "s")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, one_letter, DocSearch::Scope::content, "e")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, common_word, DocSearch::Scope::content, "matrix")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, rare_word, DocSearch::Scope::content, "eigenvalue")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, nowhere, DocSearch::Scope::content, "zzzz")->Unit(benchmark::kMicrosecond);

void readIndex(benchmark::State& state) {
  const platform::native::Disk resources(KELO_RESOURCES);
  for (auto _ : state) benchmark::DoNotOptimize(DocSearch(resources));
}
BENCHMARK(readIndex)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelo::docs
