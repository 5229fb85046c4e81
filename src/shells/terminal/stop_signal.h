// Ctrl-C as the stop button.
#pragma once

namespace kelo::terminal {

/// Turns SIGINT into a readable descriptor. One at a time.
class StopSignal {
 public:
  StopSignal();   ///< installs the handler
  ~StopSignal();  ///< puts the default back
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  int descriptor() const;
  /// How often it was pressed since the last call.
  int take();
};

}  // namespace kelo::terminal
