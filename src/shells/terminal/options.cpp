// The only source that sees the command line library, which is slow to compile.
#include "shells/terminal/options.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cstdio>

#include "shells/terminal/figure_file.h"

namespace kelo::terminal {
namespace {

constexpr const char* kDescription =
    "Kelo, an interpreter of a subset of the MATLAB language.\n"
    "\n"
    "With a terminal and no FILE it is an interactive console: type a command, Tab completes a name, the arrows\n"
    "recall what was typed before, Ctrl-C stops a run, Ctrl-D leaves. Otherwise it runs the given texts, the script\n"
    "or function file FILE.m, or the whole of standard input as one command, and ends.";

constexpr const char* kFooter =
    "Values and text go to standard output, errors and warnings to standard error.\n"
    "Exit status: 0 all ran, 1 a command failed, 2 wrong usage, 70 a fatal fault ended a run.\n"
    "\n"
    "Examples:\n"
    "  kelo -e 'x = 1:5' -e 'mean(x)'\n"
    "  kelo examples/tour.m\n"
    "  echo '2 + 3' | kelo --digits 12";

class HelpText : public CLI::Formatter {
 public:
  std::string make_usage(const CLI::App*, std::string) const override {
    return "\nUsage: kelo [options] [FILE.m | -]\n";
  }
  std::string make_positionals(const CLI::App*) const override { return ""; }  // the description tells
  std::string make_option_opts(const CLI::Option* option) const override { return " " + option->get_type_name(); }
};

/// The words of the library without their line breaks.
std::string oneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

ExitStatus refuse(const std::string& fault) {
  std::fprintf(stderr, "kelo: %s (kelo --help tells more)\n", oneLine(fault).c_str());
  return kWrongUsage;
}

/// What is wrong with them, if anything.
std::optional<std::string> takeFigureOptions(Options& options, const std::string& size) {
  for (const std::string& file : options.figureFiles) {
    if (std::optional<std::string> fault = figureNameFault(file)) return fault;
  }
  if (size.empty()) return std::nullopt;
  const std::optional<drawing::Size> parsed = parsedFigureSize(size);
  if (!parsed) return "--figure-size should be like 640x480, sides from 16 to 10000: " + size;
  options.figureSize = *parsed;
  return std::nullopt;
}

}  // namespace

std::variant<Options, ExitStatus> parseOptions(int argc, char** argv) {
  Options options;
  int digits = 0;
  std::string figureSize;

  CLI::App app(kDescription, "kelo");
  app.formatter(std::make_shared<HelpText>());
  app.get_formatter()->column_width(22);
  app.footer(kFooter);
  app.set_help_flag("-h,--help", "Print this text and end");
  app.set_version_flag("--version", "kelo " KELO_VERSION, "Print the version and end");
  CLI::Option* commands =
      app.add_option("-e", options.commands, "Run TEXT as one console command; repeatable, in order")
          ->type_name("TEXT")->allow_extra_args(false)->take_all();
  app.add_option("FILE", options.file, "Script or function file to run; - runs standard input as one command")
      ->type_name("")->excludes(commands);
  app.add_option("--workdir", options.workDir, "Work directory (default: the current one)")->type_name("DIR");
  CLI::Option* digitsOption = app.add_option("--digits", digits, "Significant digits shown: 5, 8, 12 or 16")
                                  ->check(CLI::IsMember({5, 8, 12, 16}))->type_name("N");
  app.add_option("--width", options.width, "Console width in character cells (default: the terminal's, or 80)")
      ->type_name("CELLS")->check(CLI::Range(1, 100000));
  app.add_option("--figure", options.figureFiles,
                 "Write the current figure at the end: .png .pdf .svg .kfig; repeatable")
      ->type_name("FILE")->allow_extra_args(false)->take_all();
  app.add_option("--figure-size", figureSize, "Its size in points (default: 640x480)")->type_name("WxH");
  app.add_option("--theme", options.theme, "Colours of figures: light or dark")
      ->check(CLI::IsMember({"light", "dark"}))->type_name("THEME");
  app.add_option("--plots", options.plots, "How the console shows figures: auto, picture, braille or none")
      ->check(CLI::IsMember({"auto", "picture", "braille", "none"}))->type_name("HOW");
  app.add_flag("--json", options.json, "Show each item as one JSON object a line");
  std::string functions;
  CLI::Option* functionsOption =
      app.add_option("--functions", functions, "Print the built-in functions, or the page of NAME, and end")
          ->type_name("[NAME]")->expected(0, 1);
  const auto addStage = [&](const char* flag, Stage stage, const char* help) {
    app.add_flag_callback(flag, [&options, stage] { options.stage = stage; }, help);
  };
  addStage("--tokens", Stage::tokens, "Print the tokens of the texts, and run nothing");
  addStage("--tree", Stage::tree, "Print the parse trees of the texts, and run nothing");
  addStage("--code", Stage::code, "Print the register code of the texts beside their lines, and run nothing");
  app.add_flag("--no-native", options.noNative, "Make no native code of loops of numbers");
  app.add_option("--state", options.stateDir, "Where settings and history are kept")->type_name("DIR");
  app.add_option("--documents", options.documentsDir,
                 "Where figures are saved (default: that of --state, or a data directory)")
      ->type_name("DIR");

  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wanted) {  // help, version
    app.exit(wanted);
    return kAllRan;
  } catch (const CLI::ParseError& fault) {
    return refuse(fault.what());
  }
  if (const std::optional<std::string> fault = takeFigureOptions(options, figureSize)) return refuse(*fault);
  if (*functionsOption) options.functions = functions;
  if (*digitsOption) options.numDigitIndex = digits == 5 ? 0 : digits == 8 ? 1 : digits == 12 ? 2 : 3;
  return options;
}

}  // namespace kelo::terminal
