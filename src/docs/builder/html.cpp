#include "docs/builder/html.h"

#include <cctype>

#include "player/replay.h"

namespace kelo::docs {
namespace {

using Kind = Node::Kind;

std::string element(const std::string& tag, const std::string& content, const std::string& attributes = "") {
  return "<" + tag + attributes + ">" + content + "</" + tag + ">";
}

/// An example: what is typed and what comes back stand in blocks of their own, so that commands can
/// be copied.
class ExampleHtml {
 public:
  std::string of(const std::string& transcript) {
    for (const std::string& text : player::splitLines(transcript)) {
      const player::Line line = player::readLine(text);
      switch (line.kind) {
        case player::LineKind::file: add("file", "--- " + line.text); break;
        case player::LineKind::program: add("input", "% run " + line.text); break;
        case player::LineKind::command:
        case player::LineKind::continuation: add("input", line.text); break;
        case player::LineKind::answer: add("answer", line.text); break;
        case player::LineKind::output: add(kind_ == "file" ? "file" : "output", line.text); break;
        default: break;
      }
    }
    flush();
    return element("div", "\n" + html_, " class=\"example\"") + "\n";
  }

 private:
  void add(const std::string& kind, const std::string& line) {
    if (kind != kind_ || line.starts_with("--- ")) flush();
    kind_ = kind;
    text_.append(line).append("\n");
  }

  void flush() {
    while (text_.ends_with('\n')) text_.pop_back();
    if (!text_.empty()) html_ += element("pre", inner(), " class=\"" + kind_ + "\"") + "\n";
    text_.clear();
  }

  std::string inner() const {
    if (kind_ == "input") return element("code", escapedHtml(text_), " class=\"language-matlab\"");
    if (kind_ != "file") return element("samp", escapedHtml(text_));
    const size_t end = text_.find('\n');
    const std::string name = text_.substr(4, end - 4);
    const std::string content = end == std::string::npos ? "" : text_.substr(end + 1);
    const std::string language = name.ends_with(".m") ? "matlab" : "plaintext";
    return element("span", escapedHtml(name), " class=\"name\"") +
           element("code", escapedHtml(content), " class=\"language-" + language + "\"");
  }

  std::string kind_, text_, html_;
};

class HtmlWriter {
 public:
  explicit HtmlWriter(const HtmlLinks& links) : links_(links) {}

  std::string inside(const Node& node) const {
    std::string html;
    for (const Node& child : node.children) html += of(child);
    return html;
  }

 private:
  std::string of(const Node& node) const {
    switch (node.kind) {
      case Kind::heading: return heading(node);
      case Kind::paragraph: return element("p", inside(node)) + "\n";
      case Kind::list: return element("ul", "\n" + inside(node)) + "\n";
      case Kind::orderedList: return element("ol", "\n" + inside(node)) + "\n";
      case Kind::item: return element("li", inside(node)) + "\n";
      case Kind::quote: return element("blockquote", "\n" + inside(node)) + "\n";
      case Kind::code: return code(node);
      case Kind::table: return element("table", "\n" + inside(node)) + "\n";
      case Kind::row: return element("tr", inside(node)) + "\n";
      case Kind::headCell: return element("th", inside(node), " scope=\"col\"");
      case Kind::cell: return element("td", inside(node));
      case Kind::rule: return "<hr>\n";
      default: return span(node);
    }
  }

  std::string span(const Node& node) const {
    switch (node.kind) {
      case Kind::emphasis: return element("em", inside(node));
      case Kind::strong: return element("strong", inside(node));
      case Kind::inlineCode: return word(node.text);
      case Kind::math: return "\\(" + escapedHtml(node.text) + "\\)";
      case Kind::displayMath: return "\\[" + escapedHtml(node.text) + "\\]";
      case Kind::link: return element("a", inside(node), " href=\"" + escapedHtml(links_.address(node.target)) + "\"");
      case Kind::image:
        return "<img src=\"" + escapedHtml(node.target) + "\" alt=\"" + escapedHtml(visibleText(node)) + "\">";
      case Kind::softBreak: return "\n";
      case Kind::lineBreak: return "<br>\n";
      default: return escapedHtml(node.text);
    }
  }

  std::string heading(const Node& node) const {
    const std::string anchor = " id=\"" + anchorOf(visibleText(node)) + "\"";
    return element("h" + std::to_string(node.level), inside(node), anchor) + "\n";
  }

  std::string code(const Node& node) const {
    if (node.target == "kelo" || node.target.starts_with("kelo ")) return ExampleHtml().of(node.text);
    const std::string language = node.target.empty() ? "matlab" : node.target == "text" ? "plaintext" : node.target;
    return element("pre", element("code", escapedHtml(node.text), " class=\"language-" + language + "\"")) + "\n";
  }

  std::string word(const std::string& text) const {
    const std::string code = element("code", escapedHtml(text));
    const std::string page = links_.pageOfWord(text);
    return page.empty() ? code : element("a", code, " href=\"" + escapedHtml(page) + "\"");
  }

  const HtmlLinks& links_;
};

}  // namespace

std::string escapedHtml(std::string_view text) {
  std::string html;
  for (const char c : text) {
    switch (c) {
      case '<': html += "&lt;"; break;
      case '>': html += "&gt;"; break;
      case '&': html += "&amp;"; break;
      case '"': html += "&quot;"; break;
      default: html += c;
    }
  }
  return html;
}

std::string htmlOf(const Node& page, const HtmlLinks& links) { return HtmlWriter(links).inside(page); }

std::string htmlDocument(const std::string& title, const std::string& content) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + escapedHtml(title) +
         "</title>\n</head>\n<body>\n<main>\n" + content + "</main>\n</body>\n</html>\n";
}

std::string anchorOf(const std::string& heading) {
  std::string anchor;
  for (const char c : heading) {
    const bool isWord = std::isalnum(static_cast<unsigned char>(c)) != 0 || static_cast<unsigned char>(c) >= 0x80;
    if (isWord) anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (!isWord && !anchor.empty() && anchor.back() != '-') anchor += '-';
  }
  while (anchor.ends_with('-')) anchor.pop_back();
  return anchor;
}

}  // namespace kelo::docs
