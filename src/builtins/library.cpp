#include "builtins/library.h"

namespace kelo::builtins {

const BuiltinTable& library() {
  static const auto* const table = new BuiltinTable({
      {"Trigonometry", trigonometryTable()},
      {"Complex numbers", complexPartsTable()},
      {"Exponentials and roots", exponentialsTable()},
      {"Rounding and remainders", roundingTable()},
      {"Sequences of whole numbers", sequencesTable()},
      {"Constants", constantsTable()},
      {"Arithmetic", arithmeticTable()},
      {"Logic and comparison", logicTable()},
      {"Error functions and distributions", specialTable()},
      {"Random numbers", randomTable()},
      {"Sums, extremes and statistics", reductionsTable()},
      {"Linear algebra", linearAlgebraTable()},
      {"Polynomials, signals and calculus", polynomialsTable()},
      {"Arrays", arraysTable()},
      {"Kinds of values", kindsTable()},
      {"Text", stringsTable()},
      {"Numbers as text", textConversionTable()},
      {"Structures", structuresTable()},
      {"Files", csvFilesTable()},
      {"Console and workspace", consoleTable()},
      {"Time", timeTable()},
      {"Arguments of functions", callsTable()},
      {"Figures", figuresTable()},
  });
  return *table;
}

}  // namespace kelo::builtins
