// The state of the run, as the panels see it.
#pragma once

namespace kelo {

struct RunState {
  enum class Status { idle = 0, running = 1, paused = 2, waitInput = 3 };

  Status status = Status::idle;
};

}  // namespace kelo
