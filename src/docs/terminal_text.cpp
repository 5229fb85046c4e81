// Blocks are set apart by an empty line; the text of a block is cut into styled words and filled
// into lines.
#include "docs/terminal_text.h"

#include <algorithm>
#include <vector>

#include "docs/styled_words.h"

namespace kelo::docs {
namespace {

using Kind = Node::Kind;

class Writer {
 public:
  explicit Writer(const TextLook& look) : look_(look) {}

  std::string page(const Node& root) {
    blocks(root.children, "");
    while (result_.ends_with("\n\n")) result_.pop_back();
    return std::move(result_);
  }

 private:
  std::string styled(std::string_view style, std::string_view text) const {
    if (!look_.colour || style.empty() || text.empty()) return std::string(text);
    return std::string(style).append(text).append(kPlainStyle);
  }

  void line(const std::string& text) {
    result_.append(text);
    result_.erase(result_.find_last_not_of(' ') + 1);
    result_ += '\n';
  }

  void blocks(const std::vector<Node>& nodes, const std::string& indent) {
    for (const Node& node : nodes) {
      block(node, indent);
      if (!result_.ends_with("\n\n")) result_ += '\n';
    }
  }

  void block(const Node& node, const std::string& indent) {
    switch (node.kind) {
      case Kind::heading: return fill(wordsOf(node, kBoldStyle), indent, indent);
      case Kind::list:
      case Kind::orderedList: return list(node, indent);
      case Kind::quote: return blocks(node.children, indent + "  ");
      case Kind::code: return code(node, indent + "  ");
      case Kind::table: return table(node, indent);
      case Kind::rule: return line(indent + std::string(20, '-'));
      default: return fill(wordsOf(node, ""), indent, indent);
    }
  }

  void code(const Node& node, const std::string& indent) {
    size_t begin = 0;
    for (size_t end = 0; end != std::string::npos; begin = end + 1) {
      end = node.text.find('\n', begin);
      const std::string text = node.text.substr(begin, end - begin);
      const bool isInput = text.starts_with("> ") || text.starts_with("| ") || text.starts_with(">> ");
      const std::string shown = text.starts_with('\\') ? text.substr(1) : text;
      line(text.empty() ? "" : indent + styled(isInput ? kCodeStyle : "", shown));
    }
  }

  void list(const Node& node, const std::string& indent) {
    int number = node.level;
    for (const Node& item : node.children) {
      const std::string mark = node.kind == Kind::list ? "- " : std::to_string(number++) + ". ";
      const std::string inside = indent + std::string(mark.size(), ' ');
      const size_t begin = result_.size();
      itemBlocks(item, inside);
      result_.replace(begin, inside.size(), indent + mark);
    }
  }

  /// Text stands in a tight item without a paragraph around it.
  void itemBlocks(const Node& item, const std::string& indent) {
    Node text;
    const auto flush = [&] {
      if (!text.children.empty()) fill(wordsOf(text, ""), indent, indent);
      text.children.clear();
    };
    for (const Node& child : item.children) {
      if (child.kind >= Kind::text) {
        text.children.push_back(child);
      } else {
        flush();
        block(child, indent);
      }
    }
    flush();
  }

  /// The first column is as wide as its widest cell, the last one is filled; a narrow screen gets
  /// one cell a line.
  void table(const Node& node, const std::string& indent) {
    std::vector<int> widths;
    for (const Node& row : node.children) {
      widths.resize(std::max(widths.size(), row.children.size()));
      for (size_t k = 0; k < row.children.size(); ++k) {
        int cells = 0;
        for (const Word& word : wordsOf(row.children[k], "")) cells += cellsOf(word.text) + (word.blankBefore ? 1 : 0);
        widths[k] = std::max(widths[k], cells);
      }
    }
    int before = cellsOf(indent);
    for (size_t k = 0; k + 1 < widths.size(); ++k) before += widths[k] + 2;
    for (const Node& row : node.children) tableRow(row, indent, widths, before);
  }

  void tableRow(const Node& row, const std::string& indent, const std::vector<int>& widths, int before) {
    if (row.children.empty()) return;
    const bool isNarrow = before + 16 > look_.width;
    std::string start = indent;
    for (size_t k = 0; k + 1 < row.children.size(); ++k) {
      const std::vector<Word> cell = wordsOf(row.children[k], styleOf(row.children[k]));
      if (isNarrow) {
        fill(cell, indent, indent);
        continue;
      }
      int cells = 0;
      for (const Word& word : cell) {
        start += (word.blankBefore && cells > 0 ? " " : "") + styled(word.style, word.text);
        cells += cellsOf(word.text) + (word.blankBefore && cells > 0 ? 1 : 0);
      }
      start += std::string(static_cast<size_t>(widths[k] - cells + 2), ' ');
    }
    const std::string hang = isNarrow ? indent + "    " : std::string(static_cast<size_t>(before), ' ');
    fill(wordsOf(row.children.back(), styleOf(row.children.back())), isNarrow ? hang : start, hang);
  }

  static std::string_view styleOf(const Node& cell) { return cell.kind == Kind::headCell ? kBoldStyle : ""; }

  void fill(const std::vector<Word>& text, const std::string& first, const std::string& indent) {
    std::string current = first;
    int cells = std::max(cellsOf(indent), 0);
    bool isStart = true;
    for (size_t k = 0; k < text.size(); ++k) {
      int length = cellsOf(text[k].text);  // words that cling together go to the next line together
      for (size_t j = k + 1; j < text.size() && !text[j].blankBefore; ++j) length += cellsOf(text[j].text);
      const bool isTooLong = text[k].blankBefore && cells + 1 + length > look_.width;
      if (!isStart && (text[k].breakBefore || isTooLong)) {
        line(current);
        current = indent;
        cells = cellsOf(indent);
        isStart = true;
      }
      if (!isStart && text[k].blankBefore) {
        current += ' ';
        ++cells;
      }
      current += styled(text[k].style, text[k].text);
      cells += cellsOf(text[k].text);
      isStart = isStart && text[k].text.empty();
    }
    line(current);
  }

  TextLook look_;
  std::string result_;
};

}  // namespace

std::string terminalText(const Node& page, const TextLook& look) { return Writer(look).page(page); }

std::optional<std::string> nameText(const DocFilesLoader& files, std::string_view name, const TextLook& look) {
  const std::optional<std::string> path = files.pathOfName(name);
  if (!path) return std::nullopt;
  const std::string stem = path->substr(0, path->rfind('.'));
  const std::optional<std::string> markdown = files.resources().readFile("page_texts/" + stem + ".md");
  if (!markdown) return std::nullopt;
  return terminalText(parseMarkdown(*markdown), look);
}

}  // namespace kelo::docs
