// The built-in library: the tables of all families, joined.
//
// One explicit list, so that nothing hangs on the order in which static objects are made. Each family's source says
// what its functions share and ends with its table.
#pragma once

#include "interpreter/builtin_table.h"

namespace kelo::builtins {

/// The table of all 260 names. Made at the first call.
const BuiltinTable& library();

// The families, each in a source (or a folder) of the same name.
std::span<const Builtin> elementwiseTable();  ///< mathematics and logic on each element
std::span<const Builtin> kindsTable();        ///< questions about kind and shape, conversions
std::span<const Builtin> stringsTable();
std::span<const Builtin> textConversionTable();
std::span<const Builtin> structuresTable();
std::span<const Builtin> consoleTable();
std::span<const Builtin> timeTable();
std::span<const Builtin> callsTable();
std::span<const Builtin> csvFilesTable();
std::span<const Builtin> arraysTable();   ///< arrays/: construction, rearrangement, sorting, searching, sizes
std::span<const Builtin> reductionsTable();
std::span<const Builtin> linearAlgebraTable();  ///< equations, factors, norms and patterns of matrices
std::span<const Builtin> specialTable();  ///< special/: error functions, probability distributions
std::span<const Builtin> randomTable();   ///< random/: random numbers
std::span<const Builtin> polynomialsTable();    ///< polynomials, signals and calculus
std::span<const Builtin> figuresTable();  ///< figures/: commands that fill the current figure

}  // namespace kelo::builtins
