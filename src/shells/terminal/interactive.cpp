// A command is typed line by line until it is complete, and handed over by the run button of the
// console.
#include "shells/terminal/interactive.h"

#include <unistd.h>

#include <cstdio>
#include <set>

#include "figures/pictures/native/cairo_renderer.h"
#include "hints/hint.h"
#include "interpreter/builtin_table.h"
#include "shells/terminal/completion.h"
#include "shells/terminal/figure_commands.h"
#include "shells/terminal/function_help.h"
#include "shells/terminal/line_editor.h"
#include "shells/terminal/session.h"
#include "shells/terminal/terminal.h"
#include "shells/terminal/work_dir.h"
#include "values/memory.h"
#include "values/refused_size.h"

namespace kelo::terminal {
namespace {

constexpr const char* kPrompt = "> ";
constexpr const char* kContinuation = "| ";

class InteractiveConsole {
 public:
  InteractiveConsole(const Options& options, const std::string& workDir)
      : hasFixedWidth_(options.width.has_value()), session_(options, workDir, style()), editor_(hooks()),
        screen_(options, session_.app.figures, renderer_),
        figureCommands_(options, session_.app.figures, session_.figureDocuments, renderer_, screen_) {}

  void serve() {
    warmUp();
    session_.writer.setHints([this](const Message& message, const std::string& text) { return hint(message, text); });
    session_.figureDocuments.makeFolder();
    while (std::optional<std::string> command = readCommand()) {
      if (command->find_first_not_of(" \t") == std::string::npos) continue;
      runCommand(*command);
    }
    std::fputs("\n", stdout);
  }

 private:
  static ItemWriter::Style style() {
    ItemWriter::Style style;
    style.colour = wantsColour(STDERR_FILENO);
    style.showsProgress = isScreen(STDERR_FILENO);
    style.clearsScreen = isatty(STDOUT_FILENO);
    style.editorPrompts = true;
    return style;
  }

  LineEditor::Hooks hooks() {
    LineEditor::Hooks hooks;
    hooks.previous = [this] { return session_.app.console.history.previous(); };
    hooks.next = [this] { return session_.app.console.history.next(); };
    hooks.complete = [this](const std::string& before, size_t* wordLength) {
      std::vector<std::string> names;
      if (session_.app.control.status() != RunState::Status::idle) return names;  // an answer is typed
      session_.parserQueue.runAndWait([&] { names = completions(session_.app, before, wordLength); });
      return names;
    };
    hooks.interrupted = [this] { return session_.stopSignal.take() > 0; };
    hooks.input = &session_.input;
    hooks.serve = [this] { session_.mainQueue.runReady(); };
    hooks.descriptors = {session_.mainQueue.wakeDescriptor(), session_.stopSignal.descriptor()};
    return hooks;
  }

  /// Thread: the parser queue
  std::optional<std::string> hint(const Message& message, const std::string& text) {
    Environment& environment = session_.app.environment;
    std::set<std::string> builtins, variables;
    for (const Builtin* row : environment.builtins.rows()) builtins.insert(row->name);
    for (const Name name : environment.baseWorkspace.names()) variables.insert(name.text());
    return hints::hintFor({message, text, builtins, variables, takeRefusedBytes(), double(arrayByteLimit())});
  }

  /// The first parse fills the parser's tables; that is done while the user types.
  void warmUp() {
    session_.parserQueue.async(warmUpParser);
  }

  bool needsMore(const std::string& text) {
    bool incomplete = false;
    session_.parserQueue.runAndWait([&] { incomplete = isIncomplete(text); });
    return incomplete;
  }

  /// Nothing at the end of the input. Ctrl-C and, after a first line, the end throw away what was
  /// typed; an empty line ends a text that stays incomplete.
  std::optional<std::string> readCommand() {
    std::string text, line;
    while (true) {
      switch (editor_.readLine(text.empty() ? kPrompt : kContinuation, &line)) {
        case LineEditor::Outcome::ended:
          if (text.empty()) return std::nullopt;
          std::fputs("\n", stdout);
          [[fallthrough]];
        case LineEditor::Outcome::interrupted: text.clear(); continue;
        case LineEditor::Outcome::line: break;
      }
      const bool endsHere = !text.empty() && line.empty();
      text += text.empty() ? line : "\n" + line;
      if (text.empty() || endsHere || !needsMore(text)) return text;
    }
  }

  std::optional<std::string> readAnswer() {
    std::string line;
    if (editor_.readLine(session_.writer.takeOpenPrompt(), &line) != LineEditor::Outcome::line) return std::nullopt;
    return line;
  }

  void runCommand(const std::string& command) {
    if (runHelpLine(command, {.width = terminalWidth(), .colour = wantsColour(STDOUT_FILENO)})) return;
    if (figureCommands_.run(command)) return screen_.showIfChanged();
    if (!hasFixedWidth_) session_.app.environment.settings.consoleCells = terminalWidth();
    session_.writer.beginCommand(command);
    if (const auto known = hints::hintBefore(command))
      std::fprintf(stderr, "%s\n", session_.writer.hintLine(*known).c_str());
    session_.run(
        [&](AppController& app) {
          app.console.input.text = command;
          app.pressRun();
        },
        [this] { return readAnswer(); });
    if (session_.writer.hasWritten()) std::fputs("\n", stdout);
    screen_.showIfChanged();
    std::fflush(stdout);
  }

  bool hasFixedWidth_;
  Session session_;
  LineEditor editor_;
  pictures::native::CairoRenderer renderer_;
  FigureScreen screen_;
  FigureCommands figureCommands_;
};

}  // namespace

ExitStatus runInteractive(const Options& options) {
  std::string fault;
  const std::optional<Place> place = findPlace(options, &fault);
  if (!place) {
    std::fprintf(stderr, "kelo: %s\n", fault.c_str());
    return kWrongUsage;
  }
  InteractiveConsole(options, place->workDir).serve();
  return kAllRan;
}

}  // namespace kelo::terminal
