#include "shells/terminal/figure_commands.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "messages/alert.h"
#include "messages/message.h"
#include "shells/terminal/console_commands.h"

namespace kelo::terminal {
namespace {

constexpr double kSecondsTo2001 = 978307200;

void tell(const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); }

std::string dateText(double timeStamp) {
  const auto seconds = static_cast<std::time_t>(timeStamp + kSecondsTo2001);
  std::tm local = {};
  localtime_r(&seconds, &local);
  char text[32];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local)};
}

std::string trimmed(const std::string& text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

/// "~" at the beginning stands for the home directory, as at a shell.
std::string withHome(const std::string& path) {
  const char* const home = std::getenv("HOME");
  return home != nullptr && path.starts_with("~/") ? home + path.substr(1) : path;
}

}  // namespace

pictures::PictureOptions pictureOptions(const Options& options) {
  pictures::PictureOptions picture;
  picture.size = options.figureSize;
  picture.theme = drawing::Theme::named(options.theme);
  return picture;
}

bool FigureCommands::run(const std::string& line) {
  const std::string text = trimmed(line), word = text.substr(0, text.find_first_of(" \t"));
  const std::string argument = trimmed(text.substr(word.size()));
  for (const ConsoleCommand& command : kConsoleCommands) {
    const std::string form = command.form, name = form.substr(0, form.find(' '));
    if (word != name) continue;
    const bool takesOne = form != name;
    if (takesOne == argument.empty()) {
      tell(takesOne ? word + " needs a " + form.substr(name.size() + 1) : word + " takes no argument");
      return true;
    }
    try {
      if (word == ":save") save(argument);
      if (word == ":figures") list();
      if (word == ":show") show(argument);
      if (word == ":export") exportTo(argument);
      if (word == ":close") close();
    } catch (const Alert& alert) {
      tell(alert.text.empty() ? alert.title : alert.title + ". " + alert.text);
    } catch (const Problem& problem) {
      tell(problem.reason.value_or(""));
    }
    return true;
  }
  const bool isMeantAsOne = word.size() > 1 && word[0] == ':' && std::isalpha(static_cast<unsigned char>(word[1]));
  if (isMeantAsOne) tell("There is no command " + word + "; ? lists those that there are");
  return isMeantAsOne;
}

void FigureCommands::save(const std::string& name) {
  const figures::Figure figure = panel_.figure();
  if (std::holds_alternative<std::monostate>(figure)) return tell("There is no figure to save");
  documents_.makeFolder();
  documents_.save(name, figure, pictures::thumbnail(figure, renderer_));
  tell("Saved as " + name);
}

void FigureCommands::list() const {
  documents_.makeFolder();
  const std::vector<figures::FigureData> all = documents_.loadAll();
  if (all.empty()) std::puts("No Plot. Saved plots will appear here");
  for (const figures::FigureData& figure : all) {
    std::printf("%s  Saved: %s\n", figure.fileNameWithoutExt.c_str(), dateText(figure.timeStamp).c_str());
  }
}

void FigureCommands::show(const std::string& name) {
  for (const figures::FigureData& figure : documents_.loadAll()) {
    if (figure.fileNameWithoutExt != name) continue;
    panel_.show(figure.figure());
    return screen_.show();
  }
  tell("There is no saved figure named \"" + name + "\"");
}

void FigureCommands::exportTo(const std::string& path) {
  std::optional<std::string> fault = figureNameFault(path);
  if (!fault) {
    fault = FigureFiles(documents_, renderer_).write(withHome(path), panel_.figure(), pictureOptions(options_));
  }
  tell(fault ? *fault : "Written to " + path);
}

void FigureCommands::close() {
  if (std::holds_alternative<std::monostate>(panel_.figure())) return tell("There is no figure to close");
  panel_.close();
}

}  // namespace kelo::terminal
