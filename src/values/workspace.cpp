// Tested by tests/values/workspace_test.cpp.
#include "values/workspace.h"

#include <algorithm>
#include <bit>

namespace kelo {
namespace {
constexpr size_t kScannedNames = 12;  // up to here a scan of the names beats hashing
}

Storable* Workspace::find(Name name) {
  if (!slots_.empty()) {
    const uint32_t place = slotFor(name);
    return place == 0 ? nullptr : &entries_[place - 1].value;
  }
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.name == name; });
  return found == entries_.end() ? nullptr : &found->value;
}

// The slot that has the place of the name, or is free for it.
uint32_t& Workspace::slotFor(Name name) {
  const size_t mask = slots_.size() - 1;
  size_t at = (name.id() * 0x9E3779B9u >> 8) & mask;
  while (slots_[at] != 0 && entries_[slots_[at] - 1].name != name) at = (at + 1) & mask;
  return slots_[at];
}

void Workspace::set(Name name, Storable value) {
  if (Storable* present = find(name)) {
    *present = std::move(value);
    return;
  }
  makeRoom(1);
  entries_.push_back({std::move(value), name});
  if (!slots_.empty()) slotFor(name) = static_cast<uint32_t>(entries_.size());
}

void Workspace::makeRoom(size_t count) {
  const size_t names = entries_.size() + count;
  if (names > entries_.capacity()) entries_.reserve(std::max(names, 2 * entries_.size()));
  if (names <= kScannedNames || 2 * names <= slots_.size()) return;
  std::vector<uint32_t> slots(std::bit_ceil(4 * names));
  slots_ = std::move(slots);
  makeIndex();
}

void Workspace::makeIndex() {
  std::fill(slots_.begin(), slots_.end(), 0);
  for (uint32_t k = 0; !slots_.empty() && k < entries_.size(); ++k) slotFor(entries_[k].name) = k + 1;
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
