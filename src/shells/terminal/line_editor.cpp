// Wraps libedit. Its function for the next character is replaced by one that waits for the
// keyboard, for Ctrl-C and for the main queue together, so the shell stays alive while a line is
// typed. The arrows and Tab are bound to functions of ours.
#include "shells/terminal/line_editor.h"

#include <histedit.h>
#include <locale.h>
#include <poll.h>
#include <unistd.h>
#include <utf8proc.h>

#include <algorithm>
#include <cstdio>

#include "shells/terminal/terminal.h"

namespace kelo::terminal {

/// The functions that libedit calls. Their second argument is the key.
struct LineEditorKeys {
  static LineEditor& self(EditLine* editor) {
    void* data = nullptr;
    el_get(editor, EL_CLIENTDATA, &data);
    return *static_cast<LineEditor*>(data);
  }
  static char* prompt(EditLine* editor) { return self(editor).prompt_.data(); }
  static int getCharacter(EditLine* editor, wchar_t* character) { return self(editor).nextCharacter(character); }
  static unsigned char previous(EditLine* editor, int) {
    self(editor).replaceLine(self(editor).hooks_.previous());
    return CC_REFRESH;
  }
  static unsigned char next(EditLine* editor, int) {
    self(editor).replaceLine(self(editor).hooks_.next());
    return CC_REFRESH;
  }
  static unsigned char complete(EditLine* editor, int);
};

LineEditor::LineEditor(Hooks hooks) : hooks_(std::move(hooks)) {
  // Characters only: numbers keep the point that they are written with.
  if (setlocale(LC_CTYPE, "C.UTF-8") == nullptr) setlocale(LC_CTYPE, "");
  editor_ = el_init("kelo", stdin, stdout, stderr);
  el_set(editor_, EL_CLIENTDATA, this);
  el_set(editor_, EL_EDITOR, "emacs");
  el_set(editor_, EL_SIGNAL, 0);
  el_set(editor_, EL_PROMPT, LineEditorKeys::prompt);
  el_set(editor_, EL_GETCFN, LineEditorKeys::getCharacter);
  el_set(editor_, EL_ADDFN, "kelo-previous", "Recall the previous text", LineEditorKeys::previous);
  el_set(editor_, EL_ADDFN, "kelo-next", "Recall the next text", LineEditorKeys::next);
  el_set(editor_, EL_ADDFN, "kelo-complete", "Complete a name", LineEditorKeys::complete);
  for (const char* key : {"^P", "\\e[A", "\\eOA"}) el_set(editor_, EL_BIND, key, "kelo-previous", nullptr);
  for (const char* key : {"^N", "\\e[B", "\\eOB"}) el_set(editor_, EL_BIND, key, "kelo-next", nullptr);
  el_set(editor_, EL_BIND, "^I", "kelo-complete", nullptr);
  el_set(editor_, EL_BIND, "\\e[3~", "ed-delete-next-char", nullptr);
  el_set(editor_, EL_BIND, "\\e[1~", "ed-move-to-beg", nullptr);
  el_set(editor_, EL_BIND, "\\e[4~", "ed-move-to-end", nullptr);
}

LineEditor::~LineEditor() { el_end(editor_); }

LineEditor::Outcome LineEditor::readLine(const std::string& prompt, std::string* line) {
  prompt_ = prompt;
  interrupted_ = false;
  int count = 0;
  const char* text = el_gets(editor_, &count);
  if (interrupted_) {
    std::fputs("\n", stdout);
    std::fflush(stdout);
    return Outcome::interrupted;
  }
  if (text == nullptr || count <= 0) return Outcome::ended;
  line->assign(text, static_cast<size_t>(count));
  while (!line->empty() && (line->back() == '\n' || line->back() == '\r')) line->pop_back();
  return Outcome::line;
}

/// Waits until a key is there; false on Ctrl-C.
bool LineEditor::waitForKey() {
  std::vector<pollfd> events = {{STDIN_FILENO, POLLIN, 0}};
  for (const int descriptor : hooks_.descriptors) events.push_back({descriptor, POLLIN, 0});
  while (true) {
    const bool isThere = hooks_.input->hasByte();
    poll(events.data(), events.size(), isThere ? 0 : -1);
    if (hooks_.interrupted()) return false;
    hooks_.serve();
    if (isThere || events[0].revents != 0) return true;
  }
}

/// One character of UTF-8; a byte that begins none stands for itself. NUL is dropped: a Ctrl-D
/// typed while a run was on comes as one, and as a key it would quote the next key. 1: read, 0: the
/// end, -1: Ctrl-C.
int LineEditor::nextCharacter(wchar_t* character) {
  unsigned char bytes[4];
  utf8proc_ssize_t length = 0;
  utf8proc_int32_t codePoint = 0;
  do {
    if (!waitForKey()) {
      interrupted_ = true;
      return -1;
    }
    const std::optional<unsigned char> byte = hooks_.input->nextByte();
    if (!byte) return 0;
    if (*byte == 0) continue;
    bytes[length++] = *byte;
    if (utf8proc_iterate(bytes, length, &codePoint) == length) {
      *character = static_cast<wchar_t>(codePoint);
      return 1;
    }
  } while (length == 0 || (length < 4 && bytes[0] >= 0xC2));
  *character = bytes[0];
  return 1;
}

void LineEditor::replaceLine(const std::optional<std::string>& text) {
  if (!text) return;
  const LineInfo* info = el_line(editor_);
  el_cursor(editor_, static_cast<int>(info->lastchar - info->cursor));
  info = el_line(editor_);
  el_deletestr(editor_, static_cast<int>(info->lastchar - info->buffer));
  if (!text->empty()) el_insertstr(editor_, text->c_str());
}

void LineEditor::showChoices(const std::vector<std::string>& names) {
  size_t widest = 0;
  for (const std::string& name : names) widest = std::max(widest, name.size());
  const size_t perLine = std::max<size_t>(1, static_cast<size_t>(terminalWidth()) / (widest + 2));
  std::string text = "\n";
  for (size_t k = 0; k < names.size(); ++k) {
    const bool endsLine = (k + 1) % perLine == 0 || k + 1 == names.size();
    text += names[k] + (endsLine ? "\n" : std::string(widest + 2 - names[k].size(), ' '));
  }
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

namespace {

/// The beginning that all names share. REQUIRES: names is not empty
std::string commonBeginning(const std::vector<std::string>& names) {
  std::string common = names.front();
  for (const std::string& name : names) {
    const auto [end, other] = std::mismatch(common.begin(), common.end(), name.begin(), name.end());
    common.erase(end, common.end());
  }
  return common;
}

}  // namespace

unsigned char LineEditorKeys::complete(EditLine* editor, int) {
  const LineInfo* info = el_line(editor);
  const std::string before(info->buffer, info->cursor);
  size_t wordLength = 0;
  const std::vector<std::string> names = self(editor).hooks_.complete(before, &wordLength);
  if (names.empty()) return CC_REFRESH_BEEP;
  const std::string common = commonBeginning(names);
  if (common.size() > wordLength) {
    el_insertstr(editor, common.c_str() + wordLength);
    return CC_REFRESH;
  }
  if (names.size() == 1) return CC_NORM;
  self(editor).showChoices(names);
  return CC_REDISPLAY;
}

}  // namespace kelo::terminal
