// The editor's colours: a whole text of 5,000 lines, and the same with one line changed.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

#include "editor/function_names.h"
#include "editor/indentation.h"
#include "editor/line_commands.h"
#include "editor/syntax_highlighter.h"

namespace kelo {
namespace {

std::string program(int lines) {
  static const char* const kLines[] = {
      "for k = 1:2:numel(values)  % every second one\n", "    s(k) = sum(x(1:end)) + 2.5e-3*exp(-t(k)^2);\n",
      "    if strcmp(name, 'it''s') && k > 3\n",         "        fprintf('%d of %d\\n', k, end_value);\n",
      "    else\n",                                      "        y = [y; zeros(1, n), http_count];\n",
      "    end\n",                                       "end\n"};
  std::string text;
  for (int k = 0; k < lines; ++k) text += kLines[k % 8];
  return text;
}

std::vector<std::string> names() {
  std::ifstream file(KELO_FUNCTIONS_PLIST);
  return readFunctionNames(std::string((std::istreambuf_iterator<char>(file)), {})).value();
}

void wholeText(benchmark::State& state) {
  SyntaxHighlighter highlighter(names());
  const std::string text = program(5000);
  for (auto _ : state) {
    highlighter.highlightAll("");
    benchmark::DoNotOptimize(highlighter.highlightAll(text));
  }
}
BENCHMARK(wholeText)->Unit(benchmark::kMillisecond);

void oneChangedLine(benchmark::State& state) {
  SyntaxHighlighter highlighter(names());
  std::string text = program(5000);
  highlighter.highlightAll(text);
  const size_t at = text.size() / 2;
  for (auto _ : state) {
    text[at] = text[at] == 'a' ? '1' : 'a';
    benchmark::DoNotOptimize(highlighter.highlightAll(text));
  }
}
BENCHMARK(oneChangedLine)->Unit(benchmark::kMillisecond);

void indentLastLine(benchmark::State& state) {
  const std::string text = program(5000) + "x";
  for (auto _ : state) benchmark::DoNotOptimize(indentedLine(static_cast<int64_t>(text.size()), text));
}
BENCHMARK(indentLastLine)->Unit(benchmark::kMillisecond);

void indentAll(benchmark::State& state) {
  const std::string text = program(5000);
  for (auto _ : state) benchmark::DoNotOptimize(indent(text, 0, static_cast<int64_t>(text.size())));
}
BENCHMARK(indentAll)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelo
