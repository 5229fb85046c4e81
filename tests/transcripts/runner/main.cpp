// kelo_transcripts FILE.txt...: plays transcripts, whose form tests/README.md describes, and compares what comes back.
// A transcript that differs is left as it came out beside the stored one, as FILE.txt.received. With KELO_ACCEPT=1 it
// takes the stored one's place.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string_view>

#include "platform/native/queues.h"
#include "platform/native/whole_file.h"
#include "player.h"

namespace kelo::transcripts {
namespace {

// Behind a line that ends in a blank, or that is empty at the end of an item.
constexpr std::string_view kEndMark = "¬";
constexpr std::string_view kMarks[] = {"## ", "# ", "--- ", ">> ", "> ", "| ", "< ", "\\"};

Lines splitLines(const std::string& text) {
  Lines lines;
  for (size_t begin = 0, end = 0; end != std::string::npos; begin = end + 1) {
    end = text.find('\n', begin);
    lines.push_back(text.substr(begin, end - begin));
  }
  return lines;
}

/// A mark may stand alone, without its blank.
bool is(const std::string& line, std::string_view mark) {
  return line.starts_with(mark) || line == mark.substr(0, mark.size() - 1);
}

std::string behind(const std::string& line, std::string_view mark) {
  return line.size() < mark.size() ? "" : line.substr(mark.size());
}

bool hasMark(const std::string& line) {
  for (const std::string_view mark : kMarks) {
    if (line.starts_with(mark)) return true;
  }
  return line == ">" || line == "|" || line == "<";
}

/// The lines of one item as a transcript writes them.
Lines itemLines(const std::string& text) {
  Lines lines = splitLines(text);
  for (std::string& line : lines) {
    if (hasMark(line)) line.insert(0, "\\");
    if (line.ends_with(' ') || line.ends_with(kEndMark)) line += kEndMark;
  }
  if (lines.back().empty()) lines.back() = kEndMark;
  return lines;
}

/// Writes the lines of a transcript again; only what stands behind a command is left out and put in anew.
class Replay {
 public:
  explicit Replay(const std::string& transcript) : lines_(splitLines(transcript)) {
    if (lines_.back().empty()) lines_.pop_back();
  }

  std::string result() {
    while (next_ < lines_.size()) replayStep();
    return std::move(result_);
  }

 private:
  bool nextIs(std::string_view mark) const { return next_ < lines_.size() && is(lines_[next_], mark); }
  bool nextIsPlain() const {
    return next_ < lines_.size() && (!hasMark(lines_[next_]) || lines_[next_].starts_with("\\"));
  }
  void write(const std::string& line) { result_.append(line).append("\n"); }
  const std::string& take() {
    write(lines_[next_]);
    return lines_[next_++];
  }

  void replayStep() {
    const std::string& line = take();
    if (line.starts_with("## ") || !player_) player_.emplace();
    if (line.starts_with("width ") || line.starts_with("digits ")) player_->set(line);
    if (line.starts_with("--- ")) takeFile(behind(line, "--- "));
    if (is(line, ">> ")) playAndWrite(behind(line, ">> "), true);
    if (is(line, "> ")) playAndWrite(behind(line, "> "), false);
  }

  void takeFile(const std::string& path) {
    std::string content;
    while (nextIsPlain()) {
      const std::string& line = take();
      content.append(line, line.starts_with("\\") ? 1 : 0).append("\n");
    }
    while (content.ends_with("\n\n")) content.pop_back();
    player_->writeFile(path, content);
  }

  void playAndWrite(std::string text, bool isProgram) {
    Lines answers;
    while (nextIs("| ")) text.append("\n").append(behind(take(), "| "));
    while (nextIs("< ")) answers.push_back(behind(take(), "< "));
    int blankLines = 0;
    for (; nextIsPlain(); ++next_) blankLines = lines_[next_].empty() ? blankLines + 1 : 0;
    const Lines items = player_->play(text, isProgram, answers);
    for (const std::string& item : items) {
      if (&item != &items.front()) write("");
      for (const std::string& line : itemLines(item)) write(line);
    }
    if (!items.empty() && next_ < lines_.size()) blankLines = std::max(blankLines, 1);
    for (; blankLines > 0; --blankLines) write("");
  }

  Lines lines_;
  size_t next_ = 0;
  std::optional<Player> player_;
  std::string result_;
};

bool check(const std::string& path) {
  using namespace platform::native;
  const std::optional<std::string> text = readWholeFile(path);
  const std::string result = text ? Replay(*text).result() : "";
  const std::string received = path + ".received";
  std::error_code ignored;
  std::filesystem::remove(received, ignored);
  if (text == result) return true;
  const bool accepts = text && std::getenv("KELO_ACCEPT") != nullptr;
  if (const auto fault = replaceWholeFile(accepts ? path : received, result)) std::cout << *fault << "\n";
  return accepts || std::system(("diff -u '" + path + "' '" + received + "'").c_str()) == 0;
}

}  // namespace
}  // namespace kelo::transcripts

int main(int argc, char** argv) {
  int failed = 0;
  kelo::platform::native::ThreadQueue queue;  // for its stack and the limit of it
  queue.runAndWait([&] {
    for (int k = 1; k < argc; ++k) failed += kelo::transcripts::check(argv[k]) ? 0 : 1;
  });
  return failed == 0 ? 0 : 1;
}
