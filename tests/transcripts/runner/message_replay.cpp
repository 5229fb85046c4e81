// A run goes on inside the call that starts it; while it sleeps, the next messages of the
// transcript come in.
#include "message_replay.h"

#include <algorithm>
#include <memory>
#include <regex>

#include "figures/coding/base64.h"
#include "platform/memory/twins.h"
#include "platform/memory_file_system.h"
#include "platform/memory_file_tree.h"
#include "player/replay.h"
#include "session/session.h"

namespace kelo::transcripts {
namespace {

using player::LineKind;
using session::Json;

/// What differs from one playing to the next, put into words that do not: the identities of saved
/// figures become "id-1", "id-2", of a picture its first bytes are left.
class Masks {
 public:
  std::string masked(std::string text) {
    static const std::regex kIdentity("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"), kPicture("\"base64\":\"([^\"]+)\"");
    std::smatch found;
    while (std::regex_search(text, found, kIdentity))
      text.replace(found.position(), found.length(), maskOf(found.str()));
    if (std::regex_search(text, found, kPicture)) {
      const std::string bytes = figures::bytesOfBase64(found.str(1)).value_or("");
      text.replace(found.position(1), found.length(1), bytes.substr(0, 4) + "...");
    }
    return text;
  }

  std::string unmasked(std::string text) const {
    for (size_t k = identities_.size(); k > 0; --k) {
      text = std::regex_replace(text, std::regex("id-" + std::to_string(k)), identities_[k - 1]);
    }
    return text;
  }

 private:
  std::string maskOf(const std::string& identity) {
    const auto known = std::find(identities_.begin(), identities_.end(), identity);
    const auto number = known - identities_.begin() + 1;
    if (known == identities_.end()) identities_.push_back(identity);
    return "id-" + std::to_string(number);
  }

  std::vector<std::string> identities_;
};

/// A session with its twins in memory; what it sends is put into lines.
class Console {
 public:
  explicit Console(std::function<void(const std::string&)> write, platform::Block whileAsleep)
      : write_(std::move(write)) {
    synchronization_.whileAsleep = std::move(whileAsleep);
  }

  platform::MemoryFileSystem files, resources;
  platform::ManualClock clock;
  platform::ManualMainQueue mainQueue{clock};

  /// Calls a method, or sends a text as it is.
  void call(const std::string& method, const std::string& params) {
    send("{\"jsonrpc\":\"2.0\",\"id\":" + std::to_string(++lastId_) + ",\"method\":\"" + method +
         "\",\"params\":" + (params.empty() ? "{}" : masks_.unmasked(params)) + "}");
  }
  void send(const std::string& message) {
    session().receive(message, [this](const std::string& answer) { writeAnswer(Json::parse(answer)); });
    mainQueue.drain();
  }

  bool waits() { return session().panels().app.control.wait().has_value(); }

 private:
  session::Session& session() {
    if (!session_) {
      documents_.makeDirectory(".FIGURES");  // as a shell does
      session_ = std::make_unique<session::Session>(session::Setup{
          {parserQueue_, mainQueue, synchronization_, files, store_, clock},
          tree_,
          resources,
          documents_,
          "/work",
          "work",
          [this](const std::string& message) { writeNotification(Json::parse(message)); }});
    }
    return *session_;
  }

  void writeAnswer(const Json& answer) {
    const std::string number = answer["id"].is_number() && answer["id"] != lastId_ ? answer["id"].dump() + " " : "";
    if (answer.contains("error")) return write_("! " + number + answer["error"].dump());
    write_("= " + number + masks_.masked(answer["result"].dump()));
  }

  void writeNotification(const Json& message) {
    write_("* " + message["method"].get<std::string>() + " " + message["params"].dump());
  }

  std::function<void(const std::string&)> write_;
  platform::InlineQueue parserQueue_;
  platform::ScriptedSynchronization synchronization_;
  platform::MemoryStore store_;
  platform::MemoryFileSystem documents_;
  platform::MemoryFileTree tree_{files};
  int lastId_ = 0;
  Masks masks_;
  std::unique_ptr<session::Session> session_;  // made when the files of the case are there
};

class MessageReplay {
 public:
  explicit MessageReplay(const std::string& transcript) : lines_(player::splitLines(transcript)) {
    if (lines_.back().empty()) lines_.pop_back();
  }

  std::string result() {
    while (next_ < lines_.size()) step();
    return std::move(result_);
  }

 private:
  void write(const std::string& line) { result_.append(line).append("\n"); }
  static bool isOutput(const std::string& line) {
    return line.starts_with("= ") || line.starts_with("! ") || line.starts_with("* ");
  }

  void step() {
    const std::string text = lines_[next_++];
    if (isOutput(text)) return;  // it comes anew
    write(text);
    const player::Line line = player::readLine(text);
    if (line.kind == LineKind::caseName || !console_) {
      console_ = std::make_unique<Console>([this](const std::string& out) { write(out); }, [this] { whileAsleep(); });
    }
    if (line.kind == LineKind::file) takeFile(line.text);
    if (line.kind == LineKind::program) console_->send(line.text);
    if (line.kind == LineKind::command) {
      const size_t blank = line.text.find(' ');
      console_->call(line.text.substr(0, blank), blank == std::string::npos ? "" : line.text.substr(blank + 1));
    }
  }

  /// "resources/..." are the program's own files, others those of the work directory.
  void takeFile(const std::string& path) {
    std::string content;
    for (; next_ < lines_.size() && player::readLine(lines_[next_]).kind == LineKind::output; ++next_) {
      write(lines_[next_]);
      content += player::readLine(lines_[next_]).text + "\n";
    }
    while (content.ends_with("\n\n")) content.pop_back();
    const bool isResource = path.starts_with("resources/");
    (isResource ? console_->resources : console_->files).writeFile(isResource ? path.substr(10) : path, content);
  }

  /// The next message of the case, else a timer, else Stop.
  void whileAsleep() {
    console_->mainQueue.drain();
    if (!console_->waits()) return;  // for the main thread, not for a person
    while (next_ < lines_.size() && isOutput(lines_[next_])) ++next_;
    const bool hasMessage = next_ < lines_.size() && lines_[next_].starts_with(">");
    if (hasMessage) return step();
    if (console_->mainQueue.hasTimer()) return console_->mainQueue.fireNextTimer();
    console_->call("run/stop", "");
  }

  player::Lines lines_;
  size_t next_ = 0;
  std::unique_ptr<Console> console_;
  std::string result_;
};

}  // namespace

std::string replayMessages(const std::string& transcript) { return MessageReplay(transcript).result(); }

}  // namespace kelo::transcripts
