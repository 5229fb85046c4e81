// Each item is written at once, with one call, and ends in a line feed; the blank line before the
// next one goes to that one's stream, since only then is it known that there is a next one.
#include "shells/terminal/item_writer.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <nlohmann/json.hpp>

#include "shells/terminal/caret.h"

namespace kelo::terminal {
namespace {

constexpr const char* kRed = "\x1b[31m";
constexpr const char* kYellow = "\x1b[33m";
constexpr const char* kDim = "\x1b[2m";
constexpr const char* kPlain = "\x1b[0m";
constexpr const char* kClearLine = "\r\x1b[K";
constexpr const char* kClearScreen = "\x1b[H\x1b[2J\x1b[3J";

std::string jsonLine(const Display& display) {
  nlohmann::ordered_json line;
  line["contentType"] = contentTypeName(display.contentType());
  line["varName"] = nullptr;
  if (display.varName()) line["varName"] = *display.varName();
  line["text"] = display.displayText();
  return line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace

void ItemWriter::beginCommand(std::string text) {
  continueWith(std::move(text));
  hasWritten_ = false;
}

void ItemWriter::continueWith(std::string text) {
  commandText_ = std::move(text);
  answerText_.reset();
}

void ItemWriter::item(const Display& display) {
  if (display.contentType() == Display::DisplayContentType::inputText) return;  // it has been typed here
  whole(display, display.contentType() == Display::DisplayContentType::disp);
}

void ItemWriter::whole(const Display& display, bool isText) {
  if (style_.json) return write(STDOUT_FILENO, jsonLine(display));
  const bool isError = display.contentType() == Display::DisplayContentType::error;
  std::string text = isError ? errorText(display) : display.displayText();
  if (!text.ends_with('\n')) text += '\n';  // the text of a structure ends its line itself
  write(isError ? STDERR_FILENO : STDOUT_FILENO, separator(isText) + text);
}

/// What sets the next item off from the last one.
std::string ItemWriter::separator(bool isText) {
  const bool isClose = !hasWritten_ || (isText && endsWithText_);
  hasWritten_ = true;
  endsWithText_ = isText;
  return isClose ? "" : "\n";
}

void ItemWriter::prompt(const Display& display) {
  if (!style_.promptStaysOpen && !style_.editorPrompts) return whole(display, /*isText=*/false);
  std::string text = separator(/*isText=*/false) + display.displayText();
  if (style_.editorPrompts) {
    const size_t lastLine = text.find_last_of('\n') + 1;
    openPrompt_ = text.substr(lastLine);
    text.erase(lastLine);
  }
  write(STDOUT_FILENO, text);
}

void ItemWriter::evaluatesAnswer(const std::string* answer) {
  answerText_ = answer ? std::optional(*answer) : std::nullopt;
}

void ItemWriter::cleared() {
  if (!style_.clearsScreen) return;
  write(STDOUT_FILENO, kClearScreen);
  hasWritten_ = false;
}

void ItemWriter::progress(const std::string& line) {
  if (style_.showsProgress) write(STDERR_FILENO, kClearLine + line);
}

void ItemWriter::runEnded(const RunResult& result) {
  result_ = result;
  if (result.fatalFault) write(STDERR_FILENO, "kelo: the run was ended by a fatal fault: " + *result.fatalFault + "\n");
}

void ItemWriter::write(int descriptor, const std::string& text) {
  size_t done = 0;
  while (done < text.size()) {
    const ssize_t count = ::write(descriptor, text.data() + done, text.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      if (descriptor == STDOUT_FILENO) fault_ = std::strerror(errno);
      return;
    }
    done += static_cast<size_t>(count);
  }
}

/// The text of the message as it is; on a terminal in colour and with the offending line below.
std::string ItemWriter::errorText(const Display& display) const {
  const Message* message = std::get_if<Message>(&display.content());
  if (message == nullptr || !(style_.colour || hints_)) return display.displayText();
  const std::string source = sourceOf(*message);
  std::string text = display.displayText();
  if (style_.colour) {
    const bool isWarning = message->type == Message::MsgType::warning;
    text = (isWarning ? kYellow : kRed) + text + kPlain;
    const bool hasPlace = message->lineNum && message->charPos && !message->customMsg;
    const std::string lines = hasPlace ? caretExcerpt(source, *message->lineNum, *message->charPos) : "";
    if (!lines.empty()) text += "\n" + lines;
  }
  if (const auto hint = hints_ ? hints_(*message, source) : std::nullopt) text += "\n" + hintLine(*hint);
  return text;
}

std::string ItemWriter::hintLine(const std::string& hint) const {
  const std::string line = "Hint: " + hint + (hint.ends_with('?') ? "" : ".");
  return style_.colour ? kDim + line + kPlain : line;
}

/// The text that a message points into; empty when there is none.
std::string ItemWriter::sourceOf(const Message& message) const {
  if (!message.relativePath) return answerText_.value_or(commandText_);
  return files_.readFile(*message.relativePath).value_or("");
}

}  // namespace kelo::terminal
