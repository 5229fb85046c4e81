// Each page is what the page loader makes, with two scripts more: one holds the tree and the text
// of all pages, the other makes a list and a search field of it. Pages opened from disk may load
// scripts but fetch nothing.
#include "docs/builder/site.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "docs/doc_files.h"
#include "docs/page_loader.h"
#include "platform/native/disk.h"
#include "platform/native/whole_file.h"

namespace kelo::docs {
namespace {

namespace fs = std::filesystem;

std::string pagesScript(const DocFilesLoader& files) {
  auto tree = nlohmann::json::array();
  for (const auto& file : files.files()) {
    tree.push_back({{"path", file.relativePath}, {"name", file.displayName}, {"isDir", file.isDir}});
  }
  const std::string index = files.resources().readFile("search.json").value_or("[]");
  return "const keloTree = " + tree.dump() + ";\nconst keloTexts = " + index + ";\n";
}

std::string withScripts(std::string html, const std::string& path) {
  std::string root;
  for (auto k = std::count(path.begin(), path.end(), '/'); k > 0; --k) root += "../";
  const std::string scripts = "<script>const keloRoot = '" + root + "', keloPage = '" + path + "';</script>\n"
                              "<script src=\"" + root + "_styles/_js/pages.js\"></script>\n"
                              "<script src=\"" + root + "_styles/_js/site.js\"></script>\n";
  html.insert(html.rfind("</body>"), scripts);
  return html;
}

}  // namespace

std::vector<std::string> buildSite(const std::string& resources, const std::string& site) {
  std::vector<std::string> faults;
  const auto write = [&](const std::string& path, const std::string& text) {
    if (const auto fault = platform::native::replaceWholeFile(site + "/" + path, text)) faults.push_back(*fault);
  };
  std::error_code fault;
  fs::create_directories(site, fault);
  fs::copy(resources + "/html_files", site, fs::copy_options::recursive | fs::copy_options::overwrite_existing, fault);
  if (fault) return {fault.message()};
  const platform::native::Disk disk(resources);
  const DocFilesLoader files(disk);
  std::string first;
  for (const auto& file : files.files()) {
    if (file.isDir) continue;
    if (first.empty()) first = file.relativePath;
    write(file.relativePath, withScripts(loadPage(files, file.relativePath, {}), file.relativePath));
  }
  write("_styles/_js/pages.js", pagesScript(files));
  write("index.html",
        "<!DOCTYPE html>\n<meta charset=\"utf-8\">\n<title>Kelo</title>\n"
        "<meta http-equiv=\"refresh\" content=\"0; url=" + first + "\">\n"
        "<a href=\"" + first + "\">Kelo</a>\n");
  return faults;
}

}  // namespace kelo::docs
