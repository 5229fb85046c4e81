#include "docs/styled_words.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>

namespace kelo::docs {
namespace {

using Kind = Node::Kind;

constexpr std::string_view kUnderlinedStyle = "\x1b[4m";

/// TeX as a reader of plain text writes it; longer words first.
constexpr std::array<std::array<std::string_view, 2>, 34> kTexWords = {{
    {"\\operatorname", ""}, {"\\infty", "∞"}, {"\\lambda", "λ"}, {"\\sigma", "σ"}, {"\\Gamma", "Γ"}, {"\\gamma", "γ"},
    {"\\mathrm", ""}, {"\\ldots", "…"}, {"\\cdots", "⋯"}, {"\\alpha", "α"}, {"\\theta", "θ"}, {"\\right", ""},
    {"\\times", "×"}, {"\\quad", "  "}, {"\\cdot", "·"}, {"\\left", ""}, {"\\frac", ""}, {"\\sqrt", "√"},
    {"\\text", ""}, {"\\prod", "∏"}, {"\\beta", "β"}, {"\\dots", "…"}, {"\\sum", "∑"}, {"\\int", "∫"}, {"\\leq", "≤"},
    {"\\geq", "≥"}, {"\\neq", "≠"}, {"\\bar", ""}, {"\\pi", "π"}, {"\\mu", "µ"}, {"\\le", "≤"}, {"\\ge", "≥"},
    {"\\ne", "≠"}, {"\\,", " "},
}};

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (size_t place = 0; (place = text.find(from, place)) != std::string::npos; place += to.size()) {
    text.replace(place, from.size(), to);
  }
}

std::string plainMath(std::string tex) {
  replaceAll(tex, "}{", "}/{");
  for (const auto& [word, text] : kTexWords) replaceAll(tex, word, text);
  replaceAll(tex, "\\", "");
  return tex;
}

void addText(std::string_view text, std::string_view style, std::vector<Word>& result, bool& blank) {
  for (size_t begin = 0; begin < text.size();) {
    const bool isBlank = text[begin] == ' ' || text[begin] == '\n';
    size_t end = begin;
    while (end < text.size() && (text[end] == ' ' || text[end] == '\n') == isBlank) ++end;
    if (!isBlank) result.push_back({std::string(text.substr(begin, end - begin)), style, blank});
    blank = isBlank;
    begin = end;
  }
}

/// `blank`: whether one stands before what comes next.
void addWords(const Node& node, std::string_view style, std::vector<Word>& result, bool& blank) {
  switch (node.kind) {
    case Kind::softBreak: blank = true; return;
    case Kind::lineBreak:
      result.push_back({"", style, false, true});
      return;
    case Kind::inlineCode: return addText(node.text, kCodeStyle, result, blank);
    case Kind::math:
    case Kind::displayMath: return addText(plainMath(node.text), style, result, blank);
    case Kind::image: return addText("[Figure: " + visibleText(node) + "]", style, result, blank);
    case Kind::text: return addText(node.text, style, result, blank);
    case Kind::strong: style = kBoldStyle; break;
    case Kind::emphasis: style = kUnderlinedStyle; break;
    default: break;
  }
  for (const Node& child : node.children) addWords(child, style, result, blank);
}

}  // namespace

std::vector<Word> wordsOf(const Node& node, std::string_view style) {
  std::vector<Word> result;
  bool blank = false;
  for (const Node& child : node.children) addWords(child, style, result, blank);
  return result;
}

int cellsOf(std::string_view text) {
  int cells = 0;
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  for (auto left = static_cast<utf8proc_ssize_t>(text.size()); left > 0;) {
    utf8proc_int32_t character = 0;
    const utf8proc_ssize_t length = std::max<utf8proc_ssize_t>(utf8proc_iterate(at, left, &character), 1);
    cells += utf8proc_charwidth(character);
    at += length;
    left -= length;
  }
  return cells;
}

}  // namespace kelo::docs
