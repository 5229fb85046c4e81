#include "interpreter/environment.h"

#include <utility>

namespace kelo {
namespace {

constexpr int kDigits[] = {5, 8, 12, 16};

}  // namespace

Environment::Environment(const platform::Host& host, Console& console, RunControl& control,
                         figures::FigurePanel& figures, const BuiltinTable& builtins)
    : files(host.files),
      clock(host.clock),
      figures(figures),
      builtins(builtins),
      store_(host.store),
      console_(console),
      control_(control) {
  settings.showWarning = store_.read<bool>("showWarning").value_or(true);
  const int64_t index = store_.read<int64_t>("numDigitsIndex").value_or(0);
  settings.numDigitIndex = index >= 0 && index < 4 ? static_cast<int>(index) : 0;
  randState.load(store_);
}

void Environment::show(const Message& message) {
  const bool isWarning = message.type == Message::MsgType::warning;
  if (isWarning && !settings.showWarning) return;
  ++messagesShown_;
  if (!isWarning) ++errorsShown_;
  show(Display(message, displayParameters()));
}

int Environment::nDigits() const { return kDigits[settings.numDigitIndex]; }

Display::Parameters Environment::displayParameters() const {
  Display::Parameters parameters;
  parameters.consoleViewWidth = settings.consoleCells * CellMeasure::kPointsPerCell;
  parameters.nDigits = nDigits();
  return parameters;
}

std::optional<std::string> Environment::readInput(const std::string& prompt) {
  console_.output.appendPrompt(Display::disp(prompt, displayParameters()));
  if (!control_.waitForInput()) return std::nullopt;
  return std::exchange(console_.input.text, std::nullopt).value_or("");
}

ParserSetting Environment::parserSetting() {
  return {parserBuffer, files, [this](const Message& message) { show(message); }};
}

void Environment::save() {
  randState.write(store_);
  store_.save();
}

}  // namespace kelo
