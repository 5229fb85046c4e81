// The key-value store as a JSON file.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/key_value_store.h"

namespace kelo::platform::native {

/// The file is read when something is first asked for, and replaced as a whole by `save`, with what
/// other programs have put into it since kept. A file that cannot be read or understood is left
/// alone: nothing is saved over it.
///
/// Thread: one at a time.
class JsonStore : public KeyValueStore {
 public:
  using Report = std::function<void(const std::string& fault)>;

  /// directory   made when something is saved; "": nothing is saved
  /// report      called once, with the first fault
  JsonStore(std::string directory, Report report);

  std::optional<StoredValue> get(const std::string& key) override;
  void change(const std::string& key, Change change) override;
  bool save() override;

 private:
  using Values = std::map<std::string, StoredValue>;

  std::string path() const { return directory_ + "/settings.json"; }
  bool fail(const std::string& fault);

  std::string directory_;
  Report report_;
  std::optional<Values> values_;  // as last read, with the changes
  std::vector<std::pair<std::string, Change>> changes_;  // since the last save, in order
  bool reported_ = false;
};

}  // namespace kelo::platform::native
