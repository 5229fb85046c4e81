// The commands that fill and change the current figure.
//
// Arguments are read and complained about first, then the figure is changed: under its lock at
// once, or, for the commands that make one, on the main thread, while the run waits. A failed
// command leaves the figure as it was.
#include "builtins/figures/handlers.h"
#include "builtins/library.h"
#include "messages/catalogue/plot_commands.h"

namespace kelo::builtins {
namespace {

using Axis = figures::Axis;

// clang-format off
constexpr Builtin kFigures[] = {
    {"plot",    plot,                             {1, kAny}, 0, "x, y, spec, Name, Value, ...",
     "Draw lines", "plot(0:0.1:6, sin(0:0.1:6), 'r--o')", {.inputs = text::kPlotInputs}},
    {"stem",    {stems, Stems::stem},             {1, kAny}, 0, "x, y, spec, Name, Value, ...",
     "Draw stems from a baseline", "stem(cos(0:9), 'filled')", {.inputs = text::kPlotInputs}},
    {"stairs",  {stems, Stems::stairs},           {1, kAny}, 0, "x, y, spec, Name, Value, ...",
     "Draw lines as stairs", "stairs([1 3 2 4])", {.inputs = text::kPlotInputs}},
    {"scatter", scatter,                          {2, kAny}, 0, "x, y, c1, ..., Name, Value, ...",
     "Draw points as markers", "scatter(rand(1, 20), rand(1, 20), 'filled')", {.inputs = text::kScatterInputs}},
    {"surf",    surf,                             {1, 3},    0, "x, y, z",
     "Draw a surface", "surf([1 2; 3 4])", {.inputs = text::kSurfInputs}},
    {"hold",    {figureFlag, FigureFlag::hold},   {0, 1},    0, "option",
     "Keep what is drawn when more is drawn: 'on' or 'off', without an option the other way", "hold('on')",
     {.inputs = text::kZeroOrOneInput}},
    {"grid",    {figureFlag, FigureFlag::grid},   {0, 1},    0, "option",
     "Show grid lines: 'on' or 'off', without an option the other way", "grid('off')",
     {.inputs = text::kZeroOrOneInput}},
    {"legend",  legend,                           {0, kAny}, 0, "name1, name2, ...",
     "Name the lines in a legend; 'show', 'hide', 'off' or 'toggle' it", "plot([1 2; 3 5]); legend('data', 'fit')"},
    {"xlabel",  {label, Label::x},                {1, 1},    0, "c",
     "Label the x axis", "xlabel('Time')"},
    {"ylabel",  {label, Label::y},                {1, 1},    0, "c",
     "Label the y axis", "ylabel('Voltage')"},
    {"zlabel",  {label, Label::z},                {1, 1},    0, "c",
     "Label the z axis of a surface", "zlabel('Height')"},
    {"title",   {label, Label::title},            {1, 1},    0, "c",
     "Give the figure a title", "title('Damped')"},
    {"xlim",    {axisLimits, Axis::x},            {0, 1},    1, "[a, b]",
     "Limits of the x axis: ask, set, or 'auto', 'manual', 'mode'", "plot(0:9); xlim([2 5])",
     {.inputs = text::kLimitsInputs, .verb = "performing xlim"}},
    {"ylim",    {axisLimits, Axis::y},            {0, 1},    1, "[a, b]",
     "Limits of the y axis: ask, set, or 'auto', 'manual', 'mode'", "ylim('auto')",
     {.inputs = text::kLimitsInputs, .verb = "performing ylim"}},
    {"zlim",    {axisLimits, Axis::z},            {0, 1},    1, "[a, b]",
     "Limits of the z axis: ask, set, or 'auto', 'manual', 'mode'", "surf([1 2; 3 4]); zlim('mode')",
     {.inputs = text::kLimitsInputs, .verb = "performing zlim"}},
    {"xticks",  {axisTicks, Axis::x},             {0, 1},    1, "ticks",
     "Ticks of the x axis: ask, set, or 'auto', 'manual', 'mode'", "plot(0:9); xticks(0:3:9)",
     {.inputs = text::kZeroOrOneInput}},
    {"yticks",  {axisTicks, Axis::y},             {0, 1},    1, "ticks",
     "Ticks of the y axis: ask, set, or 'auto', 'manual', 'mode'", "plot(0:9); yticks([])",
     {.inputs = text::kZeroOrOneInput}},
    {"zticks",  {axisTicks, Axis::z},             {0, 1},    1, "ticks",
     "Ticks of the z axis: ask, set, or 'auto', 'manual', 'mode'", "surf([1 2; 3 4]); zticks('auto')",
     {.inputs = text::kZeroOrOneInput}},
};
// clang-format on

}  // namespace

std::span<const Builtin> figuresTable() { return kFigures; }

}  // namespace kelo::builtins
