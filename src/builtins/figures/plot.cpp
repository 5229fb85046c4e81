// plot: any number of pairs x, y, each with its specification strings, or one y.
// Tested by tests/transcripts/figures/plot.txt.
#include "builtins/figures/handlers.h"
#include "builtins/figures/plot_arguments.h"
#include "builtins/figures/plot_data_lines.h"
#include "figures/attribute.h"
#include "messages/catalogue/plot_commands.h"
#include "messages/message.h"

namespace kelo::builtins {
namespace {

/// The real parts over the imaginary ones.
std::vector<Line> linesOfComplex(const ComplexDoubleArray& numbers) {
  auto real = DoubleArray::uninitialized(numbers.size()), imaginary = DoubleArray::uninitialized(numbers.size());
  double *re = real.writable(), *im = imaginary.writable();
  for (const ComplexDouble& z : numbers.values()) {
    *re++ = z.real;
    *im++ = z.imaginary;
  }
  return linesOfPair(real, imaginary);
}

std::vector<Line> linesOfY(const PlotArguments& arguments, int64_t base) {
  const NumericArray& y = arguments.numbers(0);
  std::vector<Line> lines = y.is(Kind::Complex) ? linesOfComplex(y.asComplex()) : linesOverPositions(y, 1);
  colorInTurn(lines, base);
  for (int64_t i = 1; i < arguments.attributes(); ++i) {
    const bool parses = arguments.isCharacters(i) && figures::parseLineSpec(arguments.text(i), lines);
    if (!parses) throw expectation(text::kSpecOfPlot);
  }
  return lines;
}

std::vector<Line> linesOfPairs(const PlotArguments& arguments, int64_t base) {
  std::vector<Line> all;
  for (int64_t i = 0; i < arguments.attributes();) {
    if (i + 1 >= arguments.attributes() || arguments.isCharacters(i + 1)) throw expectation(text::yDataMissing(i + 1));
    std::vector<Line> lines = linesOfPair(arguments.numbers(i), arguments.numbers(i + 1));
    colorInTurn(lines, base + static_cast<int64_t>(all.size()));
    for (i += 2; arguments.isSpecification(i); ++i) {
      const std::string text = arguments.text(i);
      if (!figures::parseLineSpec(text, lines)) throw expectation(text::invalidSpecification(text, i + 1));
    }
    std::move(lines.begin(), lines.end(), std::back_inserter(all));
  }
  return all;
}

}  // namespace

NodeValue plot(Call& call) {
  const PlotArguments arguments(call);
  const bool startsWithY = arguments.startWithY();
  const int64_t base = heldLines(call);
  std::vector<Line> lines = startsWithY ? linesOfY(arguments, base) : linesOfPairs(arguments, base);
  arguments.applyAttributesTo(lines);
  return show(call, std::move(lines));
}

}  // namespace kelo::builtins
