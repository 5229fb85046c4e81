#include "builtins/library.h"

namespace kelo::builtins {

const BuiltinTable& library() {
  static const auto* const table = new BuiltinTable({
      elementwiseTable(),
      kindsTable(),
      pendingTable(),
      arraysTable(),
      reductionsTable(),
      linearAlgebraTable(),
      polynomialsTable(),
  });
  return *table;
}

}  // namespace kelo::builtins
