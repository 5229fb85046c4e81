#include "docs/builder/contents.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

#include "docs/markdown.h"
#include "platform/native/whole_file.h"

namespace kelo::docs {
namespace {

namespace fs = std::filesystem;

std::string titleOf(const std::string& markdown) {
  const Node page = parseMarkdown(markdown);
  for (const Node& node : page.children) {
    if (node.kind == Node::Kind::heading) return visibleText(node);
  }
  return "";
}

Entry readPage(const std::string& sources, const std::string& path) {
  const std::string text = platform::native::readWholeFile(sources + "/" + path + ".md").value_or("");
  return {path, titleOf(text), false, text};
}

std::vector<std::string> pagesIn(const std::string& sources, const std::string& folder) {
  std::vector<std::string> paths;
  std::error_code fault;
  for (const auto& file : fs::directory_iterator(sources + "/" + folder, fault)) {
    if (file.path().extension() == ".md") paths.push_back(folder + "/" + file.path().stem().string());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::vector<Entry> listedEntries(const std::string& sources) {
  std::vector<Entry> entries;
  std::istringstream lines(platform::native::readWholeFile(sources + "/contents.txt").value_or(""));
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    const size_t end = line.find("/ ");
    if (end == std::string::npos) {
      entries.push_back(readPage(sources, line));
    } else {
      entries.push_back({line.substr(0, end), line.substr(line.find_first_not_of(' ', end + 1)), true, ""});
    }
  }
  return entries;
}

}  // namespace

bool Entry::isPageOf(const std::string& builtin) const {
  const std::vector<std::string> names = namesIn(title);
  return isFunction() && std::find(names.begin(), names.end(), builtin) != names.end();
}

std::vector<Entry> readContents(const std::string& sources) {
  const std::vector<Entry> listed = listedEntries(sources);
  std::set<std::string> seen;
  for (const Entry& entry : listed) seen.insert(entry.path);
  std::vector<Entry> entries;
  std::string folder;
  const auto addRest = [&] {
    for (const std::string& path : folder.empty() ? std::vector<std::string>() : pagesIn(sources, folder)) {
      if (!seen.contains(path)) entries.push_back(readPage(sources, path));
    }
  };
  for (const Entry& entry : listed) {
    if (entry.isDir) {
      addRest();
      folder = entry.path;
    }
    entries.push_back(entry);
  }
  addRest();
  return entries;
}

std::vector<DocFilesLoader::FileInfo> fileInfos(const std::vector<Entry>& entries) {
  std::vector<DocFilesLoader::FileInfo> infos;
  for (const Entry& entry : entries) {
    infos.push_back(
        {entry.isDir ? entry.path : entry.path + ".html", entry.title, entry.isDir, entry.isDir ? "" : "html"});
  }
  return infos;
}

}  // namespace kelo::docs
