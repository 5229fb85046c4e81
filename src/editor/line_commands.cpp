#include "editor/line_commands.h"

#include <algorithm>
#include <functional>

#include "editor/indentation.h"
#include "editor/lines.h"
#include "messages/utf16.h"

namespace kelo {
namespace {

constexpr std::u16string_view kMark = u"% ";

/// What a command does to the beginning of a line: so many units of it gave way to so many others.
struct LineEdit {
  int64_t removed = 0, inserted = 0;
};

int64_t moved(int64_t column, LineEdit edit) {
  return column >= edit.removed ? column - edit.removed + edit.inserted : std::min(column, edit.inserted);
}

using Command = std::function<LineEdit(size_t line)>;

/// Runs a command on the lines of a selection and moves the selection with the text.
std::optional<EditedText> edited(std::vector<TextLine>& lines, int64_t start, int64_t end, const Command& command) {
  const int64_t length = positionOf(lines, {lines.size(), 0});
  if (start < 0 || start > end || end > length) return std::nullopt;
  LinePosition first = locate(lines, start), last = locate(lines, end);
  const bool isCaret = start == end;
  const size_t lastLine = last.line > first.line && last.column == 0 ? last.line - 1 : last.line;
  for (size_t line = first.line; line <= lastLine; ++line) {
    const LineEdit edit = command(line);
    // A selection of whole lines still begins where its first line begins.
    if (line == first.line && (isCaret || first.column > 0)) first.column = moved(first.column, edit);
    if (line == last.line) last.column = moved(last.column, edit);
  }
  return EditedText{toUtf8(joined(lines)), positionOf(lines, first), positionOf(lines, last)};
}

}  // namespace

std::optional<EditedText> comment(std::string_view text, int64_t start, int64_t end) {
  std::vector<TextLine> lines = linesOf(toUtf16(text));
  return edited(lines, start, end, [&](size_t line) {
    lines[line].text.insert(0, kMark);
    return LineEdit{0, static_cast<int64_t>(kMark.size())};
  });
}

std::optional<EditedText> uncomment(std::string_view text, int64_t start, int64_t end) {
  std::vector<TextLine> lines = linesOf(toUtf16(text));
  return edited(lines, start, end, [&](size_t line) {
    if (!lines[line].text.starts_with(kMark)) return LineEdit{};
    lines[line].text.erase(0, kMark.size());
    return LineEdit{static_cast<int64_t>(kMark.size()), 0};
  });
}

std::optional<EditedText> indent(std::string_view text, int64_t start, int64_t end) {
  std::vector<TextLine> lines = linesOf(toUtf16(text));
  Indenter indenter(lines);
  return edited(lines, start, end, [&](size_t line) {
    const int64_t before = indentationOf(lines[line].text);
    indenter.mend(line);
    return LineEdit{before, indentationOf(lines[line].text)};
  });
}

}  // namespace kelo
