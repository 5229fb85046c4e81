// DisplayItems: what a console shows as one text, the displays joined with two line feeds.
#pragma once

#include <vector>

#include "display/array_layout.h"
#include "display/display.h"

namespace kelo {

class DisplayItems {
 public:
  static constexpr int64_t maxNumOfLines = kMaxNumOfLines;

  explicit DisplayItems(const Display::Parameters& parameters) : parameters_(parameters) {}

  /// Appends a display. Parameters other than the present ones become the present ones, and every
  /// item is formatted again.
  void append(Display display);
  /// The same for all items without appending one.
  void setParameters(const Display::Parameters& parameters);

  const std::vector<Display>& items() const { return items_; }
  const Display::Parameters& parameters() const { return parameters_; }
  const std::string& displayText() const { return displayText_; }
  /// The items' attributes, moved to where the items begin in displayText.
  const std::vector<ConsoleTextAttributes>& textAttributes() const { return textAttributes_; }

 private:
  void join(const Display& display, bool isFirst);

  std::vector<Display> items_;
  Display::Parameters parameters_;
  std::string displayText_;
  int64_t units_ = 0;  // UTF-16 units of displayText_
  std::vector<ConsoleTextAttributes> textAttributes_;
};

}  // namespace kelo
