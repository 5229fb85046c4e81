// Makes the whole document of a help page: styles, scripts and footer around the page as it was
// built.
#pragma once

#include <string>
#include <string_view>

#include "docs/doc_files.h"

namespace kelo::docs {

/// The style that is in effect; "auto" is settled by the front end.
enum class DocStyle { light, dark };

struct PageLook {
  DocStyle style = DocStyle::light;
  int textSize = 100;  ///< in percent
};

/// The document of a page of the tree, with all addresses relative to the page's folder in
/// html_files.
///
/// Empty for what is no page of the tree, has another extension than html and htm, or cannot be
/// read as UTF-8.
std::string loadPage(const DocFilesLoader& files, std::string_view relativePath, const PageLook& look);

}  // namespace kelo::docs
