#include "transcript.h"

#include <string_view>

namespace kelo::transcripts {
namespace {

constexpr std::string_view kEndMark = "¬";  // behind a line that ends in a blank, or that is empty at the end of an item
constexpr std::string_view kMarks[] = {"## ", "# ", "--- ", ">> ", "> ", "| ", "< ", "\\"};

std::vector<std::string> splitLines(const std::string& text) {
  std::vector<std::string> lines;
  size_t begin = 0;
  while (true) {
    const size_t end = text.find('\n', begin);
    lines.push_back(text.substr(begin, end - begin));
    if (end == std::string::npos) return lines;
    begin = end + 1;
  }
}

bool hasMark(const std::string& line) {
  for (const std::string_view mark : kMarks) {
    if (line.starts_with(mark)) return true;
  }
  return line == ">" || line == "|" || line == "<";
}

/// The rest of a line behind its mark, which may stand alone.
std::string behind(const std::string& line, std::string_view mark) {
  return line.size() < mark.size() ? "" : line.substr(mark.size());
}

bool is(const std::string& line, std::string_view mark) {
  return line.starts_with(mark) || line == mark.substr(0, mark.size() - 1);
}

/// Goes through the lines; each take... function begins at the line of its mark and leaves the next one.
class Reader {
 public:
  explicit Reader(const std::string& text) : lines_(splitLines(text)) {
    if (!lines_.empty() && lines_.back().empty()) lines_.pop_back();
  }

  std::vector<Step> read() {
    while (!atEnd()) {
      Step step;
      step.lineNum = static_cast<int>(next_) + 1;
      takeStep(step);
      steps_.push_back(std::move(step));
    }
    return std::move(steps_);
  }

 private:
  bool atEnd() const { return next_ == lines_.size(); }
  const std::string& line() const { return lines_[next_]; }
  const std::string& take(Step& step) {
    step.typed.push_back(line());
    return lines_[next_++];
  }

  void takeStep(Step& step) {
    if (is(line(), "> ") || is(line(), ">> ")) return takeCommand(step);
    if (line().starts_with("--- ")) return takeFile(step);
    const std::string& text = take(step);
    if (text.starts_with("## ")) {
      step.kind = Step::Kind::begin;
      step.argument = behind(text, "## ");
    } else if (text.starts_with("width ") || text.starts_with("digits ")) {
      step.kind = Step::Kind::setting;
      step.argument = text;
    }
  }

  void takeFile(Step& step) {
    step.kind = Step::Kind::file;
    step.argument = behind(take(step), "--- ");
    while (!atEnd() && (!hasMark(line()) || line().starts_with("\\"))) {
      const std::string& text = take(step);
      step.body += text.starts_with("\\") ? text.substr(1) : text;
      step.body += '\n';
    }
    while (step.body.ends_with("\n\n")) step.body.pop_back();
  }

  void takeCommand(Step& step) {
    const bool isProgram = line().starts_with(">> ");
    step.kind = isProgram ? Step::Kind::program : Step::Kind::command;
    step.argument = behind(take(step), isProgram ? ">> " : "> ");
    while (!atEnd() && is(line(), "| ")) step.argument += "\n" + behind(take(step), "| ");
    while (!atEnd() && is(line(), "< ")) step.answers.push_back(behind(take(step), "< "));
    while (!atEnd() && (!hasMark(line()) || line().starts_with("\\"))) step.output.push_back(lines_[next_++]);
    while (!step.output.empty() && step.output.back().empty()) {
      step.output.pop_back();
      ++step.blankLines;
    }
  }

  std::vector<std::string> lines_;
  std::vector<Step> steps_;
  size_t next_ = 0;
};

void append(std::string& text, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) text += line + "\n";
}

}  // namespace

std::vector<Step> parseTranscript(const std::string& text) { return Reader(text).read(); }

std::string renderTranscript(const std::vector<Step>& steps) {
  std::string text;
  for (const Step& step : steps) {
    append(text, step.typed);
    append(text, step.output);
    text += std::string(static_cast<size_t>(step.blankLines), '\n');
  }
  return text;
}

std::vector<std::string> itemLines(const std::string& text) {
  std::vector<std::string> lines = splitLines(text);
  for (std::string& line : lines) {
    if (hasMark(line)) line.insert(0, "\\");
    if (line.ends_with(' ') || line.ends_with(kEndMark)) line += kEndMark;
  }
  if (lines.back().empty()) lines.back() = kEndMark;
  return lines;
}

}  // namespace kelo::transcripts
