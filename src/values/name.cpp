// The number of a name is twice its place in the table, and 1 more for a name that may be given
// back. Tested by tests/values/name_test.cpp.
#include "values/held_name.h"

#include <algorithm>
#include <bit>
#include <deque>
#include <unordered_map>

namespace kelo {
namespace {

bool isTransient(Name name) { return (name.id() & 1) != 0; }

struct NameTable {
  struct Entry {
    std::string text;
    int32_t holders = 0;    // of a name that may be given back
    bool isPinned = false;  // it stays, since a program has the same name
    uint32_t nextFree = 0;  // of an entry without a name
  };

  static NameTable& instance() {
    static auto* const table = new NameTable;  // outlives every static object that holds a name
    return *table;
  }
  Entry& entryOf(Name name) { return entries[name.id() / 2]; }
  Name add(std::string_view text, bool isTransient);
  void remove(Name name);

  std::deque<Entry> entries{Entry()};  // a deque, so that the views below stay valid
  std::unordered_map<std::string_view, Name> names{{entries.front().text, Name()}};
  uint32_t firstFree = 0;  // 0: none; that is the place of the empty name, which stays
};

Name NameTable::add(std::string_view text, bool isTransient) {
  if (firstFree == 0) {
    entries.emplace_back();
    firstFree = static_cast<uint32_t>(entries.size() - 1);
  }
  const uint32_t place = firstFree;
  Entry& entry = entries[place];
  entry.text = text;
  const Name name = std::bit_cast<Name>(2 * place + (isTransient ? 1 : 0));
  names.emplace(entry.text, name);
  firstFree = entry.nextFree;  // now that nothing more can fail
  return name;
}

void NameTable::remove(Name name) {
  Entry& entry = entryOf(name);
  names.erase(entry.text);
  entry = Entry();
  entry.nextFree = firstFree;
  firstFree = name.id() / 2;
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
  const auto found = table.names.find(text);
  if (found == table.names.end()) return table.add(text, /*isTransient=*/false);
  if (isTransient(found->second)) table.entryOf(found->second).isPinned = true;
  return found->second;
}

HeldName HeldName::of(std::string_view text) {
  NameTable& table = NameTable::instance();
  const auto found = table.names.find(text);
  return found == table.names.end() ? table.add(text, /*isTransient=*/true) : found->second;
}

const std::string& Name::text() const { return NameTable::instance().entryOf(*this).text; }

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
