// Line editing at the terminal: one line at a time, with recall and completion supplied by the
// console.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "shells/terminal/line_reader.h"

struct editline;

namespace kelo::terminal {

class LineEditor {
 public:
  struct Hooks {
    std::function<std::optional<std::string>()> previous;  ///< the text that the up arrow puts into the line
    std::function<std::optional<std::string>()> next;
    /// Names that may stand in place of the last word of the text before the cursor; `wordLength`
    /// receives that word's length in bytes.
    std::function<std::vector<std::string>(const std::string& before, size_t* wordLength)> complete;
    std::function<bool()> interrupted;  ///< takes a press of Ctrl-C
    LineReader* input;                  ///< standard input
    std::function<void()> serve;        ///< the main queue, between two keys
    std::vector<int> descriptors;       ///< that wake the editor to serve
  };
  enum class Outcome { line, interrupted, ended };

  explicit LineEditor(Hooks hooks);
  ~LineEditor();
  LineEditor(const LineEditor&) = delete;
  LineEditor& operator=(const LineEditor&) = delete;

  /// Reads one line without its line end into *line.
  Outcome readLine(const std::string& prompt, std::string* line);

 private:
  friend struct LineEditorKeys;

  int nextCharacter(wchar_t* character);
  bool waitForKey();
  void replaceLine(const std::optional<std::string>& text);
  void showChoices(const std::vector<std::string>& names);

  Hooks hooks_;
  editline* editor_;
  std::string prompt_;
  bool interrupted_ = false;
};

}  // namespace kelo::terminal
