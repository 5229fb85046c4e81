// A page's Markdown as a tree, from which HTML, the terminal's text and the text that a search
// looks in are made.
//
// The dialect is that of GitHub: CommonMark with tables, and mathematics as TeX between dollar
// signs. Raw HTML is plain text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelo::docs {

struct Node {
  enum class Kind {
    document, heading, paragraph, list, orderedList, item, quote, code, table, row, headCell, cell, rule,
    text, emphasis, strong, inlineCode, math, displayMath, link, image, softBreak, lineBreak
  };

  Kind kind = Kind::document;
  std::string text;    ///< of text, code and mathematics; without its last line feed
  std::string target;  ///< of a link or image; of a block of code the words after its fence
  int level = 0;       ///< of a heading, from 1; of an ordered list its first number
  std::vector<Node> children;
};

/// The tree of a text; any text has one.
Node parseMarkdown(std::string_view markdown);

/// The visible text of the nodes inside: words without marks.
std::string visibleText(const Node& node);

}  // namespace kelo::docs
