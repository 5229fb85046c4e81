// The console's data: what is typed, what was shown, what was typed before.
//
// Nothing here draws. A shell implements ConsoleView, which receives each item as it arises, and
// reads Input and History when a key asks for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "display/display.h"
#include "interpreter/run_state.h"
#include "platform/key_value_store.h"

namespace kelo {

/// How a run ended.
struct RunResult {
  bool failed = false;                    ///< an error was shown
  std::optional<std::string> fatalFault;  ///< what the fault was that ended it at once
};

/// What a shell does with the console's output.
class ConsoleView {
 public:
  virtual ~ConsoleView() = default;
  /// An item was appended. Thread: the parser queue; for the echo of a command the main thread,
  /// with no run going on.
  virtual void item(const Display& display) = 0;
  /// The prompt of `input` was appended. Thread: the parser queue.
  virtual void prompt(const Display& display) { item(display); }
  /// From now on messages without a file point into this answer to `input`; null: into the command
  /// again. Thread: the parser queue.
  virtual void evaluatesAnswer(const std::string* answer) {}
  /// `clc`. Thread: the parser queue.
  virtual void cleared() {}
  /// How far a long task of a built-in is, as a short line that the next one replaces; "" takes it
  /// away. Thread: the parser queue.
  virtual void progress(const std::string& line) {}
  /// Thread: main.
  virtual void runStateChanged(RunState::Status status) {}
  /// A run has ended, and the state is idle again. Thread: main.
  virtual void runEnded(const RunResult& result) {}
};

struct Console {
  struct Input {
    std::optional<std::string> text;
  };

  /// The newest items, as far as they come to no more than maxNumOfLines lines (and always the last
  /// one).
  class Output {
   public:
    static constexpr int64_t maxNumOfLines = 1000;

    explicit Output(ConsoleView& view) : view_(view) {}
    void append(Display display);
    void appendPrompt(Display display);
    void clear();
    /// Formats the items again. REQUIRES: no run is going on
    void setParameters(const Display::Parameters& parameters);
    const std::vector<Display>& items() const { return items_; }
    ConsoleView& view() const { return view_; }

   private:
    void keep(Display display);

    ConsoleView& view_;
    std::vector<Display> items_;
    int64_t numOfLines_ = 0;
  };

  /// The texts run before, at most about countLimit, and a place among them for the previous and
  /// next buttons. Consoles that share a store keep each other's texts.
  ///
  /// Invariant: 0 <= index <= items.size(); index == items.size() means after the last, where a
  /// new text is typed.
  class History {
   public:
    static constexpr const char* key = "consoleHistory";
    static constexpr int64_t countLimit = 20;
    static constexpr size_t kLongestText = 64 << 10;  ///< bytes; a longer one is not kept

    explicit History(platform::KeyValueStore& store) : store_(store) {}
    void load();
    /// Whether texts are kept: not where nobody types them. Default: yes
    void setKeeping(bool keeps) { keeps_ = keeps; }
    /// Adds a text unless it equals the last one and puts the place after the end. The store saves
    /// it with the rest.
    void add(const std::string& text);
    /// The text that the button puts into the input; nothing when there is no further one.
    std::optional<std::string> previous();
    std::optional<std::string> next();

    const std::vector<std::string>& items() const { return items_; }
    int64_t index() const { return index_; }
    bool prevButtonDisabled() const { return index_ == 0; }
    bool nextButtonDisabled() const { return index_ != 0 && index_ == count(); }

   private:
    int64_t count() const { return static_cast<int64_t>(items_.size()); }
    static void append(std::vector<std::string>& items, const std::string& text);

    platform::KeyValueStore& store_;
    std::vector<std::string> items_;
    int64_t index_ = 0;
    bool keeps_ = true;
  };

  Console(ConsoleView& view, platform::KeyValueStore& store) : output(view), history(store) {}

  Input input;
  Output output;
  History history;
  RunState runState;  ///< Thread: main
};

}  // namespace kelo
