// The pages come from the project's own builder, which writes each of the tags <html>, </head>,
// <body> and </body> once and alike, so that the document is put together at these marks.
#include "docs/page_loader.h"

#include <utf8proc.h>

#include <algorithm>

namespace kelo::docs {
namespace {

constexpr std::string_view kTableOfContents = "<div>[TOC]</div>";

bool isPageName(std::string_view path) { return path.ends_with(".html") || path.ends_with(".htm"); }

bool isUtf8(const std::string& text) {
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  for (auto left = static_cast<utf8proc_ssize_t>(text.size()); left > 0;) {
    utf8proc_int32_t character = 0;
    const utf8proc_ssize_t length = utf8proc_iterate(at, left, &character);
    if (length <= 0) return false;
    at += length;
    left -= length;
  }
  return true;
}

/// Where "_styles" is, seen from a page's folder.
std::string stylesPath(std::string_view relativePath) {
  std::string path;
  for (auto k = std::count(relativePath.begin(), relativePath.end(), '/'); k > 0; --k) path += "../";
  return path + "_styles";
}

std::string headText(const std::string& styles, DocStyle style) {
  const std::string codeStyle = style == DocStyle::dark ? "github-dark.min.css" : "github.min.css";
  return "<link rel=\"stylesheet\" href=\"" + styles + "/_css/github.css\" media=\"all\">\n"
         "<link rel=\"stylesheet\" href=\"" + styles + "/highlight/styles/" + codeStyle + "\">\n"
         "<script src=\"" + styles + "/highlight/highlight.min.js\"></script>\n"
         "<script>hljs.highlightAll();</script>\n"
         "<meta name=\"viewport\" content=\"initial-scale=1, viewport-fit=cover\">\n"
         "<script nomodule src=\"" + styles + "/es6/minified.js\"></script>\n"
         "<script id=\"MathJax-script\" async src=\"" + styles + "/mathjax/tex-mml-chtml.js\"></script>\n";
}

/// The footer, the script that marks and counts, and the size of the text.
std::string tailText(const std::string& styles, int textSize) {
  return "<footer><p>Last updated: version " KELO_VERSION "</p></footer>\n"
         "<script src=\"" + styles + "/_js/search.js\"></script>\n"
         "<script>document.getElementsByTagName('body')[0].style.webkitTextSizeAdjust='" +
         std::to_string(textSize) + "%'</script>\n";
}

void putBefore(std::string& html, std::string_view mark, const std::string& text) {
  const size_t place = html.rfind(mark);
  html.insert(place == std::string::npos ? html.size() : place, text);
}

void replaceOnce(std::string& html, std::string_view mark, std::string_view text) {
  const size_t place = html.find(mark);
  if (place != std::string::npos) html.replace(place, mark.size(), text);
}

void removeTablesOfContents(std::string& html) {
  for (size_t place = 0; (place = html.find(kTableOfContents, place)) != std::string::npos;) {
    html.erase(place, kTableOfContents.size());
  }
}

}  // namespace

std::string loadPage(const DocFilesLoader& files, std::string_view relativePath, const PageLook& look) {
  if (!isPageName(relativePath) || files.findPage(relativePath) == nullptr) return "";
  std::optional<std::string> html = files.resources().readFile("html_files/" + std::string(relativePath));
  if (!html || !isUtf8(*html)) return "";
  const std::string styles = stylesPath(relativePath);
  removeTablesOfContents(*html);
  replaceOnce(*html, "<html",
              look.style == DocStyle::dark ? "<html data-theme=\"dark\"" : "<html data-theme=\"light\"");
  replaceOnce(*html, "<body>", "<body class=\"markdown-body\"><br>");
  putBefore(*html, "</head>", headText(styles, look.style));
  putBefore(*html, "</body>", tailText(styles, look.textSize));
  return *html;
}

}  // namespace kelo::docs
