// What a program runs in: the console's variables, the trees of its files, the settings, and the
// ways to show something and to wait for the user. The evaluator and the built-ins are given this
// and nothing of the buttons.
//
// Thread: the parser queue, or the main thread while no run is going on.
#pragma once

#include <optional>
#include <string>

#include "frontend/matlab_parser.h"
#include "interpreter/console.h"
#include "interpreter/random_state.h"
#include "interpreter/run_control.h"
#include "messages/message.h"
#include "platform/host.h"
#include "values/workspace.h"

namespace kelo::figures {
class FigurePanel;
}

namespace kelo {

class BuiltinTable;

class Environment {
 public:
  /// What the user can set.
  struct Settings {
    bool showWarning = true;
    int numDigitIndex = 0;  ///< into the list 5, 8, 12, 16
    int consoleCells = 80;  ///< the console's width in character cells
  };

  /// Reads the stored settings and the state of the random numbers. REQUIRES: what is given
  /// outlives this
  Environment(const platform::Host& host, Console& console, RunControl& control, figures::FigurePanel& figures,
              const BuiltinTable& builtins);

  // ---- Showing

  /// Shows an error or a warning; a warning only if the user wants them.
  void show(const Message& message);
  /// Shows a value or a text; a text as `disp` does.
  void show(Display display) { console_.output.append(std::move(display)); }
  void showText(const std::string& text) { show(Display::disp(text, displayParameters())); }
  void clearConsole() { console_.output.clear(); }
  /// How far a long task is, as a short line that the next one replaces; "" takes it away.
  void showProgress(const std::string& line) { console_.output.view().progress(line); }

  /// How values are to be shown at present: console width, digits.
  Display::Parameters displayParameters() const;
  int nDigits() const;
  /// The errors shown since the run began, and all messages, warnings included.
  int64_t errorsShown() const { return errorsShown_; }
  int64_t messagesShown() const { return messagesShown_; }
  void beginCount() { errorsShown_ = messagesShown_ = 0; }

  // ---- Stopping and waiting

  /// True once after the stop button: the request is taken away by asking.
  bool takeStopRequest() { return control_.takeStopRequest(); }
  /// The request itself, which stays.
  const std::atomic<bool>& stopRequest() const { return control_.stopRequest(); }
  /// `input`: shows the prompt and sleeps until a line comes. Nothing when the run is being
  /// stopped: return `failure` and let the statement loop report it.
  std::optional<std::string> readInput(const std::string& prompt);
  /// Tells the console that messages without a file point into this answer; null: into the command
  /// again.
  void evaluatesAnswer(const std::string* answer) { console_.output.view().evaluatesAnswer(answer); }
  /// `pause`: sleeps until the run button, or until `seconds` have passed. Returns at once when
  /// pausing is off.
  void pauseFor(std::optional<double> seconds) { control_.pauseFor(seconds); }
  AllowingPause allowPause() const { return control_.allowPause; }
  void setAllowPause(AllowingPause allowing) { control_.allowPause = allowing; }

  /// Runs a block on the main thread and returns when it has ended; what it throws is thrown here.
  void runOnMain(const platform::Block& block) { control_.runOnMain(block); }

  // ---- What programs work on

  /// What parsers of this run work with.
  ParserSetting parserSetting();
  /// Puts what outlives the program into the store.
  void save();

  platform::FileSystem& files;
  platform::Clock& clock;
  figures::FigurePanel& figures;
  const BuiltinTable& builtins;
  Settings settings;
  RandState randState;
  std::optional<double> ticTime;  ///< monotonic seconds of the last `tic`
  std::string runInDir;  ///< where names of files are looked up, relative to the work directory; "" is that directory
  Workspace baseWorkspace;  ///< the variables of the console
  bool isLastRun = false;   ///< nobody looks at the variables once the run has ended, or has failed
  ParserBuffer parserBuffer;

 private:
  platform::KeyValueStore& store_;
  Console& console_;
  RunControl& control_;
  int64_t errorsShown_ = 0;
  int64_t messagesShown_ = 0;
};

}  // namespace kelo
