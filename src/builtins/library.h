// The built-in library: the tables of all families, joined.
//
// One explicit list, so that nothing hangs on the order in which static objects are made. Each
// family's source says what its functions share and ends with its table.
#pragma once

#include "interpreter/builtin_table.h"

namespace kelo::builtins {

/// The table of all names. Made at the first call.
const BuiltinTable& library();

// The families, each in a source of its own or in a folder with one table. Their titles stand in
// library.cpp.
std::span<const Builtin> trigonometryTable();   // elementwise/
std::span<const Builtin> complexPartsTable();
std::span<const Builtin> exponentialsTable();
std::span<const Builtin> roundingTable();
std::span<const Builtin> sequencesTable();
std::span<const Builtin> constantsTable();
std::span<const Builtin> arithmeticTable();
std::span<const Builtin> logicTable();
std::span<const Builtin> specialTable();        // special/
std::span<const Builtin> randomTable();         // random/
std::span<const Builtin> reductionsTable();     // reductions/
std::span<const Builtin> linearAlgebraTable();  // linear_algebra/
std::span<const Builtin> polynomialsTable();    // polynomials/
std::span<const Builtin> arraysTable();         // arrays/
std::span<const Builtin> kindsTable();
std::span<const Builtin> stringsTable();        // text/
std::span<const Builtin> textConversionTable();
std::span<const Builtin> structuresTable();
std::span<const Builtin> csvFilesTable();       // csv/
std::span<const Builtin> consoleTable();
std::span<const Builtin> timeTable();
std::span<const Builtin> callsTable();
std::span<const Builtin> figuresTable();  ///< figures/: commands that fill the current figure

}  // namespace kelo::builtins
