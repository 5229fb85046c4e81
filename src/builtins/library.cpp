#include "builtins/library.h"

namespace kelo::builtins {

const BuiltinTable& library() {
  static const auto* const table = new BuiltinTable({
      elementwiseTable(),
      kindsTable(),
      stringsTable(),
      textConversionTable(),
      structuresTable(),
      consoleTable(),
      timeTable(),
      callsTable(),
      csvFilesTable(),
      arraysTable(),
      reductionsTable(),
      linearAlgebraTable(),
      specialTable(),
      randomTable(),
      polynomialsTable(),
      figuresTable(),
  });
  return *table;
}

}  // namespace kelo::builtins
