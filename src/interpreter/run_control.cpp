// A run that goes to sleep stores its wait first and looks at the request to stop afterwards; the
// stop button sets the request first and takes the wait afterwards: a press between the two is not
// lost. A wake happens on the main thread, which sets the state itself, so from that moment on
// nobody there takes the run for one that waits.
#include "interpreter/run_control.h"

#include <exception>
#include <mutex>
#include <utility>

namespace kelo {

RunControl::RunControl(const platform::Host& host, Console& console)
    : mainQueue_(host.mainQueue),
      synchronization_(host.synchronization),
      console_(console),
      lock_(host.synchronization.makeLock()) {}

// ---- The run's side

bool RunControl::waitForInput() {
  sleep({RunState::Status::waitInput, /*isTimed=*/false}, std::nullopt);
  return !shouldExitExecution_;
}

void RunControl::pauseFor(std::optional<double> seconds) {
  if (allowPause == AllowingPause::on) sleep({RunState::Status::paused, seconds.has_value()}, seconds);
}

void RunControl::sleep(Wait wait, std::optional<double> seconds) {
  const SemaphoreRef semaphore = synchronization_.makeSemaphore();
  wait.number = ++waits_;
  {
    const std::lock_guard<platform::Lock> guard(*lock_);
    sleep_ = {semaphore, wait};
  }
  mainQueue_.async([this, status = wait.status] { setStatus(status); });
  if (seconds) mainQueue_.after(*seconds, [this, semaphore] { timerFired(semaphore); });
  if (shouldExitExecution_) {
    takeSemaphore();
    return;
  }
  semaphore->wait();
}

RunControl::SemaphoreRef RunControl::takeSemaphore() {
  const std::lock_guard<platform::Lock> guard(*lock_);
  return std::exchange(sleep_.semaphore, nullptr);
}

/// The wait has a semaphore of its own and no limit: nothing but the end of the block ends it.
void RunControl::runOnMain(const platform::Block& block) {
  const SemaphoreRef done = synchronization_.makeSemaphore();
  std::exception_ptr thrown;
  mainQueue_.async([&block, &thrown, done] {
    try {
      block();
    } catch (...) {
      thrown = std::current_exception();
    }
    done->signal();
  });
  done->wait();
  if (thrown) std::rethrow_exception(thrown);
}

// ---- The main thread's side

std::optional<RunControl::Wait> RunControl::wait() const {
  const std::lock_guard<platform::Lock> guard(*lock_);
  // A wait counts from the moment that the state shows it.
  if (!sleep_.semaphore || status() != sleep_.wait.status) return std::nullopt;
  return sleep_.wait;
}

void RunControl::begin() {
  shouldExitExecution_ = false;
  setStatus(RunState::Status::running);
}

void RunControl::wake() {
  const SemaphoreRef semaphore = takeSemaphore();
  if (!semaphore) return;
  setStatus(RunState::Status::running);
  semaphore->signal();
}

void RunControl::stop() {
  shouldExitExecution_ = true;
  if (const SemaphoreRef semaphore = takeSemaphore()) semaphore->signal();
}

void RunControl::end(const RunResult& result) {
  setStatus(RunState::Status::idle);
  console_.output.view().runEnded(result);
}

/// A timer that outlived its pause, because the user woke the run first, wakes no other.
void RunControl::timerFired(const SemaphoreRef& own) {
  if (allowPause == AllowingPause::off) return;
  {
    const std::lock_guard<platform::Lock> guard(*lock_);
    if (sleep_.semaphore != own) return;
  }
  wake();
}

void RunControl::setStatus(RunState::Status status) {
  console_.runState.status = status;
  console_.output.view().runStateChanged(status);
}

}  // namespace kelo
