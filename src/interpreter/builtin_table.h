// The table of all built-in names, and the way from a name to its row.
#pragma once

#include <initializer_list>
#include <span>
#include <vector>

#include "interpreter/builtin.h"

namespace kelo {

/// Functions that belong together, in the order of their table.
struct Family {
  const char* title;  ///< as the help shows it: "Linear algebra"
  std::span<const Builtin> rows;
};

class BuiltinTable {
 public:
  /// Joins the families, which share no name.
  explicit BuiltinTable(std::initializer_list<Family> families);

  /// The row of a name; null when the name is no built-in.
  const Builtin* find(Name name) const { return name.id() < byNameId_.size() ? byNameId_[name.id()] : nullptr; }
  /// All rows, sorted by name.
  std::vector<const Builtin*> rows() const;
  std::span<const Family> families() const { return families_; }

 private:
  std::vector<Family> families_;
  std::vector<const Builtin*> byNameId_;  // null where a name is no built-in
};

}  // namespace kelo
