// The number of a name is twice its place in the table, and 1 more for a name that may be given
// back. Tested by tests/values/name_test.cpp.
#include "values/held_name.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace kelo {
namespace {

bool isTransient(Name name) { return (name.id() & 1) != 0; }

// OPTIMIZATION: texts that differ in their last byte alone have neighbouring hashes, so that names
// made by counting lie side by side.
uint32_t hashOf(std::string_view text) {
  constexpr uint64_t kFactor = 0x9E3779B97F4A7C15;
  if (text.empty()) return 0;
  const size_t count = text.size() - 1;
  uint64_t hash = count;
  const auto mix = [&](uint64_t piece) {
    hash = (hash ^ piece) * kFactor;
    hash ^= hash >> 32;
  };
  size_t at = 0;
  for (; at + 8 <= count; at += 8) {
    uint64_t piece;
    std::memcpy(&piece, text.data() + at, 8);
    mix(piece);
  }
  uint64_t rest = 0;
  for (size_t k = count; k-- > at;) rest = rest << 8 | static_cast<unsigned char>(text[k]);
  mix(rest);
  return static_cast<uint32_t>(hash) + static_cast<unsigned char>(text.back());
}

/// OPTIMIZATION: names are found in a table with open addressing, which is at most half full: one
/// look at a slot and one at the text. Texts of entries stay where they are.
struct NameTable {
  struct Entry {
    std::string text;
    uint32_t hash = 0;
    int32_t holders = 0;    // of a name that may be given back
    bool isPinned = false;  // it stays, since a program has the same name
    uint32_t nextFree = 0;  // of an entry without a name
  };

  static NameTable& instance() {
    static auto* const table = new NameTable;  // outlives every static object that holds a name
    return *table;
  }
  NameTable() { add("", /*isTransient=*/false); }
  Entry& entryOf(Name name) { return entryAt(name.id() / 2); }
  std::optional<Name> find(std::string_view text) const;
  Name add(std::string_view text, bool isTransient);
  void remove(Name name);

 private:
  static constexpr uint32_t kFree = UINT32_MAX, kGone = UINT32_MAX - 1;  // in place of a name: none; one that was here
  struct Slot {
    uint32_t hash = 0, id = kFree;
    bool isUsed() const { return id < kGone; }
  };
  static constexpr uint32_t kChunk = 256;

  Entry& entryAt(uint32_t place) const { return chunks_[place / kChunk][place % kChunk]; }
  void makeRoom();
  void put(Name name, uint32_t hash);
  size_t next(size_t at) const { return (at + 1) & (slots_.size() - 1); }
  size_t firstFor(uint32_t hash) const { return hash & (slots_.size() - 1); }

  std::vector<std::unique_ptr<Entry[]>> chunks_;
  std::vector<Slot> slots_ = std::vector<Slot>(1024);
  size_t places_ = 0, taken_ = 0, names_ = 0;  // entries made; slots that are not free; names
  uint32_t firstFree_ = 0;  // 0: none; that is the place of the empty name, which stays
};

std::optional<Name> NameTable::find(std::string_view text) const {
  const uint32_t hash = hashOf(text);
  for (size_t at = firstFor(hash); slots_[at].id != kFree; at = next(at)) {
    const Slot& slot = slots_[at];
    if (slot.hash == hash && slot.isUsed() && entryAt(slot.id / 2).text == text) return std::bit_cast<Name>(slot.id);
  }
  return std::nullopt;
}

void NameTable::put(Name name, uint32_t hash) {
  size_t at = firstFor(hash);
  while (slots_[at].isUsed()) at = next(at);
  taken_ += slots_[at].id == kFree;
  ++names_;
  slots_[at] = {hash, name.id()};
}

void NameTable::makeRoom() {
  if (2 * (taken_ + 1) <= slots_.size()) return;
  std::vector<Slot> old(std::bit_ceil(4 * (names_ + 1)));
  std::swap(old, slots_);
  taken_ = names_ = 0;
  for (const Slot& slot : old) {
    if (slot.isUsed()) put(std::bit_cast<Name>(slot.id), slot.hash);
  }
}

Name NameTable::add(std::string_view text, bool isTransient) {
  makeRoom();
  const bool isNew = firstFree_ == 0;
  const auto place = isNew ? static_cast<uint32_t>(places_) : firstFree_;
  if (place / kChunk == chunks_.size()) chunks_.push_back(std::make_unique<Entry[]>(kChunk));
  Entry& entry = entryAt(place);
  entry.text = text;
  entry.hash = hashOf(text);  // now that nothing more can fail
  if (isNew) ++places_;
  else firstFree_ = entry.nextFree;
  const Name name = std::bit_cast<Name>(2 * place + (isTransient ? 1 : 0));
  put(name, entry.hash);
  return name;
}

void NameTable::remove(Name name) {
  Entry& entry = entryOf(name);
  size_t at = firstFor(entry.hash);
  while (slots_[at].id != name.id()) at = next(at);
  slots_[at].id = kGone;
  --names_;
  entry = Entry();
  entry.nextFree = firstFree_;
  firstFree_ = name.id() / 2;
}

void changeHolders(Name name, int32_t change) {
  NameTable& table = NameTable::instance();
  NameTable::Entry& entry = table.entryOf(name);
  entry.holders += change;
  if (entry.holders == 0 && !entry.isPinned) table.remove(name);
}

}  // namespace

Name Name::intern(std::string_view text) {
  NameTable& table = NameTable::instance();
  const std::optional<Name> found = table.find(text);
  if (!found) return table.add(text, /*isTransient=*/false);
  if (isTransient(*found)) table.entryOf(*found).isPinned = true;
  return *found;
}

std::optional<Name> Name::find(std::string_view text) { return NameTable::instance().find(text); }

HeldName HeldName::of(std::string_view text) {
  NameTable& table = NameTable::instance();
  const std::optional<Name> found = table.find(text);
  return found ? *found : table.add(text, /*isTransient=*/true);
}

const std::string& Name::text() const { return NameTable::instance().entryOf(*this).text; }

bool isGivenBack(Name name) { return isTransient(name) && !NameTable::instance().entryOf(name).isPinned; }

bool isHeldOnce(Name name) { return isTransient(name) && NameTable::instance().entryOf(name).holders == 1; }

void retainName(Name name) {
  if (isTransient(name)) changeHolders(name, 1);
}

void releaseName(Name name) {
  if (isTransient(name)) changeHolders(name, -1);
}

bool followsNameRule(std::string_view word) {
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  const auto isPart = [&](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '_'; };
  return !word.empty() && isLetter(word[0]) && std::all_of(word.begin(), word.end(), isPart);
}

}  // namespace kelo
