#include "editor/indentation.h"

#include <algorithm>

#include "messages/utf16.h"

namespace kelo {
namespace {

using PrefixType = Keywords::PrefixType;

constexpr int64_t kStep = 4;

/// The indentation of a line whose text begins with `start`, in the group that `enclosing` opens.
int64_t indentationIn(const Keywords::Occurrence& enclosing, std::u16string_view start) {
  const int64_t column = enclosing.column;
  const bool closes = Keywords::startsWith(start, PrefixType::groupCloser);
  if (enclosing.type == PrefixType::groupOpener) {
    return closes || Keywords::startsWith(start, PrefixType::groupDivider) ? column : column + kStep;
  }
  if (closes) return column < kStep ? column : column - kStep;
  return Keywords::startsWith(start, PrefixType::selfClosingGroupOpener) ? column : column + kStep;
}

}  // namespace

int64_t indentationOf(std::u16string_view line) {
  return static_cast<int64_t>(std::min(line.find_first_not_of(u" \t"), line.size()));
}

std::optional<std::string> indentedLine(int64_t position, std::string_view text) {
  std::vector<TextLine> lines = linesOf(toUtf16(text));
  if (position < 0 || position > utf16Length(text)) return std::nullopt;
  const size_t line = locate(lines, position).line;
  Indenter(lines).mend(line);
  return toUtf8(lines[line].text);
}

void Indenter::mend(size_t line) {
  const std::optional<Keywords::Occurrence> enclosing = enclosingGroup(line);
  if (!enclosing) return;
  std::u16string& text = lines_[line].text;
  text.erase(0, static_cast<size_t>(indentationOf(text)));
  text.insert(0, static_cast<size_t>(indentationIn(*enclosing, text)), u' ');
  keywords_[line].reset();
}

/// The keyword of the group that a line stands in: from the line upwards, the first opener that is
/// not closed. A `case` counts only where no group stands closed.
std::optional<Keywords::Occurrence> Indenter::enclosingGroup(size_t line) {
  int64_t opened = 0, closed = 0;
  while (line-- > 0) {
    const std::vector<Keywords::Occurrence>& keywords = keywordsOf(line);
    for (auto keyword = keywords.rbegin(); keyword != keywords.rend(); ++keyword) {
      switch (keyword->type) {
        case PrefixType::groupOpener: ++opened, --closed; break;
        case PrefixType::groupCloser: --opened, ++closed; break;
        case PrefixType::groupDivider: continue;
        case PrefixType::selfClosingGroupOpener:
          if (closed != 0) continue;
          ++opened;
      }
      const bool opens = keyword->type != PrefixType::groupCloser;
      if (opens && opened == 1) return *keyword;
      if (keyword->type == PrefixType::selfClosingGroupOpener) closed = 0;
    }
  }
  return std::nullopt;
}

const std::vector<Keywords::Occurrence>& Indenter::keywordsOf(size_t line) {
  if (!keywords_[line]) keywords_[line] = Keywords::inLine(lines_[line].text);
  return *keywords_[line];
}

}  // namespace kelo
