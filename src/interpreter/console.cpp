// Output keeps a tail of what was shown; History follows the rules of its buttons.
#include "interpreter/console.h"

namespace kelo {

void Console::Output::append(Display display) {
  view_.item(display);
  keep(std::move(display));
}

void Console::Output::appendPrompt(Display display) {
  view_.prompt(display);
  keep(std::move(display));
}

void Console::Output::keep(Display display) {
  numOfLines_ += display.numOfLines();
  items_.push_back(std::move(display));
  // Half of the lines go at once, so that a loop that shows a value in each round does not move the
  // list each time.
  if (numOfLines_ <= 2 * maxNumOfLines) return;
  size_t first = 0;
  while (numOfLines_ > maxNumOfLines && first + 1 < items_.size()) numOfLines_ -= items_[first++].numOfLines();
  items_.erase(items_.begin(), items_.begin() + static_cast<std::ptrdiff_t>(first));
}

void Console::Output::setParameters(const Display::Parameters& parameters) {
  numOfLines_ = 0;
  for (Display& display : items_) {
    display.setParameters(parameters);
    numOfLines_ += display.numOfLines();
  }
}

void Console::Output::clear() {
  items_.clear();
  numOfLines_ = 0;
  view_.cleared();
}

void Console::History::load() {
  items_ = store_.read<std::vector<std::string>>(key).value_or(std::vector<std::string>());
  index_ = count();
}

void Console::History::append(std::vector<std::string>& items, const std::string& text) {
  // NOTE: intended: the oldest item goes before the comparison, so at the limit a repeated command
  // still costs it.
  if (static_cast<int64_t>(items.size()) >= countLimit) items.erase(items.begin());
  if (items.empty() || items.back() != text) items.push_back(text);
}

void Console::History::add(const std::string& text) {
  if (!keeps_ || text.size() > kLongestText) return;
  append(items_, text);
  index_ = count();
  store_.change(key, [text](const platform::StoredValue* stored) -> platform::StoredValue {
    const auto* known = stored ? std::get_if<std::vector<std::string>>(stored) : nullptr;
    std::vector<std::string> items = known ? *known : std::vector<std::string>();
    append(items, text);
    return items;
  });
}

std::optional<std::string> Console::History::previous() {
  if (index_ < 1) return std::nullopt;
  return items_[static_cast<size_t>(--index_)];
}

std::optional<std::string> Console::History::next() {
  if (index_ == count()) return std::nullopt;
  if (++index_ == count()) return "";
  return items_[static_cast<size_t>(index_)];
}

}  // namespace kelo
