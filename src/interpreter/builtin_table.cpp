#include "interpreter/builtin_table.h"

#include <algorithm>
#include <cstring>

namespace kelo {

BuiltinTable::BuiltinTable(std::initializer_list<Family> families) : families_(families) {
  for (const Family& family : families) {
    for (const Builtin& row : family.rows) {
      const Name name = Name::intern(row.name);
      if (name.id() >= byNameId_.size()) byNameId_.resize(name.id() + 1);
      byNameId_[name.id()] = &row;
    }
  }
}

std::vector<const Builtin*> BuiltinTable::rows() const {
  std::vector<const Builtin*> rows;
  std::copy_if(byNameId_.begin(), byNameId_.end(), std::back_inserter(rows), [](const Builtin* row) { return row; });
  std::sort(rows.begin(), rows.end(), [](auto* a, auto* b) { return std::strcmp(a->name, b->name) < 0; });
  return rows;
}

}  // namespace kelo
