// The commands that fill and change the current figure.
//
// Arguments are read and complained about first, then the figure is changed: under its lock at once, or, for the
// commands that make one, on the main thread, while the run waits. A failed command leaves the figure as it was.
#include "builtins/figures/handlers.h"
#include "builtins/library.h"
#include "messages/catalogue/plot_commands.h"

namespace kelo::builtins {
namespace {

using figures::Axis;

constexpr CountTexts kPlot{text::kPlotInputs};
constexpr CountTexts kScatter{text::kScatterInputs};
constexpr CountTexts kSurf{text::kSurfInputs};
constexpr CountTexts kZeroOrOne{text::kZeroOrOneInput};
constexpr CountTexts kLimits{text::kLimitsInputs};

constexpr int of(auto selector) { return static_cast<int>(selector); }

constexpr Builtin kFigures[] = {
    // clang-format off
    {"plot", plot, 0, {1, kAny}, 0, "x, y, spec, Name, Value, ...", "Draw lines", "plot(0:0.1:6, sin(0:0.1:6), 'r--o')", &kPlot},
    {"stem", stems, of(Stems::stem), {1, kAny}, 0, "x, y, spec, Name, Value, ...", "Draw stems from a baseline", "stem(cos(0:9), 'filled')", &kPlot},
    {"stairs", stems, of(Stems::stairs), {1, kAny}, 0, "x, y, spec, Name, Value, ...", "Draw lines as stairs", "stairs([1 3 2 4])", &kPlot},
    {"scatter", scatter, 0, {2, kAny}, 0, "x, y, c1, ..., Name, Value, ...", "Draw points as markers", "scatter(rand(1, 20), rand(1, 20), 'filled')", &kScatter},
    {"surf", surf, 0, {1, 3}, 0, "x, y, z", "Draw a surface", "surf([1 2; 3 4])", &kSurf},
    {"hold", figureFlag, of(FigureFlag::hold), {0, 1}, 0, "option", "Keep what is drawn when more is drawn: 'on' or 'off', without an option the other way", "hold('on')", &kZeroOrOne},
    {"grid", figureFlag, of(FigureFlag::grid), {0, 1}, 0, "option", "Show grid lines: 'on' or 'off', without an option the other way", "grid('off')", &kZeroOrOne},
    {"legend", legend, 0, {0, kAny}, 0, "name1, name2, ...", "Name the lines in a legend; 'show', 'hide', 'off' or 'toggle' it", "legend('data', 'fit')"},
    {"xlabel", label, of(Label::x), {1, 1}, 0, "c", "Label the x axis", "xlabel('Time')"},
    {"ylabel", label, of(Label::y), {1, 1}, 0, "c", "Label the y axis", "ylabel('Voltage')"},
    {"zlabel", label, of(Label::z), {1, 1}, 0, "c", "Label the z axis of a surface", "zlabel('Height')"},
    {"title", label, of(Label::title), {1, 1}, 0, "c", "Give the figure a title", "title('Damped')"},
    {"xlim", axisLimits, of(Axis::x), {0, 1}, 1, "[a, b]", "Limits of the x axis: ask, set, or 'auto', 'manual', 'mode'", "xlim([0 10])", &kLimits, "performing xlim"},
    {"ylim", axisLimits, of(Axis::y), {0, 1}, 1, "[a, b]", "Limits of the y axis: ask, set, or 'auto', 'manual', 'mode'", "ylim('auto')", &kLimits, "performing ylim"},
    {"zlim", axisLimits, of(Axis::z), {0, 1}, 1, "[a, b]", "Limits of the z axis: ask, set, or 'auto', 'manual', 'mode'", "zlim('mode')", &kLimits, "performing zlim"},
    {"xticks", axisTicks, of(Axis::x), {0, 1}, 1, "ticks", "Ticks of the x axis: ask, set, or 'auto', 'manual', 'mode'", "xticks(0:2:10)", &kZeroOrOne},
    {"yticks", axisTicks, of(Axis::y), {0, 1}, 1, "ticks", "Ticks of the y axis: ask, set, or 'auto', 'manual', 'mode'", "yticks([])", &kZeroOrOne},
    {"zticks", axisTicks, of(Axis::z), {0, 1}, 1, "ticks", "Ticks of the z axis: ask, set, or 'auto', 'manual', 'mode'", "zticks('auto')", &kZeroOrOne},
    // clang-format on
};

}  // namespace

std::span<const Builtin> figuresTable() { return kFigures; }

}  // namespace kelo::builtins
