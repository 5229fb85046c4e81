// Tested by tests/values/workspace_test.cpp.
#include "values/workspace.h"

#include <algorithm>

namespace kelo {
namespace {
constexpr size_t kScannedNames = 12;  // up to here a scan of the names beats hashing
}

Storable* Workspace::find(Name name) {
  if (entries_.size() > kScannedNames) {
    const auto found = index_.find(name.id());
    return found == index_.end() ? nullptr : &entries_[found->second].value;
  }
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.name == name; });
  return found == entries_.end() ? nullptr : &found->value;
}

void Workspace::set(Name name, Storable value) {
  if (Storable* present = find(name)) {
    *present = std::move(value);
    return;
  }
  // What may find no memory comes first.
  if (entries_.size() == entries_.capacity()) entries_.reserve(2 * entries_.size() + 1);
  if (entries_.size() == kScannedNames) makeIndex();
  if (entries_.size() >= kScannedNames) index_[name.id()] = static_cast<uint32_t>(entries_.size());
  entries_.push_back({std::move(value), name});
}

void Workspace::makeIndex() {
  index_.clear();
  for (uint32_t k = 0; k < entries_.size(); ++k) index_[entries_[k].name.id()] = k;
}

bool Workspace::erase(Name name) {
  const size_t removed = std::erase_if(entries_, [&](const Entry& entry) { return entry.name == name; });
  if (removed > 0) makeIndex();
  return removed > 0;
}

void Workspace::removeLocalFunctions() {
  if (std::erase_if(entries_, [](const Entry& entry) { return entry.value.isLocalFunc(); }) > 0) makeIndex();
}

std::vector<Name> Workspace::names() const {
  std::vector<Name> result;
  for (const Entry& entry : entries_) result.push_back(entry.name);
  return result;
}

}  // namespace kelo
