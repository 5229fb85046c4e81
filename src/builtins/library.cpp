#include "builtins/library.h"

namespace kelo::builtins {

const BuiltinTable& library() {
  static const auto* const table = new BuiltinTable({
      linearAlgebraTable(),
      pendingTable(),
  });
  return *table;
}

}  // namespace kelo::builtins
