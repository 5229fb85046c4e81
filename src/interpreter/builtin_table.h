// The table of all built-in names, and the way from a name to its row.
#pragma once

#include <initializer_list>
#include <span>
#include <vector>

#include "interpreter/builtin.h"

namespace kelo {

class BuiltinTable {
 public:
  /// Joins the tables of the families, in order. A row with a handler takes the place of an earlier row of the same
  /// name without one.
  explicit BuiltinTable(std::initializer_list<std::span<const Builtin>> families);

  /// The row of a name; null when the name is no built-in.
  const Builtin* find(Name name) const { return name.id() < byNameId_.size() ? byNameId_[name.id()] : nullptr; }
  /// All rows, sorted by name.
  std::vector<const Builtin*> rows() const;

 private:
  std::vector<const Builtin*> byNameId_;  // null where a name is no built-in
};

}  // namespace kelo
