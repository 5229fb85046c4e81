// The variables of the console, and those of a function that have no register: names and their
// values, in the order of their making.
#pragma once

#include <unordered_map>
#include <vector>

#include "values/storable.h"

namespace kelo {

class Workspace {
 public:
  /// The value of a name or null. Valid until the next change.
  Storable* find(Name name);
  const Storable* find(Name name) const { return const_cast<Workspace*>(this)->find(name); }
  void set(Name name, Storable value);
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

  std::vector<Entry> entries_;
  std::unordered_map<uint32_t, uint32_t> index_;  // of the names, once there are many
};

}  // namespace kelo
