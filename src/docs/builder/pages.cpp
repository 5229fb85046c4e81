#include "docs/builder/pages.h"

#include <filesystem>

#include "builtins/library.h"
#include "docs/builder/examples.h"
#include "docs/builder/html.h"
#include "docs/builder/rules.h"
#include "docs/doc_search.h"
#include "platform/native/whole_file.h"

namespace kelo::docs {
namespace {

constexpr std::string_view kAllNames = "[NAMES]";

std::string helpOf(const std::string& name) {
  const Builtin* row = builtins::library().find(Name::intern(name));
  return row == nullptr ? "" : row->help;
}

/// Each name of a title in code: "`inf`, `Inf`".
std::string namesInCode(const std::string& title) {
  std::string text;
  for (const std::string& name : namesIn(title)) text += (text.empty() ? "`" : ", `") + name + "`";
  return text;
}

/// The address of a page, seen from another.
std::string relativeAddress(const Entry& from, const std::string& path) {
  return std::filesystem::path(path + ".html").lexically_relative(from.folder()).generic_string();
}

class PageBuilder {
 public:
  PageBuilder(const std::vector<Entry>& entries, std::string resources)
      : entries_(entries), resources_(std::move(resources)) {}

  std::vector<std::string> build() {
    for (const Entry& entry : entries_) {
      if (entry.isDir) empty(entry.path);
      else page(entry);
    }
    write("docs.plist", propertyList(fileInfos(entries_)));
    write("search.json", searchIndex(index_));
    return std::move(faults_);
  }

 private:
  void write(const std::string& path, const std::string& text) {
    const std::string whole = resources_ + "/" + path;
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(whole).parent_path(), ignored);
    if (const auto fault = platform::native::replaceWholeFile(whole, text)) faults_.push_back(path + ": " + *fault);
  }

  /// Pages that are there no more go from their folder.
  void empty(const std::string& folder) {
    std::error_code ignored;
    for (const char* kind : {"/html_files/", "/page_texts/"})
      std::filesystem::remove_all(resources_ + kind + folder, ignored);
  }

  void page(const Entry& entry) {
    const PlayedPage played = playExamples(completed(entry), entry.name());
    const Node tree = parseMarkdown(played.built);
    const HtmlLinks links = {[&](const std::string& target) { return address(entry, target); },
                             [&](const std::string& word) { return pageOfWord(entry, word); }};
    write("html_files/" + entry.path + ".html", htmlDocument(entry.title, htmlOf(tree, links)));
    write("page_texts/" + entry.path + ".md", played.built);
    for (size_t k = 0; k < played.figures.size(); ++k) {
      write("html_files/" + entry.path + "-" + std::to_string(k + 1) + ".svg", played.figures[k]);
    }
    index_.push_back({entry.path + ".html", entry.title, visibleText(tree)});
  }

  /// The page's Markdown with what the table of built-ins knows: the line of help, the table of all
  /// names.
  std::string completed(const Entry& entry) const {
    std::string text = entry.markdown;
    if (entry.isFunction()) text.insert(text.find('\n') + 1, "\n**" + helpOf(entry.name()) + ".**\n");
    const size_t place = text.find(kAllNames);
    if (place != std::string::npos) text.replace(place, kAllNames.size(), allNames());
    return text;
  }

  std::string allNames() const {
    std::string text;
    for (const Entry& entry : entries_) {
      const bool isFamily = entry.isDir && entry.path.starts_with("functions/");
      if (isFamily) text += "\n## " + entry.title + "\n\n| Function | What it gives |\n|---|---|\n";
      if (entry.isFunction()) text += "| " + namesInCode(entry.title) + " | " + helpOf(entry.name()) + " |\n";
    }
    return text;
  }

  static std::string address(const Entry& page, const std::string& target) {
    const std::string path = linkedPath(page, target);
    const size_t anchor = target.find('#');
    if (path.empty()) return target;
    return relativeAddress(page, path) + (anchor == std::string::npos ? "" : target.substr(anchor));
  }

  std::string pageOfWord(const Entry& page, const std::string& word) const {
    for (const Entry& entry : entries_) {
      if (entry.path != page.path && entry.isPageOf(word)) return relativeAddress(page, entry.path);
    }
    return "";
  }

  const std::vector<Entry>& entries_;
  std::string resources_;
  std::vector<DocSearch::Page> index_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> buildPages(const std::vector<Entry>& entries, const std::string& resources) {
  return PageBuilder(entries, resources).build();
}

}  // namespace kelo::docs
