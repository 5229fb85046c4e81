// The engine behind a front end of any kind: JSON texts in, JSON texts out.
//
// A shell carries the texts: lines of standard input and output, messages of a web socket or of a
// worker. It owns the host and serves the main queue; the session knows no transport. Several front
// ends may share one session: an answer goes to the one that asked, a notification to all.
//
// Thread: main.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "session/panels.h"

namespace kelo::session {

class Session {
 public:
  /// Takes the answer to one message.
  using Reply = std::function<void(const std::string& message)>;

  /// REQUIRES: what the setup refers to outlives this, and the parser queue has ended its runs
  /// before this goes
  explicit Session(const Setup& setup) : panels_(setup) {}

  /// Takes a message and answers it exactly once: at once, or when the run that it starts has
  /// ended. No message ends the session.
  void receive(std::string_view message, const Reply& reply);

  /// A folder of the work directory has changed from outside.
  void folderChanged(const std::string& folder) { panels_.notify("files/changed", {{"path", folder}}); }

  /// No further message will come: a run that waits for an answer, now or later, is stopped; others
  /// go on.
  void endOfInput() { panels_.endOfInput(); }

  /// Stops what runs; the shell then waits for the parser queue.
  void stop() { panels_.app.pressStop(); }

  Panels& panels() { return panels_; }

 private:
  Panels panels_;
};

}  // namespace kelo::session
