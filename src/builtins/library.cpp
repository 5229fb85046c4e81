#include "builtins/library.h"

namespace kelo::builtins {

const BuiltinTable& library() {
  static const auto* const table = new BuiltinTable({
      pendingTable(),
      reductionsTable(),
  });
  return *table;
}

}  // namespace kelo::builtins
