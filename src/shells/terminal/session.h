// One run of the program: the engine with the machine under it, and the loop of the main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "figures/figure_documents.h"
#include "interpreter/app_controller.h"
#include "platform/native/clock.h"
#include "platform/native/disk.h"
#include "platform/native/json_store.h"
#include "platform/native/parallel_pool.h"
#include "platform/native/queues.h"
#include "platform/native/synchronization.h"
#include "shells/terminal/item_writer.h"
#include "shells/terminal/line_reader.h"
#include "shells/terminal/options.h"
#include "shells/terminal/stop_signal.h"

namespace kelo::terminal {

/// Answers `input` when a run waits for a line. Nothing: the input has ended, or the user wants to
/// stop.
using Answerer = std::function<std::optional<std::string>()>;

class Session {
 public:
  Session(const Options& options, const std::string& workDir, ItemWriter::Style style);
  ~Session();

  /// Starts a run and serves the main queue until it has ended: Ctrl-C stops it, also when it was
  /// pressed a little before; a line of standard input is the run button of a pause. `answer`, when
  /// given, takes the place of standard input for `input`.
  void run(const std::function<void(AppController&)>& start, const Answerer& answer = nullptr);

  /// Ctrl-C was pressed during the last run, or its input ended.
  bool wasStopped() const { return stopped_; }
  /// A second press within a second, while the first goes unanswered, ends the program with
  /// kInterrupted.
  void endAtSecondPress() { endsAtSecondPress_ = true; }
  /// What the last run, or the worst of all runs, means for the end of the program.
  ExitStatus lastStatus() const;
  ExitStatus worstStatus() const { return worst_; }

  platform::native::ThreadQueue parserQueue;
  platform::native::LoopQueue mainQueue;
  platform::native::ThreadSynchronization synchronization;
  platform::native::SystemClock clock;
  platform::native::ParallelPool pool;
  platform::native::JsonStore store;
  platform::native::Disk files;
  platform::native::Disk documentFiles;
  figures::FigureDocuments figureDocuments;
  ItemWriter writer;
  StopSignal stopSignal;
  LineReader input;
  AppController app;

 private:
  static bool listensTo(const std::optional<RunControl::Wait>& wait);
  bool isAnswered(const RunControl::Wait& wait) const;
  void waitForEvent();
  void servePresses();
  void serveInput(const Answerer& answer);
  bool answer(const RunControl::Wait& wait, const Answerer& answer);

  bool stopped_ = false;
  bool endsAtSecondPress_ = false;
  double lastPress_ = 0;  // monotonic seconds
  int64_t lastWait_ = 0;  // the number of the wait that was seen last
  ExitStatus worst_ = kAllRan;
};

}  // namespace kelo::terminal
