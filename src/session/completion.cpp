#include "session/completion.h"

#include <algorithm>

#include "messages/utf16.h"

namespace kelo::session {
namespace {

using Kind = Completion::Kind;

bool isWordUnit(char16_t c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

/// A quote after a name, a number or a closing bracket is a transpose. A quote of an earlier line
/// opens nothing.
bool endsInsideQuotes(std::u16string_view text) {
  bool inside = false;
  for (size_t k = text.find_last_of(u'\n') + 1; k < text.size(); ++k) {
    if (text[k] != '\'') continue;
    const char16_t behind = k > 0 ? text[k - 1] : u' ';
    const bool isTranspose = !inside && (isWordUnit(behind) || behind == ')' || behind == ']' || behind == '\'');
    if (!isTranspose) inside = !inside;
  }
  return inside;
}

size_t wordBegin(std::u16string_view text, bool withPoints) {
  size_t begin = text.size();
  while (begin > 0 && (isWordUnit(text[begin - 1]) || (withPoints && text[begin - 1] == '.'))) --begin;
  return begin;
}

std::string stemOf(const std::string& file) {
  return file.size() > 2 && file.ends_with(".m") ? file.substr(0, file.size() - 2) : "";
}

std::string detailOf(const Variable& variable) {
  std::string text = variable.className + " (";
  for (const int64_t length : variable.size) text += (text.ends_with('(') ? "" : " x ") + std::to_string(length);
  return text + ")";
}

class Collector {
 public:
  Collector(const Surroundings& surroundings, std::string word) : in_(surroundings), word_(std::move(word)) {}

  std::vector<Completion> names() {
    for (const Variable& variable : in_.variables) offer(variable.name, Kind::variable, detailOf(variable));
    for (const Builtin* row : in_.builtins.rows()) offer(row->name, Kind::function, row->help);
    for (const std::string& file : filesHere()) offer(stemOf(file), Kind::function, file);
    return sorted();
  }

  std::vector<Completion> fileNames() {
    for (const std::string& file : filesHere()) {
      if (!file.starts_with('.')) offer(file, Kind::file, "");
    }
    return sorted();
  }

  std::vector<Completion> fieldsOf(const std::string& structure) {
    for (const Variable& variable : in_.variables) {
      if (variable.name != structure) continue;
      for (const std::string& field : variable.fields) offer(field, Kind::field, "");
    }
    return sorted();
  }

 private:
  std::vector<std::string> filesHere() const {
    return in_.files.listDirectory(in_.directory).value_or(std::vector<std::string>());
  }

  /// Of the same name, what would be found first is offered: a variable hides a function.
  void offer(const std::string& label, Kind kind, const std::string& detail) {
    if (label.empty() || !label.starts_with(word_)) return;
    const auto same = [&](const Completion& item) { return item.label == label; };
    if (std::none_of(items_.begin(), items_.end(), same)) items_.push_back({label, kind, detail});
  }

  std::vector<Completion> sorted() {
    std::sort(items_.begin(), items_.end(), [](auto& a, auto& b) { return a.label < b.label; });
    return std::move(items_);
  }

  const Surroundings& in_;
  std::string word_;
  std::vector<Completion> items_;
};

}  // namespace

Completions completionsAt(std::string_view text, int64_t position, const Surroundings& surroundings) {
  const std::u16string before = toUtf16(text).substr(0, static_cast<size_t>(position));
  const bool inQuotes = endsInsideQuotes(before);
  const size_t begin = wordBegin(before, inQuotes);
  Collector collector(surroundings, toUtf8(before.substr(begin)));
  Completions result;
  result.from = static_cast<int64_t>(begin);
  if (inQuotes) {
    result.items = collector.fileNames();
  } else if (begin > 0 && before[begin - 1] == '.') {
    const size_t name = wordBegin(std::u16string_view(before).substr(0, begin - 1), false);
    result.items = collector.fieldsOf(toUtf8(before.substr(name, begin - 1 - name)));
  } else if (begin < before.size()) {
    result.items = collector.names();
  }
  return result;
}

}  // namespace kelo::session
