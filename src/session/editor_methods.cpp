// The editor: colouring, indentation, the commands on a selection.
#include "editor/indentation.h"
#include "editor/line_commands.h"
#include "messages/utf16.h"
#include "session/methods.h"
#include "session/panels.h"

namespace kelo::session {
namespace {

std::optional<Json> highlight(const Call& call) {
  Json spans = Json::array();
  for (const auto& span : call.panels.highlighter.highlightAll(call.text("text"))) {
    spans.push_back({{"start", span.start},
                     {"length", span.length},
                     {"type", SyntaxHighlighter::nameOf(span.type)},
                     {"color", SyntaxHighlighter::colorOf(span.type)}});
  }
  return Json{{"spans", std::move(spans)}};
}

std::optional<Json> line(const Call& call) {
  const std::optional<std::string> line = indentedLine(call.integer("position"), call.text("text"));
  if (!line) throw wrongParameter("position", "within the text");
  return Json{{"line", *line}};
}

using Command = std::optional<EditedText> (*)(std::string_view text, int64_t start, int64_t end);

template <Command command>
std::optional<Json> edit(const Call& call) {
  const std::string text = call.text("text");
  const int64_t start = call.integer("start"), end = call.integer("end");
  if (end > utf16Length(text)) throw wrongParameter("end", "within the text");
  if (start > end) throw wrongParameter("start", "at most \"end\"");
  const std::optional<EditedText> edited = command(text, start, end);
  return Json{{"text", edited->text}, {"start", edited->start}, {"end", edited->end}};
}

}  // namespace

std::vector<Method> editorMethods() {
  const std::vector<Parameter> selection = {
      {"text", Kind::text}, {"start", Kind::integer, true, "", 0}, {"end", Kind::integer, true, "", 0}};
  const char* const edited = "{text, start, end}";
  return {
      {"editor/highlight", {{"text", Kind::text}}, highlight, "{spans: [{start, length, type, color}]}",
       "What is finally seen, in order, without the default colour"},
      {"editor/indentedLine", {{"text", Kind::text}, {"position", Kind::integer, true, "", 0}}, line, "{line}",
       "The line at the position with its indentation mended"},
      {"editor/comment", selection, edit<comment>, edited, "Make the lines of the selection comments"},
      {"editor/uncomment", selection, edit<uncomment>, edited, "Take \"% \" away where a line begins with it"},
      {"editor/indent", selection, edit<indent>, edited, "Mend the indentation of the lines of the selection"},
  };
}

}  // namespace kelo::session
