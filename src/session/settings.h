// The settings of the panels, kept in the key-value store.
#pragma once

#include <string>

#include "platform/key_value_store.h"
#include "session/json_rpc.h"

namespace kelo::session {

struct AppSettings {
  int64_t numDigitIndex = 0;  ///< into the list 5, 8, 12, 16 of digits
  bool showWarning = true;
  int64_t sortedBy = 5;       ///< the ordinal of the order of the file list
  int64_t consoleCells = 80;  ///< the console's width in character cells
  int64_t docTextSize = 100;  ///< text size of the help pages in percent
  std::string docStyle = "auto";

  /// The stored settings; a value out of range reads as its default.
  static AppSettings read(platform::KeyValueStore& store);
  /// Takes the changes of a checked request.
  void change(const Json& changes);
  /// Puts what differs from `before` into the store and saves it.
  void write(platform::KeyValueStore& store, const AppSettings& before) const;
  Json toJson() const;
};

inline constexpr int64_t kLeastCells = 10, kMostCells = 10'000;
inline constexpr int64_t kLeastTextSize = 25, kMostTextSize = 500;

}  // namespace kelo::session
