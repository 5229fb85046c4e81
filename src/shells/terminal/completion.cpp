#include "shells/terminal/completion.h"

#include <algorithm>
#include <set>

#include "interpreter/builtin_table.h"

namespace kelo::terminal {
namespace {

bool isWordCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

/// A quote after a name, a number or a closing bracket is a transpose.
bool endsInsideQuotes(const std::string& text) {
  bool inside = false;
  for (size_t k = 0; k < text.size(); ++k) {
    if (text[k] != '\'') continue;
    const char behind = k > 0 ? text[k - 1] : ' ';
    const bool isTranspose = !inside && (isWordCharacter(behind) || behind == ')' || behind == ']' || behind == '\'');
    if (!isTranspose) inside = !inside;
  }
  return inside;
}

std::string withoutEnding(const std::string& fileName) {
  const bool isProgram = fileName.size() > 2 && fileName.ends_with(".m");
  return isProgram ? fileName.substr(0, fileName.size() - 2) : "";
}

}  // namespace

std::vector<std::string> completions(AppController& app, const std::string& before, size_t* wordLength) {
  const bool inQuotes = endsInsideQuotes(before);
  size_t begin = before.size();
  while (begin > 0 && (isWordCharacter(before[begin - 1]) || (inQuotes && before[begin - 1] == '.'))) --begin;
  const std::string word = before.substr(begin);
  *wordLength = word.size();
  if (word.empty() && !inQuotes) return {};

  std::set<std::string> names;
  const auto offer = [&](const std::string& name) {
    if (!name.empty() && name.starts_with(word)) names.insert(name);
  };
  for (const std::string& file :
       app.environment.files.listDirectory(app.panelDir).value_or(std::vector<std::string>())) {
    offer(inQuotes ? file : withoutEnding(file));
  }
  if (!inQuotes) {
    for (const Name name : app.environment.baseWorkspace.names()) offer(name.text());
    for (const Builtin* row : app.environment.builtins.rows()) offer(row->name);
  }
  return {names.begin(), names.end()};
}

}  // namespace kelo::terminal
