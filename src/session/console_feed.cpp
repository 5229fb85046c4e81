#include "session/console_feed.h"

#include <mutex>

#include "display/display.h"

namespace kelo::session {
namespace {

constexpr double kSecondsBetweenLots = 1.0 / 60;

using Guard = std::lock_guard<platform::Lock>;

template <class T>
Json orNull(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json messageJson(const Message& message) {
  Json json = {{"file", orNull(message.relativePath)}, {"line", orNull(message.lineNum)}, {"column", nullptr}};
  if (message.charPos) json["column"] = *message.charPos + 1;
  if (message.type == Message::MsgType::warning) json["warning"] = true;
  return json;
}

Json itemJson(int64_t index, const Display& display) {
  Json json = {{"index", index},
               {"contentType", contentTypeName(display.contentType())},
               {"varName", nullptr},
               {"text", display.displayText()}};
  if (display.varName()) json["varName"] = *display.varName();
  if (const Message* message = std::get_if<Message>(&display.content())) json["message"] = messageJson(*message);
  return json;
}

}  // namespace

ConsoleFeed::ConsoleFeed(const platform::Host& host, Hooks hooks)
    : mainQueue_(host.mainQueue), hooks_(std::move(hooks)), lock_(host.synchronization.makeLock()) {}

void ConsoleFeed::item(const Display& display) { append(display, "console/item"); }

void ConsoleFeed::prompt(const Display& display) { append(display, "console/prompt"); }

void ConsoleFeed::append(const Display& display, const char* method) {
  const Guard guard(*lock_);
  Json json = itemJson(nextIndex_, display);
  const bool isItem = std::string_view(method) == "console/item";
  push({method, isItem ? json : Json{{"text", display.displayText()}}, display.numOfLines()});
  items_.push_back({nextIndex_++, std::move(json), display.numOfLines()});
  itemLines_ += display.numOfLines();
  trim();
}

void ConsoleFeed::cleared() {
  const Guard guard(*lock_);
  items_.clear();
  itemLines_ = nextIndex_ = 0;
  events_.clear();
  eventLines_ = 0;
  push({"console/cleared", Json::object()});
}

/// Only the last line of a task matters.
void ConsoleFeed::progress(const std::string& line) {
  const Guard guard(*lock_);
  if (!events_.empty() && events_.back().method == "console/progress") events_.pop_back();
  push({"console/progress", {{"text", line}}});
}

// The lock is held in the functions below that say nothing else.

void ConsoleFeed::push(Event event) {
  eventLines_ += event.numOfLines;
  events_.push_back(std::move(event));
  schedule();
}

/// Keeps what the console keeps: the newest items of up to so many lines, and the last one whatever
/// its length.
void ConsoleFeed::trim() {
  while (items_.size() > 1 && itemLines_ > Console::Output::maxNumOfLines) {
    itemLines_ -= items_.front().numOfLines;
    items_.pop_front();
  }
  while (events_.size() > 1 && eventLines_ > Console::Output::maxNumOfLines) {
    eventLines_ -= events_.front().numOfLines;
    events_.pop_front();
  }
}

void ConsoleFeed::schedule() {
  if (isScheduled_) return;
  isScheduled_ = true;
  mainQueue_.after(kSecondsBetweenLots, [this] { sendLot(); });
}

// ---- Thread: main

void ConsoleFeed::sendLot() {
  if (!hooks_.isCongested()) return flush();
  const Guard guard(*lock_);
  isScheduled_ = false;
  schedule();
}

void ConsoleFeed::flush() {
  std::deque<Event> events;
  {
    const Guard guard(*lock_);
    isScheduled_ = false;
    events.swap(events_);
    eventLines_ = 0;
  }
  for (const Event& event : events) hooks_.notify(event.method, event.params);
}

void ConsoleFeed::runStateChanged(RunState::Status status) {
  flush();
  hooks_.runStateChanged(status);
}

void ConsoleFeed::runEnded(const RunResult& result) {
  flush();
  hooks_.runEnded(result);
}

Json ConsoleFeed::items() {
  const Guard guard(*lock_);
  Json list = Json::array();
  for (const Item& item : items_) list.push_back(item.json);
  return {{"items", std::move(list)}};
}

void ConsoleFeed::reformat(const std::vector<Display>& displays) {
  const Guard guard(*lock_);
  // The console keeps at least as many as are kept here: both drop by the same rule, and here it
  // may be cleared before.
  auto display = displays.end();
  itemLines_ = 0;
  for (auto item = items_.rbegin(); item != items_.rend() && display != displays.begin(); ++item) {
    --display;
    item->json["text"] = display->displayText();
    item->numOfLines = display->numOfLines();
    itemLines_ += item->numOfLines;
  }
  trim();
}

}  // namespace kelo::session
