// The files panel.
#include <memory>

#include "figures/coding/base64.h"
#include "files/file_search.h"
#include "session/methods.h"
#include "session/panels.h"

namespace kelo::session {
namespace {

Json itemJson(const FileItem& item) {
  Json json = {{"id", item.id}, {"relativePath", item.relativePath}, {"url", item.url}};
  if (item.size) json["size"] = *item.size;
  json["isFolder"] = item.isFolder;
  if (item.lastModifiedDate) json["lastModifiedDate"] = *item.lastModifiedDate;
  json["dowloaded"] = item.dowloaded;
  return json;
}

std::optional<Json> list(const Call& call) {
  Panels& panels = call.panels;
  const std::string path = call.text("path");
  Json items = Json::array();
  for (const FileItem& item : panels.files.list(path)) items.push_back(itemJson(item));
  panels.watch(path);
  return Json{{"path", path}, {"sortedBy", static_cast<int>(panels.files.sortedBy())}, {"items", std::move(items)}};
}

Json pathJson(const std::string& path) { return {{"path", path}}; }

std::optional<Json> newFile(const Call& call) {
  return pathJson(call.panels.files.newFile(call.text("folder"), call.text("name")));
}

std::optional<Json> newFolder(const Call& call) {
  return pathJson(call.panels.files.newFolder(call.text("folder"), call.text("name")));
}

std::optional<Json> rename(const Call& call) {
  return pathJson(call.panels.files.rename(call.text("path"), call.text("name")));
}

std::optional<Json> duplicate(const Call& call) { return pathJson(call.panels.files.duplicate(call.text("path"))); }

std::optional<Json> copy(const Call& call) {
  return Json{{"paths", call.panels.files.copy(call.texts("paths"), call.text("folder"))}};
}

std::optional<Json> move(const Call& call) {
  return Json{{"paths", call.panels.files.move(call.texts("paths"), call.text("folder"))}};
}

std::optional<Json> remove(const Call& call) {
  call.panels.files.remove(call.texts("paths"));
  return Json::object();
}

std::optional<Json> import(const Call& call) {
  if (call.has("text") == call.has("base64")) throw wrongParameter("text", "given, or else \"base64\"");
  const std::optional<std::string> bytes =
      call.has("text") ? call.text("text") : figures::bytesOfBase64(call.text("base64"));
  if (!bytes) throw wrongParameter("base64", "a text in base64");
  return pathJson(call.panels.files.importFile(call.text("folder"), call.text("name"), *bytes));
}

std::optional<Json> read(const Call& call) {
  const FilePanel::OpenedText opened = call.panels.files.read(call.text("path"));
  return Json{{"text", opened.text}, {"revision", opened.revision}};
}

std::optional<Json> write(const Call& call) {
  std::optional<std::string> revision;
  if (call.has("revision")) revision = call.text("revision");
  return Json{{"revision", call.panels.files.write(call.text("path"), call.text("text"), revision)}};
}

Json hitsJson(const std::vector<FileHit>& hits) {
  Json items = Json::array();
  for (const FileHit& hit : hits) {
    items.push_back({{"path", hit.path}, {"line", hit.line}, {"start", hit.start}, {"length", hit.length},
                     {"preview", hit.preview}});
  }
  return {{"items", std::move(items)}};
}

/// A search on the main thread, a few files at a time; a later search ends it with what it has
/// found so far.
struct SearchTask : std::enable_shared_from_this<SearchTask> {
  SearchTask(Panels& owner, std::string_view text, Answer answerer)
      : panels(owner), search(owner.setup.tree, text), answer(std::move(answerer)), number(++owner.lastSearch) {}

  void goOn() {
    constexpr double kSeconds = 0.005;
    const double end = panels.host.clock.monotonicSeconds() + kSeconds;
    bool hasMore = number == panels.lastSearch;
    while (hasMore && panels.host.clock.monotonicSeconds() < end) hasMore = search.step();
    if (!hasMore) return answer(hitsJson(search.hits));
    panels.host.mainQueue.async([self = shared_from_this()] { self->goOn(); });
  }

  Panels& panels;
  FileSearch search;
  Answer answer;
  int64_t number;
};

std::optional<Json> search(const Call& call) {
  std::make_shared<SearchTask>(call.panels, call.text("text"), call.answer)->goOn();
  return std::nullopt;
}

}  // namespace

std::vector<Method> filesMethods() {
  const Parameter path = {"path", Kind::text}, folder = {"folder", Kind::text}, name = {"name", Kind::text};
  const Parameter paths = {"paths", Kind::texts};
  const Parameter text = {"text", Kind::text}, textOrNot = {"text", Kind::text, false};
  return {
      {"files/list", {path}, list, "{path, sortedBy, items: [FileItem]}", "A folder's entries in the panel's order"},
      {"files/newFile", {folder, name}, newFile, "{path}", "Add File"},
      {"files/newFolder", {folder, name}, newFolder, "{path}", "Add Folder"},
      {"files/rename", {path, name}, rename, "{path}", "Rename"},
      {"files/duplicate", {path}, duplicate, "{path}", "Duplicate"},
      {"files/copy", {paths, folder}, copy, "{paths}", "Copy; all are checked before the first is touched"},
      {"files/move", {paths, folder}, move, "{paths}", "Move, likewise"},
      {"files/delete", {paths}, remove, "{}", "Delete files, and folders with all that is in them"},
      {"files/import", {folder, name, textOrNot, {"base64", Kind::text, false}}, import, "{path}",
       "Import a text: text, or its bytes in base64"},
      {"files/read", {path}, read, "{text, revision}", "A text and what tells this content from others"},
      {"files/write", {path, text, {"revision", Kind::text, false}}, write, "{revision}",
       "Replace a text; a stale revision is an alert and writes nothing"},
      {"files/search", {text}, search, "{items: [{path, line, start, length, preview}]}",
       "In names and contents; a later search ends an earlier one"},
  };
}

}  // namespace kelo::session
