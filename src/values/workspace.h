// The variables of the console, and those of a function that have no register: names and their
// values, in the order of their making.
#pragma once

#include <vector>

#include "values/storable.h"

namespace kelo {

class Workspace {
 public:
  /// The value of a name or null. Valid until the next change.
  Storable* find(Name name);
  const Storable* find(Name name) const { return const_cast<Workspace*>(this)->find(name); }
  void set(Name name, Storable value);
  /// From now on `count` more names need no memory.
  void makeRoom(size_t count);
  bool erase(Name name);
  /// Removes every local function that was entered as a variable.
  void removeLocalFunctions();
  /// Local functions included.
  std::vector<Name> names() const;

 private:
  struct Entry {
    Storable value;
    Name name;
  };
  void makeIndex();  // of all
  uint32_t& slotFor(Name name);

  std::vector<Entry> entries_;
  // Once there are many names: their places, from 1. Open addressing, at most half full.
  std::vector<uint32_t> slots_;
};

}  // namespace kelo
