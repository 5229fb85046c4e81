// A page's tree as HTML.
#pragma once

#include <functional>
#include <string>

#include "docs/markdown.h"

namespace kelo::docs {

struct HtmlLinks {
  /// The address of a target as the page's Markdown writes it: of "../guide/text.md" the page that
  /// was built from it.
  std::function<std::string(const std::string& target)> address;
  /// The address of the page of a word in code; empty when it names no other page.
  std::function<std::string(const std::string& word)> pageOfWord;
};

std::string escapedHtml(std::string_view text);
/// The nodes of a page, as the content of its body.
std::string htmlOf(const Node& page, const HtmlLinks& links);
/// A whole document around such content, with the marks that the page loader looks for.
std::string htmlDocument(const std::string& title, const std::string& content);
/// The anchor of a heading: "Empty arrays" is "empty-arrays".
std::string anchorOf(const std::string& heading);

}  // namespace kelo::docs
