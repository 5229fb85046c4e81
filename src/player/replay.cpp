#include "player/replay.h"

#include <algorithm>

namespace kelo::player {
namespace {

// After a line that ends in a blank, or that is empty at the end of an item.
constexpr std::string_view kEndMark = "¬";

struct Mark {
  std::string_view text;
  LineKind kind;
};
constexpr Mark kMarks[] = {{"## ", LineKind::caseName}, {"# ", LineKind::comment},      {"--- ", LineKind::file},
                           {">> ", LineKind::program},  {"> ", LineKind::command},      {"| ", LineKind::continuation},
                           {"< ", LineKind::answer},    {"\\", LineKind::output}};

/// The mark of a line; one of them, but for the backslash, may stand alone, without its blank.
const Mark* markOf(const std::string& line) {
  for (const Mark& mark : kMarks) {
    if (line.starts_with(mark.text)) return &mark;
  }
  for (const Mark& mark : kMarks) {
    if (mark.kind >= LineKind::command && line == mark.text.substr(0, 1)) return &mark;
  }
  return nullptr;
}

bool isSetting(const std::string& text) { return text.starts_with("width ") || text.starts_with("digits "); }

/// The lines of one item as a transcript writes them.
Lines itemLines(const std::string& text, OutputForm form) {
  Lines lines = splitLines(text);
  for (std::string& line : lines) {
    if (markOf(line)) line.insert(0, "\\");
    if (form == OutputForm::plain) {
      line.erase(line.find_last_not_of(' ') + 1);
    } else if (line.ends_with(' ') || line.ends_with(kEndMark)) {
      line += kEndMark;
    }
  }
  if (lines.back().empty() && form == OutputForm::marked) lines.back() = kEndMark;
  while (lines.size() > 1 && lines.back().empty()) lines.pop_back();
  return lines;
}

/// Writes the lines of a transcript again; only what stands after a command is left out and put in
/// anew.
class Replay {
 public:
  Replay(const std::string& transcript, std::unique_ptr<Player>& player, OutputForm form)
      : lines_(splitLines(transcript)), player_(player), form_(form) {
    if (lines_.back().empty()) lines_.pop_back();
  }

  std::string result() {
    while (next_ < lines_.size()) replayStep();
    return std::move(result_);
  }

 private:
  bool nextIs(LineKind kind) const { return next_ < lines_.size() && readLine(lines_[next_]).kind == kind; }
  void write(const std::string& line) { result_.append(line).append("\n"); }
  Line take() {
    write(lines_[next_]);
    return readLine(lines_[next_++]);
  }

  void replayStep() {
    const Line line = take();
    if (line.kind == LineKind::caseName || !player_) player_ = std::make_unique<Player>();
    if (line.kind != LineKind::command && isSetting(line.text)) player_->set(line.text);
    if (line.kind == LineKind::file) takeFile(line.text);
    if (line.kind == LineKind::program || line.kind == LineKind::command) playAndWrite(line);
  }

  void takeFile(const std::string& path) {
    std::string content;
    while (nextIs(LineKind::output)) content.append(take().text).append("\n");
    while (content.ends_with("\n\n")) content.pop_back();
    player_->writeFile(path, content);
  }

  void playAndWrite(const Line& line) {
    std::string text = line.text;
    Lines answers;
    while (nextIs(LineKind::continuation)) text.append("\n").append(take().text);
    while (nextIs(LineKind::answer)) answers.push_back(take().text);
    int blankLines = 0;
    for (; nextIs(LineKind::output); ++next_) blankLines = lines_[next_].empty() ? blankLines + 1 : 0;
    const Lines items = player_->play(text, line.kind == LineKind::program, answers);
    for (const std::string& item : items) {
      if (&item != &items.front()) write("");
      for (const std::string& shown : itemLines(item, form_)) write(shown);
    }
    if (!items.empty() && next_ < lines_.size()) blankLines = std::max(blankLines, 1);
    for (; blankLines > 0; --blankLines) write("");
  }

  Lines lines_;
  size_t next_ = 0;
  std::unique_ptr<Player>& player_;
  OutputForm form_;
  std::string result_;
};

}  // namespace

Lines splitLines(const std::string& text) {
  Lines lines;
  for (size_t begin = 0, end = 0; end != std::string::npos; begin = end + 1) {
    end = text.find('\n', begin);
    lines.push_back(text.substr(begin, end - begin));
  }
  return lines;
}

Line readLine(const std::string& line) {
  const Mark* mark = markOf(line);
  if (mark == nullptr) return {LineKind::output, line};
  return {mark->kind, line.substr(std::min(line.size(), mark->text.size()))};
}

std::string replay(const std::string& transcript, std::unique_ptr<Player>& player, OutputForm form) {
  return Replay(transcript, player, form).result();
}

}  // namespace kelo::player
