// The width of text in the console's font, as an interface: a shell that draws knows its font, a
// terminal counts cells.
#pragma once

#include <string_view>

namespace kelo::platform {

class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  /// Width of one line of text, in points.
  virtual double width(std::string_view utf8) const = 0;
};

}  // namespace kelo::platform
