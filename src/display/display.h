// Display: one block of console output: a value with or without a name, an error, the echo of a
// command, or plain text.
//
// A display is finished when it is made: it holds its text and the ranges of the text that are
// drawn differently. It keeps its content as well, so that it can be formatted again when the width
// of the console or the number of digits changes; the content is shared with the variable that it
// came from until that is written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "display/array_text.h"
#include "display/display_parameters.h"
#include "display/styled_text.h"
#include "messages/message.h"
#include "values/storable.h"

namespace kelo {

class Display {
 public:
  using Parameters = DisplayParameters;
  using ConsoleTextAttributes = kelo::ConsoleTextAttributes;
  using DisplayContentType = kelo::DisplayContentType;
  /// What is shown: a value, a message, or the text of an echo or of `disp`.
  using Content = std::variant<Storable, Message, std::string>;

  /// An array, a function handle or a local function, with or without a name.
  Display(Storable value, OptionalName name, const Parameters& parameters);
  /// A warning or an error.
  Display(Message message, const Parameters& parameters);

  static Display value(OptionalName name, Storable value, const Parameters& parameters) {
    return {std::move(value), std::move(name), parameters};
  }
  static Display error(Message message, const Parameters& parameters) { return {std::move(message), parameters}; }
  /// The echo of a command; the console's mark stands at it.
  static Display inputText(std::string text, const Parameters& parameters);
  /// Text as it is.
  static Display disp(std::string text, const Parameters& parameters);
  /// A value as `disp` shows it: its text without a heading.
  static Display dispValue(const Storable& value, const Parameters& parameters);

  const std::string& displayText() const { return text_.text; }
  const std::vector<ConsoleTextAttributes>& textAttributeInfo() const { return text_.attributes; }
  /// Lines of displayText; a line feed at its end begins no further line.
  int64_t numOfLines() const { return numOfLines_; }
  const OptionalName& varName() const { return varName_; }
  DisplayContentType contentType() const { return contentType_; }
  const Content& content() const { return content_; }
  const Parameters& parameters() const { return parameters_; }

  /// Formats again, unless the parameters are the same.
  void setParameters(const Parameters& parameters);

 private:
  Display(std::string text, DisplayContentType contentType, const Parameters& parameters);
  void format();

  Content content_;
  OptionalName varName_;
  StyledText text_;
  int64_t numOfLines_ = 0;
  Parameters parameters_;
  DisplayContentType contentType_;
};

/// "doubleArray", "error": the name of a content type.
std::string_view contentTypeName(DisplayContentType contentType);

}  // namespace kelo
