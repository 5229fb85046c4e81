#include "session/settings.h"

namespace kelo::session {
namespace {

int64_t inRange(platform::KeyValueStore& store, const char* key, int64_t least, int64_t most, int64_t fallback) {
  const int64_t value = store.read<int64_t>(key).value_or(fallback);
  return value >= least && value <= most ? value : fallback;
}

bool isStyle(const std::string& text) { return text == "auto" || text == "dark" || text == "light"; }

template <class T>
void put(platform::KeyValueStore& store, const char* key, const T& value, const T& before) {
  if (value != before) store.set(key, value);
}

}  // namespace

AppSettings AppSettings::read(platform::KeyValueStore& store) {
  AppSettings settings;
  settings.numDigitIndex = inRange(store, "numDigitsIndex", 0, 3, 0);
  settings.showWarning = store.read<bool>("showWarning").value_or(true);
  settings.sortedBy = inRange(store, "sortedBy", 0, 7, 5);
  settings.consoleCells = inRange(store, "consoleCells", kLeastCells, kMostCells, 80);
  settings.docTextSize = inRange(store, "docTextSize", kLeastTextSize, kMostTextSize, 100);
  const std::string style = store.read<std::string>("docStyle").value_or("auto");
  settings.docStyle = isStyle(style) ? style : "auto";
  return settings;
}

void AppSettings::change(const Json& changes) {
  numDigitIndex = changes.value("numDigitIndex", numDigitIndex);
  showWarning = changes.value("showWarning", showWarning);
  sortedBy = changes.value("sortedBy", sortedBy);
  consoleCells = changes.value("consoleCells", consoleCells);
  docTextSize = changes.value("docTextSize", docTextSize);
  docStyle = changes.value("docStyle", docStyle);
}

void AppSettings::write(platform::KeyValueStore& store, const AppSettings& before) const {
  put(store, "numDigitsIndex", numDigitIndex, before.numDigitIndex);
  put(store, "showWarning", showWarning, before.showWarning);
  put(store, "sortedBy", sortedBy, before.sortedBy);
  put(store, "consoleCells", consoleCells, before.consoleCells);
  put(store, "docTextSize", docTextSize, before.docTextSize);
  put(store, "docStyle", docStyle, before.docStyle);
  store.save();
}

Json AppSettings::toJson() const {
  return {{"numDigitIndex", numDigitIndex}, {"showWarning", showWarning}, {"sortedBy", sortedBy},
          {"consoleCells", consoleCells},   {"docTextSize", docTextSize}, {"docStyle", docStyle}};
}

}  // namespace kelo::session
