// Joining of displays.
#include "display/display_items.h"

namespace kelo {

namespace {

constexpr std::string_view kBetweenItems = "\n\n";

}  // namespace

void DisplayItems::append(Display display) {
  setParameters(display.parameters());
  items_.push_back(std::move(display));
  join(items_.back(), items_.size() == 1);
}

void DisplayItems::setParameters(const Display::Parameters& parameters) {
  if (parameters == parameters_) return;
  parameters_ = parameters;
  displayText_.clear();
  textAttributes_.clear();
  units_ = 0;
  for (Display& item : items_) {
    item.setParameters(parameters);
    join(item, &item == items_.data());
  }
}

void DisplayItems::join(const Display& display, bool isFirst) {
  if (!isFirst) {
    displayText_ += kBetweenItems;
    units_ += static_cast<int64_t>(kBetweenItems.size());
  }
  for (ConsoleTextAttributes attributes : display.textAttributeInfo()) {
    attributes.range.location += units_;
    textAttributes_.push_back(std::move(attributes));
  }
  displayText_ += display.displayText();
  units_ += utf16Length(display.displayText());
}

}  // namespace kelo
