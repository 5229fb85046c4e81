// The console: running, answering, stopping, what was shown and what was typed.
#include "files/names.h"
#include "frontend/matlab_parser.h"
#include "messages/catalogue/run_control.h"
#include "messages/utf16.h"
#include "session/completion.h"
#include "session/methods.h"
#include "session/panels.h"

namespace kelo::session {
namespace {

/// What stands at a path of the work directory, for one who goes by no link and sees no hidden
/// name.
std::optional<platform::FileTree::Status> statusOf(const Call& call, const std::string& path) {
  if (!path.empty() && !isVisiblePath(path)) return std::nullopt;
  return call.panels.setup.tree.status(path);
}

std::string folderOf(const Call& call) {
  const std::string folder = call.textOr("folder", "");
  const auto status = statusOf(call, folder);
  if (!status || !status->isFolder) throw wrongParameter("folder", "a folder of the work directory");
  return folder;
}

std::optional<Json> run(const Call& call) {
  AppController& app = call.panels.app;
  const std::string folder = folderOf(call);
  call.panels.startRun(call.answer, [&] {
    app.panelDir = folder;
    app.console.input.text = call.text("text");
    app.pressRun();
  });
  return std::nullopt;
}

std::optional<Json> runFile(const Call& call) {
  AppController& app = call.panels.app;
  const std::string path = call.text("path");
  const auto status = statusOf(call, path);
  if (!status || status->isFolder) throw alert(text::failedToLoad(path));
  call.panels.startRun(call.answer, [&] {
    const size_t slash = path.find_last_of('/');
    const bool hasFolder = slash != std::string::npos;
    app.pressRunFile(hasFolder ? path.substr(0, slash) : "", hasFolder ? path.substr(slash + 1) : path);
  });
  return std::nullopt;
}

std::optional<Json> stop(const Call& call) {
  if (!call.panels.isIdle()) call.panels.app.pressStop();
  return Json::object();
}

std::optional<Json> answer(const Call& call) {
  AppController& app = call.panels.app;
  const std::optional<RunControl::Wait> wait = app.control.wait();
  if (!wait) return Json::object();
  if (wait->status == RunState::Status::waitInput) app.console.input.text = call.text("text");
  app.pressRun();
  return Json::object();
}

std::optional<Json> items(const Call& call) { return call.panels.feed.items(); }

/// During a run the console's own items belong to the queue; what the front end sees is the feed's.
std::optional<Json> clear(const Call& call) {
  if (call.panels.isIdle()) call.panels.app.console.output.clear();
  else call.panels.feed.cleared();
  call.panels.feed.flush();
  return Json::object();
}

std::optional<Json> history(const Call& call) {
  return Json{{"items", call.panels.app.console.history.items()}};
}

const char* kindName(Completion::Kind kind) {
  constexpr const char* kNames[] = {"function", "variable", "field", "file"};
  return kNames[static_cast<int>(kind)];
}

std::optional<Json> complete(const Call& call) {
  const std::string text = call.text("text");
  const int64_t position = call.integer("position");
  if (position > utf16Length(text)) throw wrongParameter("position", "within the text");
  Panels& panels = call.panels;
  const Environment& environment = panels.app.environment;
  const Completions found =
      completionsAt(text, position, {panels.variables(), environment.builtins, environment.files, ""});
  Json list = Json::array();
  for (const Completion& item : found.items) {
    list.push_back({{"label", item.label}, {"kind", kindName(item.kind)}, {"detail", item.detail}});
  }
  return Json{{"from", found.from}, {"items", std::move(list)}};
}

/// Parsed where programs are parsed, on the stack of the parser queue. That is busy during a run,
/// when nothing could be run anyway: then every text counts as complete.
std::optional<Json> isComplete(const Call& call) {
  const platform::Host& host = call.panels.host;
  if (!call.panels.isIdle()) return Json{{"complete", true}};
  host.parserQueue.async([text = call.text("text"), answer = call.answer, &mainQueue = host.mainQueue] {
    const bool isComplete = !isIncomplete(text);
    mainQueue.async([answer, isComplete] { answer({{"complete", isComplete}}); });
  });
  return std::nullopt;
}

}  // namespace

std::vector<Method> consoleMethods() {
  return {
      {"console/run", {{"text", Kind::text}, {"folder", Kind::text, false}}, run, "{status, seconds}",
       "Run a command; answered when the run ends, with done, failed or fault"},
      {"file/run", {{"path", Kind::text}}, runFile, "{status, seconds}", "The Run button of the editor"},
      {"run/stop", {}, stop, "{}", "The Stop button"},
      {"console/answer", {{"text", Kind::text}}, answer, "{}", "The line that input waits for, or Run during a pause"},
      {"console/items", {}, items, "{items}", "What the console shows, for the present digits and width"},
      {"console/clear", {}, clear, "{}", "Empty the console"},
      {"console/history", {}, history, "{items}", "The commands run before, oldest first"},
      {"console/complete", {{"text", Kind::text}, {"position", Kind::integer, true, "", 0}}, complete,
       "{from, items: [{label, kind, detail}]}", "Names that begin like the word before the position"},
      {"console/isComplete", {{"text", Kind::text}}, isComplete, "{complete}",
       "Whether the text can be run; false if a further line may complete it"},
  };
}

}  // namespace kelo::session
