// JSON has the four types of the store and more; what is not one of them is carried along unread,
// so a newer version's settings survive an older one.
#include "platform/native/json_store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "platform/native/whole_file.h"

namespace kelo::platform::native {
namespace {

using nlohmann::json;

std::optional<StoredValue> fromJson(const json& value) {
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number_integer()) return value.get<int64_t>();
  if (value.is_string()) return value.get<std::string>();
  if (!value.is_array()) return std::nullopt;
  std::vector<std::string> texts;
  for (const json& item : value) {
    if (!item.is_string()) return std::nullopt;
    texts.push_back(item.get<std::string>());
  }
  return texts;
}

/// The object in the file: empty when there is no file, nothing when it is not to be understood.
std::optional<json> readObject(const std::string& path) {
  std::error_code fault;
  const bool exists = std::filesystem::exists(path, fault);
  if (fault) return std::nullopt;
  if (!exists) return json::object();
  const std::optional<std::string> text = readWholeFile(path);
  if (!text) return std::nullopt;
  json parsed = json::parse(*text, nullptr, /*allow_exceptions=*/false);
  if (!parsed.is_object()) return std::nullopt;
  return parsed;
}

/// Keeps other programs from saving meanwhile. Without a lock, as on some file systems, the saving
/// goes on.
class DirectoryLock {
 public:
  explicit DirectoryLock(const std::string& directory) : file_(open(directory.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (file_ >= 0) flock(file_, LOCK_EX);
  }
  DirectoryLock(const DirectoryLock&) = delete;
  DirectoryLock& operator=(const DirectoryLock&) = delete;
  ~DirectoryLock() {
    if (file_ >= 0) close(file_);
  }

 private:
  int file_;
};

/// Takes away what saves of earlier versions left behind when they were killed. REQUIRES: the lock
void sweep(const std::string& directory) {
  std::error_code fault;
  const std::string beginning = "settings.json.";
  for (auto entry = std::filesystem::directory_iterator(directory, fault);
       !fault && entry != std::filesystem::directory_iterator(); entry.increment(fault)) {
    const std::string name = entry->path().filename().string();
    std::error_code ignored;
    if (name.starts_with(beginning) && name.size() == beginning.size() + 6) remove(entry->path(), ignored);
  }
}

}  // namespace

JsonStore::JsonStore(std::string directory, Report report)
    : directory_(std::move(directory)), report_(std::move(report)) {}

std::optional<StoredValue> JsonStore::get(const std::string& key) {
  if (!values_) {
    values_.emplace();
    const std::optional<json> stored = directory_.empty() ? json::object() : readObject(path());
    if (!stored) fail("the settings in " + path() + " cannot be read; nothing will be saved there");
    if (stored) {
      for (const auto& [name, value] : stored->items()) {
        if (std::optional<StoredValue> known = fromJson(value)) values_->emplace(name, std::move(*known));
      }
    }
  }
  const auto found = values_->find(key);
  if (found == values_->end()) return std::nullopt;
  return found->second;
}

void JsonStore::change(const std::string& key, Change change) {
  const std::optional<StoredValue> old = get(key);
  StoredValue value = change(old ? &*old : nullptr);
  if (old == value) return;
  (*values_)[key] = std::move(value);
  changes_.emplace_back(key, std::move(change));
}

bool JsonStore::save() {
  if (changes_.empty() || directory_.empty()) return true;
  std::error_code ignored;  // the replacing tells
  std::filesystem::create_directories(directory_, ignored);
  const DirectoryLock lock(directory_);
  std::optional<json> stored = readObject(path());
  if (!stored) return fail("the settings in " + path() + " cannot be read; nothing will be saved there");
  for (const auto& [key, change] : changes_) {
    const auto found = stored->find(key);
    const std::optional<StoredValue> old = found == stored->end() ? std::nullopt : fromJson(*found);
    std::visit([&, &name = key](const auto& held) { (*stored)[name] = held; }, change(old ? &*old : nullptr));
  }
  sweep(directory_);
  // Text that is no UTF-8 is mended rather than refused.
  const std::string text = stored->dump(2, ' ', false, json::error_handler_t::replace) + "\n";
  if (const auto fault = replaceWholeFile(path(), text)) {
    return fail("the settings cannot be saved in " + path() + ": " + *fault);
  }
  changes_.clear();
  return true;
}

bool JsonStore::fail(const std::string& fault) {
  if (!reported_) report_(fault);
  reported_ = true;
  return false;
}

}  // namespace kelo::platform::native
