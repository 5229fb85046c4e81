// Parsing: lines per second of a script of 5,000 lines, valid or wrong at its end. A wrong one goes
// through the careful stage too.
#include <benchmark/benchmark.h>

#include <string>

#include "frontend/matlab_parser.h"
#include "platform/memory_file_system.h"

namespace kelo {
namespace {

// What programs are made of, 25 lines.
constexpr const char* kLines =
    "% The mean of each column, and what lies far from it.\n"
    "total = 0; count = 1;\n"
    "data = [1 -2 3.5; 4 5e-3 x(1)];\n"
    "for k = 1:numel(data)\n"
    "  if data(k) > 2.5 && ~isnan(data(k))  % those count\n"
    "    total = total + data(k) * w(k, end)^2;\n"
    "    count = count + 1;\n"
    "  elseif isempty(data(k, :))\n"
    "    break\n"
    "  else\n"
    "    y(k) = -data(k)' / (1 + exp(-t(k)));\n"
    "  end\n"
    "end\n"
    "\n"
    "station.name = 'north''s end';\n"
    "station.readings(end + 1).value = mean(data(:, 2:end));\n"
    "f = @(x, y) x.^2 + y.^2 - 2 .* x .* y;\n"
    "while abs(f(a, b)) >= 1e-6 | count ~= 3\n"
    "  [a, b] = step(f, a, b, 0.5);\n"
    "end\n"
    "switch station.name\n"
    "case 'south'\n"
    "  disp(['at ' num2str(total) ' of ' station.name])\n"
    "end\n"
    "z(:, k) = reshape(data, [], 3) \\ ones(2, 1);\n";
constexpr int kCopies = 200;
constexpr int64_t kScriptLines = 5000;

void parse(benchmark::State& state, const char* ending, size_t messages) {
  std::string script;
  for (int k = 0; k < kCopies; ++k) script += kLines;
  script += ending;
  ParserBuffer buffer;
  const platform::MemoryFileSystem files;
  size_t shown = 0;
  const ParserSetting setting{buffer, files, [&shown](const Message&) { ++shown; }};
  warmUpParser();
  for (auto _ : state) {
    shown = 0;
    benchmark::DoNotOptimize(parseText(setting, script));
  }
  if (shown != messages) state.SkipWithError("an unexpected number of messages");
  state.counters["lines"] =
      benchmark::Counter(static_cast<double>(state.iterations() * kScriptLines), benchmark::Counter::kIsRate);
}

BENCHMARK_CAPTURE(parse, valid, "", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, wrong, "sum = 3\n", 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, never_ending, "if x\n", 1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelo
