// The library calls back at the begin and end of each element; the open elements stand on a stack.
#include "docs/markdown.h"

#include <md4c.h>

namespace kelo::docs {
namespace {

using Kind = Node::Kind;

std::string attributeText(const MD_ATTRIBUTE& attribute) { return std::string(attribute.text, attribute.size); }

class TreeBuilder {
 public:
  Node build(std::string_view markdown) {
    MD_PARSER parser{};
    parser.flags = MD_FLAG_TABLES | MD_FLAG_LATEXMATHSPANS | MD_FLAG_NOHTML | MD_FLAG_NOINDENTEDCODEBLOCKS;
    parser.enter_block = [](MD_BLOCKTYPE type, void* detail, void* self) { return of(self).enterBlock(type, detail); };
    parser.leave_block = [](MD_BLOCKTYPE type, void*, void* self) { return of(self).leaveBlock(type); };
    parser.enter_span = [](MD_SPANTYPE type, void* detail, void* self) { return of(self).enterSpan(type, detail); };
    parser.leave_span = [](MD_SPANTYPE, void*, void* self) { return of(self).leave(); };
    parser.text = [](MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* self) {
      return of(self).addText(type, std::string_view(text, size));
    };
    md_parse(markdown.data(), static_cast<MD_SIZE>(markdown.size()), &parser, this);
    return std::move(open_.front());
  }

 private:
  static TreeBuilder& of(void* self) { return *static_cast<TreeBuilder*>(self); }

  int enter(Kind kind, std::string target = "", int level = 0) {
    Node node;
    node.kind = kind;
    node.target = std::move(target);
    node.level = level;
    open_.push_back(std::move(node));
    return 0;
  }

  int leave() {
    Node node = std::move(open_.back());
    open_.pop_back();
    if (node.text.ends_with('\n')) node.text.pop_back();
    open_.back().children.push_back(std::move(node));
    return 0;
  }

  static bool isTransparent(MD_BLOCKTYPE type) {
    return type == MD_BLOCK_DOC || type == MD_BLOCK_THEAD || type == MD_BLOCK_TBODY || type == MD_BLOCK_HTML;
  }

  int enterBlock(MD_BLOCKTYPE type, void* detail) {
    if (isTransparent(type)) return 0;
    switch (type) {
      case MD_BLOCK_QUOTE: return enter(Kind::quote);
      case MD_BLOCK_UL: return enter(Kind::list);
      case MD_BLOCK_OL: {
        return enter(Kind::orderedList, "", static_cast<int>(static_cast<MD_BLOCK_OL_DETAIL*>(detail)->start));
      }
      case MD_BLOCK_LI: return enter(Kind::item);
      case MD_BLOCK_HR: return enter(Kind::rule);
      case MD_BLOCK_H:
        return enter(Kind::heading, "", static_cast<int>(static_cast<MD_BLOCK_H_DETAIL*>(detail)->level));
      case MD_BLOCK_CODE: return enter(Kind::code, attributeText(static_cast<MD_BLOCK_CODE_DETAIL*>(detail)->info));
      case MD_BLOCK_TABLE: return enter(Kind::table);
      case MD_BLOCK_TR: return enter(Kind::row);
      case MD_BLOCK_TH: return enter(Kind::headCell);
      case MD_BLOCK_TD: return enter(Kind::cell);
      default: return enter(Kind::paragraph);
    }
  }

  int leaveBlock(MD_BLOCKTYPE type) { return isTransparent(type) ? 0 : leave(); }

  int enterSpan(MD_SPANTYPE type, void* detail) {
    switch (type) {
      case MD_SPAN_STRONG: return enter(Kind::strong);
      case MD_SPAN_A: return enter(Kind::link, attributeText(static_cast<MD_SPAN_A_DETAIL*>(detail)->href));
      case MD_SPAN_IMG: return enter(Kind::image, attributeText(static_cast<MD_SPAN_IMG_DETAIL*>(detail)->src));
      case MD_SPAN_CODE: return enter(Kind::inlineCode);
      case MD_SPAN_LATEXMATH: return enter(Kind::math);
      case MD_SPAN_LATEXMATH_DISPLAY: return enter(Kind::displayMath);
      default: return enter(Kind::emphasis);
    }
  }

  static bool holdsText(Kind kind) {
    return kind == Kind::text || kind == Kind::code || kind == Kind::inlineCode || kind == Kind::math ||
           kind == Kind::displayMath;
  }

  int addText(MD_TEXTTYPE type, std::string_view text) {
    if (type == MD_TEXT_BR || (type == MD_TEXT_SOFTBR && !holdsText(open_.back().kind))) {
      enter(type == MD_TEXT_BR ? Kind::lineBreak : Kind::softBreak);
      return leave();
    }
    if (holdsText(open_.back().kind)) {
      open_.back().text.append(type == MD_TEXT_SOFTBR ? " " : text);
      return 0;
    }
    std::vector<Node>& siblings = open_.back().children;
    if (siblings.empty() || siblings.back().kind != Kind::text) siblings.emplace_back().kind = Kind::text;
    siblings.back().text.append(decoded(type, text));
    return 0;
  }

  static std::string decoded(MD_TEXTTYPE type, std::string_view text) {
    if (type == MD_TEXT_ENTITY && text == "&lt;") return "<";
    if (type == MD_TEXT_ENTITY && text == "&gt;") return ">";
    if (type == MD_TEXT_ENTITY && text == "&amp;") return "&";
    if (type == MD_TEXT_ENTITY && text == "&nbsp;") return "\u00a0";
    return type == MD_TEXT_NULLCHAR ? "\ufffd" : std::string(text);
  }

  std::vector<Node> open_ = std::vector<Node>(1);
};

bool isBlock(Kind kind) { return kind > Kind::document && kind < Kind::text; }

void collectText(const Node& node, std::string& text) {
  if (node.kind == Kind::softBreak || node.kind == Kind::lineBreak) text += ' ';
  text += node.text;
  for (const Node& child : node.children) collectText(child, text);
  if (isBlock(node.kind) && !text.empty() && text.back() != '\n') text += '\n';
}

}  // namespace

Node parseMarkdown(std::string_view markdown) { return TreeBuilder().build(markdown); }

std::string visibleText(const Node& node) {
  std::string text;
  for (const Node& child : node.children) collectText(child, text);
  return node.children.empty() ? node.text : text;
}

}  // namespace kelo::docs
