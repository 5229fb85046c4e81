// A page as plain text, for the terminal: the same words as in the browser.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "docs/doc_files.h"
#include "docs/markdown.h"

namespace kelo::docs {

struct TextLook {
  int width = 80;       ///< cells that a line may take
  bool colour = false;  ///< with the terminal's escapes for bold and colours
};

/// The text of a page's tree, ending in a line feed.
std::string terminalText(const Node& page, const TextLook& look);

/// The text of a built-in's page; nothing when there is none.
std::optional<std::string> nameText(const DocFilesLoader& files, std::string_view name, const TextLook& look);

}  // namespace kelo::docs
