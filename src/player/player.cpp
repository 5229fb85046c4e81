// A press of Run while the queue runs inline comes back when the run has ended; what a run waits
// for is answered by whileAsleep.
#include "player/player.h"

#include "builtins/library.h"

namespace kelo::player {

Player::Player()
    : app_({parserQueue_, mainQueue_, synchronization_, files_, store_, clock_}, *this, builtins::library()) {
  synchronization_.whileAsleep = [this] { whileAsleep(); };
}

void Player::set(const std::string& setting) {
  const int number = std::stoi(setting.substr(setting.find(' ')));
  if (setting.starts_with("width ")) app_.environment.settings.consoleCells = number;
  if (setting.starts_with("digits "))
    app_.environment.settings.numDigitIndex = number == 5 ? 0 : number == 8 ? 1 : number == 12 ? 2 : 3;
}

Lines Player::play(const std::string& text, bool isFile, const Lines& answers) {
  output_.clear();
  answers_ = answers;
  if (isFile) {
    const size_t slash = text.find_last_of('/') + 1;
    app_.pressRunFile(slash == 0 ? "" : text.substr(0, slash - 1), text.substr(slash));
  } else {
    app_.console.input.text = text;
    app_.pressRun();
  }
  mainQueue_.drain();
  return std::move(output_);
}

void Player::item(const Display& display) {
  if (display.contentType() != Display::DisplayContentType::inputText) output_.push_back(display.displayText());
}

void Player::runEnded(const RunResult& result) {
  if (result.fatalFault) output_.push_back("(fatal fault: " + *result.fatalFault + ")");
}

/// The answers in order, "^C" being the stop button; without one a timer goes off, and an input
/// that has no answer is closed.
void Player::whileAsleep() {
  mainQueue_.drain();
  const std::optional<RunControl::Wait> wait = app_.control.wait();
  if (!wait) return;  // what the run waited for has been done on the main queue
  if (wait->isTimed && answers_.empty()) return mainQueue_.fireNextTimer();
  const std::string answer = answers_.empty() ? "^C" : answers_.front();
  if (!answers_.empty()) answers_.erase(answers_.begin());
  if (answer == "^C") return app_.pressStop();
  if (wait->status == RunState::Status::waitInput) app_.console.input.text = answer;
  app_.pressRun();
  mainQueue_.drain();
}

}  // namespace kelo::player
