// The help pages.
#include "docs/page_loader.h"
#include "session/methods.h"
#include "session/panels.h"

namespace kelo::session {
namespace {

std::optional<Json> tree(const Call& call) {
  Json files = Json::array();
  for (const auto& file : call.panels.docFiles.files()) {
    files.push_back({{"relativePath", file.relativePath},
                     {"displayName", file.displayName},
                     {"isDir", file.isDir},
                     {"ext", file.ext}});
  }
  return Json{{"files", std::move(files)}};
}

/// "auto" is light here: the front end knows which style is in effect and says so.
std::optional<Json> page(const Call& call) {
  const docs::DocStyle style = call.text("style") == "dark" ? docs::DocStyle::dark : docs::DocStyle::light;
  const docs::PageLook look{style, static_cast<int>(call.integer("textSize"))};
  return Json{{"html", docs::loadPage(call.panels.docFiles, call.text("relativePath"), look)}};
}

std::optional<Json> search(const Call& call) {
  using Scope = docs::DocSearch::Scope;
  const Scope scope = call.text("scope") == "title" ? Scope::title : Scope::content;
  Json items = Json::array();
  for (const auto& found : call.panels.docSearch.find(scope, call.text("text"))) {
    Json item = {{"relativePath", found.relativePath}, {"displayName", found.displayName}};
    if (!found.excerpt.empty()) item["excerpt"] = found.excerpt;
    items.push_back(std::move(item));
  }
  return Json{{"items", std::move(items)}};
}

/// A picture that stands among the pages, and nothing else of the resources.
std::optional<Json> picture(const Call& call) {
  const std::string path = call.text("relativePath");
  if (!path.ends_with(".svg") || path.starts_with('/') || path.find("..") != std::string::npos) return Json(nullptr);
  const std::optional<std::string> svg = call.panels.docFiles.resources().readFile("html_files/" + path);
  return svg ? Json{{"svg", *svg}} : Json(nullptr);
}

std::optional<Json> name(const Call& call) {
  const std::optional<std::string> path = call.panels.docFiles.pathOfName(call.text("name"));
  return path ? Json{{"relativePath", *path}} : Json(nullptr);
}

}  // namespace

std::vector<Method> docsMethods() {
  return {
      {"docs/tree", {}, tree, "{files: [{relativePath, displayName, isDir, ext}]}", "The help pages, in their order"},
      {"docs/page",
       {{"relativePath", Kind::text},
        {"style", Kind::text, true, "auto|dark|light"},
        {"textSize", Kind::integer, true, "", kLeastTextSize, kMostTextSize}},
       page, "{html}", "A page as a whole document; empty if there is none"},
      {"docs/picture", {{"relativePath", Kind::text}}, picture, "{svg} or null", "A picture of a page"},
      {"docs/search", {{"scope", Kind::text, true, "title|content"}, {"text", Kind::text}}, search,
       "{items: [{relativePath, displayName, excerpt}]}", "The pages that contain a text"},
      {"docs/name", {{"name", Kind::text}}, name, "{relativePath} or null", "The page of a built-in function"},
  };
}

}  // namespace kelo::session
