// Settings that outlive the program: the console's history, the number of digits, the state of the random numbers.
//
// Changes are made in memory by `set` and made durable by `save`, which either replaces all that was stored or changes
// nothing: a fault never costs what was there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kelo::platform {

using StoredValue = std::variant<bool, int64_t, std::string, std::vector<std::string>>;

class KeyValueStore {
 public:
  virtual ~KeyValueStore() = default;
  virtual std::optional<StoredValue> get(const std::string& key) = 0;
  virtual void set(const std::string& key, StoredValue value) = 0;
  /// Makes the changes durable; nothing to do when there are none. False on a fault, which the store itself reports to
  /// the shell: the engine goes on without.
  virtual bool save() = 0;

  /// The value of a key, when there is one and it is of this type.
  template <class T>
  std::optional<T> read(const std::string& key) {
    const std::optional<StoredValue> value = get(key);
    if (!value || !std::holds_alternative<T>(*value)) return std::nullopt;
    return std::get<T>(*value);
  }
};

}  // namespace kelo::platform
