// Commands run in order in one base workspace. A failed one does not keep the next from running; a
// fatal fault and Ctrl-C do.
#include "shells/terminal/batch.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "figures/pictures/native/cairo_renderer.h"
#include "frontend/matlab_parser.h"
#include "frontend/parse_listing.h"
#include "interpreter/code_listing.h"
#include "shells/terminal/figure_commands.h"
#include "shells/terminal/session.h"
#include "shells/terminal/terminal.h"
#include "shells/terminal/work_dir.h"

namespace kelo::terminal {
namespace {

ItemWriter::Style styleOf(const Options& options) {
  ItemWriter::Style style;
  style.json = options.json;
  style.colour = !options.json && wantsColour(STDERR_FILENO);
  style.showsProgress = !options.json && isScreen(STDERR_FILENO);
  style.clearsScreen = !options.json && isatty(STDOUT_FILENO);
  style.promptStaysOpen = style.clearsScreen && isatty(STDIN_FILENO);
  return style;
}

void tell(const std::string& fault) { std::fprintf(stderr, "kelo: %s\n", fault.c_str()); }

/// The figure that is current in the end, into each file that was asked for. False: one could not
/// be written.
bool writeFigures(Session& session, const Options& options) {
  bool isWritten = true;
  for (const std::string& file : options.figureFiles) {
    pictures::native::CairoRenderer renderer;
    const FigureFiles files(session.figureDocuments, renderer);
    const std::optional<std::string> fault = files.write(file, session.app.figures.figure(), pictureOptions(options));
    if (fault) tell(*fault);
    isWritten &= !fault;
  }
  return isWritten;
}

/// Values that could not be written, as on a full disk, are reported.
ExitStatus endOf(Session& session, const Options& options) {
  ExitStatus status =
      writeFigures(session, options) ? session.worstStatus() : std::max(session.worstStatus(), kCommandFailed);
  const std::string& unwritten = session.writer.fault();
  if (unwritten.empty()) return status;
  tell("standard output cannot be written: " + unwritten);
  return std::max(status, kCommandFailed);
}

/// What a text becomes up to a stage, printed in place of what it does.
ExitStatus printStage(Session& session, Stage stage, const std::string& text, const std::string& path = "") {
  Environment& environment = session.app.environment;
  const auto print = [](const std::string& listing) { std::fwrite(listing.data(), 1, listing.size(), stdout); };
  if (stage == Stage::tokens) print(tokenListing(text));
  const ProgTree tree = parseText(environment.parserSetting(), text, path);
  if (!tree) return kCommandFailed;
  if (stage == Stage::tree) print(treeListing(*tree));
  if (stage == Stage::code) print(listing(*tree, text, environment.builtins));
  return kAllRan;
}

/// False when Ctrl-C was pressed before the last one, also between two of them; a fatal fault ends
/// them too.
bool runCommands(Session& session, const std::vector<std::string>& commands) {
  for (size_t k = 0; k < commands.size(); ++k) {
    session.writer.continueWith(commands[k]);
    session.run([&](AppController& app) { app.startCommand(commands[k]); });
    const bool isLast = k + 1 == commands.size();
    if (isLast || session.lastStatus() == kFatalFault) break;
    if (!session.wasStopped() && session.stopSignal.take() == 0) continue;
    if (session.lastStatus() == kAllRan) tell("stopped before all commands had run");
    return false;
  }
  return true;
}

}  // namespace

ExitStatus runBatch(const Options& options) {
  std::string fault;
  const std::optional<Place> place = findPlace(options, &fault);
  if (!place) {
    tell(fault);
    return kWrongUsage;
  }
  Session session(options, place->workDir, styleOf(options));
  session.endAtSecondPress();
  session.app.console.history.setKeeping(isatty(STDIN_FILENO));
  if (!options.width) session.app.environment.settings.consoleCells = terminalWidth();

  if (!place->fileName.empty() && options.stage != Stage::run) {
    const std::string path = (place->directory.empty() ? "" : place->directory + "/") + place->fileName;
    const std::optional<std::string> text = session.app.environment.files.readFile(path);
    if (!text) tell(path + " cannot be read");
    return text ? printStage(session, options.stage, *text, path) : kCommandFailed;
  }
  if (!place->fileName.empty()) {
    session.writer.beginCommand("");
    session.app.environment.isLastRun = true;
    session.run([&](AppController& app) { app.startFile(place->directory, place->fileName); });
    return endOf(session, options);
  }
  std::vector<std::string> commands = options.commands;
  if (commands.empty()) {
    const std::optional<std::string> text = session.input.rest(session.stopSignal.descriptor());
    const std::string& unread = session.input.fault();
    if (!unread.empty()) tell("standard input cannot be read: " + unread);
    if (!text) return kCommandFailed;
    commands.push_back(*text);
  }
  if (options.stage != Stage::run) {
    for (const std::string& command : commands) {
      if (printStage(session, options.stage, command) != kAllRan) return kCommandFailed;
    }
    return kAllRan;
  }
  const bool allRan = runCommands(session, commands);
  return std::max(endOf(session, options), allRan ? kAllRan : kCommandFailed);
}

}  // namespace kelo::terminal
