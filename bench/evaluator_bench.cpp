// The evaluator: nanoseconds per round of small loops and per call, with twins of the outside in
// memory.
//
// A program is run once per measurement; the figure "per_round" is its time divided by its rounds.
#include <benchmark/benchmark.h>

#include <string>

#include "builtins/library.h"
#include "interpreter/test_app.h"

namespace kelo {
namespace {

struct Program {
  const char* name;
  const char* before;
  const char* text;
  double rounds;
};

const Program kPrograms[] = {
    {"while", "", "s = 0; k = 0;\nwhile k < 1e6, s = s + k*2; k = k + 1; end", 1e6},
    {"for", "s = 0;", "for k = 1:1e6, s = s + k; end", 1e6},
    {"element_write", "x = zeros(1, 1e6);", "for k = 1:1e6, x(k) = k; end", 1e6},
    {"element_read", "x = zeros(1, 1e6); s = 0;", "for k = 1:1e6, s = x(k); end", 1e6},
    {"matrix_write", "A = zeros(1000, 1000);", "for j = 1:1000\nfor i = 1:1000, A(i, j) = i; end\nend", 1e6},
    {"field", "s.a = 0;", "for k = 1:1e6, s.a = s.a + 1; end", 1e6},
    {"field_element", "s.a = zeros(1, 1e6);", "for k = 1:1e6, s.a(k) = s.a(k) + 1; end", 1e6},
    {"append", "", "x = 0;\nfor k = 1:1e6, x(end + 1) = k; end", 1e6},
    {"file_call", "y = 0;", "for k = 1:1e5, y = half(k); end", 1e5},
    {"handle_call", "y = 0; f = @(x) x + 1;", "for k = 1:1e5, y = f(k); end", 1e5},
    {"builtin_call", "y = 0;", "for k = 1:1e5, y = abs(k); end", 1e5},
    {"fib_20", "", "y = fib(20);", 1},
};

void run(benchmark::State& state, const Program& program) {
  TestApp test(builtins::library());
  test.files.writeFile("half.m", "function h = half(x)\nh = x / 2;\nend\n");
  test.files.writeFile("fib.m",
      "function r = fib(n)\nif n < 2\nr = n;\nelse\nr = fib(n - 1) + fib(n - 2);\nend\nend\n");
  test.app.startCommand(program.before);
  for (auto _ : state) test.app.startCommand(program.text);
  if (!test.shown.empty()) state.SkipWithError(test.shown.front().c_str());
  state.counters["per_round"] = benchmark::Counter(program.rounds * static_cast<double>(state.iterations()),
                                                   benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

const bool kRegistered = [] {
  for (const Program& program : kPrograms) {
    benchmark::RegisterBenchmark(program.name, [&program](benchmark::State& state) { run(state, program); })
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace kelo
