// Writes the console's items to the standard streams: values and texts to one, errors and warnings
// to the other, a blank line between two items, whatever their streams. Two texts of `disp` in a
// row stand without one, so that a program prints its tables as it means them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "interpreter/console.h"
#include "platform/file_system.h"

namespace kelo::terminal {

class ItemWriter : public ConsoleView {
 public:
  struct Style {
    bool json = false;
    bool colour = false;           ///< of what goes to standard error
    bool clearsScreen = false;     ///< `clc` clears: standard output is a terminal
    bool showsProgress = false;    ///< standard error is a terminal
    bool promptStaysOpen = false;  ///< the answer is typed after the prompt
    bool editorPrompts = false;    ///< the line editor shows the last line of the prompt
  };

  ItemWriter(Style style, platform::FileSystem& files) : style_(style), files_(files) {}

  /// A command begins: what follows is set off from nothing. `text` is where errors of console text
  /// point to. Thread: main, with no run going on.
  void beginCommand(std::string text);
  /// The same, but items before it are set off by a blank line.
  void continueWith(std::string text);
  bool hasWritten() const { return hasWritten_; }
  std::string takeOpenPrompt() { return std::exchange(openPrompt_, ""); }

  void item(const Display& display) override;
  void prompt(const Display& display) override;
  void evaluatesAnswer(const std::string* answer) override;
  void cleared() override;
  void progress(const std::string& line) override;
  void runEnded(const RunResult& result) override;

  /// A run begins; it has ended when there is a result. Thread: main
  void beginRun() { result_.reset(); }
  bool runHasEnded() const { return result_.has_value(); }
  const RunResult& lastResult() const { return *result_; }
  /// Why standard output took less than all; empty when it took all.
  const std::string& fault() const { return fault_; }

  /// What can be done about an error, given the text that it points into; a line of the shell's own
  /// after it. Thread: the parser queue.
  using Hints = std::function<std::optional<std::string>(const Message& message, const std::string& text)>;
  void setHints(Hints hints) { hints_ = std::move(hints); }
  std::string hintLine(const std::string& hint) const;

 private:
  void whole(const Display& display, bool isText);
  std::string separator(bool isText);
  void write(int descriptor, const std::string& text);
  std::string errorText(const Display& display) const;
  std::string sourceOf(const Message& message) const;

  Style style_;
  Hints hints_;
  platform::FileSystem& files_;
  std::string commandText_;
  std::optional<std::string> answerText_;  // of `input`, while it is evaluated
  std::string openPrompt_;
  std::string fault_;
  bool hasWritten_ = false;
  bool endsWithText_ = false;  // the last item was a text of `disp`
  std::optional<RunResult> result_;
};

}  // namespace kelo::terminal
