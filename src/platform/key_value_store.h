// Settings that outlive the program: the console's history, the number of digits, the state of the
// random numbers.
//
// Changes are made in memory by `set` and `change` and made durable by `save`, which either
// replaces all that was stored or changes nothing: a fault never costs what was there.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kelo::platform {

using StoredValue = std::variant<bool, int64_t, std::string, std::vector<std::string>>;

class KeyValueStore {
 public:
  /// The new value, made from the old one; null: there is none.
  using Change = std::function<StoredValue(const StoredValue* old)>;

  virtual ~KeyValueStore() = default;
  virtual std::optional<StoredValue> get(const std::string& key) = 0;
  /// Changes a value in memory at once; the next save makes the same change to what is stored by
  /// then, so that several programs can add to one value.
  virtual void change(const std::string& key, Change change) = 0;
  /// Makes the changes durable; nothing to do when there are none. False on a fault, which the
  /// store itself reports to the shell: the engine goes on without.
  virtual bool save() = 0;

  void set(const std::string& key, StoredValue value) {
    change(key, [value = std::move(value)](const StoredValue*) { return value; });
  }
  /// The value of a key, when there is one and it is of this type.
  template <class T>
  std::optional<T> read(const std::string& key) {
    const std::optional<StoredValue> value = get(key);
    if (!value || !std::holds_alternative<T>(*value)) return std::nullopt;
    return std::get<T>(*value);
  }
};

}  // namespace kelo::platform
