// The pages are those of the app, as text; the table is made from the rows of the functions.
#include "shells/terminal/function_help.h"

#include <fmt/format.h>

#include <cstdio>

#include "builtins/library.h"
#include "platform/native/disk.h"
#include "platform/native/resources.h"
#include "shells/terminal/console_commands.h"

namespace kelo::terminal {
namespace {

std::string rowText(const std::string& name, const char* help) { return fmt::format("  {:<16}{}\n", name, help); }

}  // namespace

std::string functionTable(bool listsCommands) {
  std::string text;
  for (const Family& family : builtins::library().families()) {
    text += fmt::format("{}{}\n", text.empty() ? "" : "\n", family.title);
    for (const Builtin& row : family.rows) text += rowText(row.name, row.help);
  }
  if (!listsCommands) return text;
  text += "\nThe console's own commands\n";
  for (const ConsoleCommand& command : kConsoleCommands) text += rowText(command.form, command.help);
  return text;
}

bool printFunctionHelp(const std::string& name, const docs::TextLook& look, bool listsCommands) {
  const platform::native::Disk resources(platform::native::resourceDirectory());
  const std::optional<std::string> text =
      name.empty() ? functionTable(listsCommands) : docs::nameText(docs::DocFilesLoader(resources), name, look);
  if (!text) {
    std::fprintf(stderr, "kelo: there is no help on \"%s\"\n", name.c_str());
    return false;
  }
  std::fwrite(text->data(), 1, text->size(), stdout);
  return true;
}

bool runHelpLine(const std::string& line, const docs::TextLook& look) {
  const size_t first = line.find_first_not_of(" \t");
  if (first == std::string::npos || line[first] != '?') return false;
  std::string name = line.substr(first + 1);
  name.erase(0, name.find_first_not_of(" \t"));
  name.erase(name.find_last_not_of(" \t\r\n") + 1);
  printFunctionHelp(name, look, /*listsCommands=*/true);
  std::fputs("\n", stdout);
  std::fflush(stdout);
  return true;
}

}  // namespace kelo::terminal
