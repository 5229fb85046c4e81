// Built-ins of one or two numbers whose result is a number, computed without a call where the arguments are double
// scalars. Each gives what the built-in gives, or says false.
#pragma once

#include "values/name.h"
#include "values/storable.h"

namespace kelo {

enum class ScalarCall : int32_t { abs, ceil, fix, floor, max, min, mod, rem, round, sqrt };

/// Which one a name with so many arguments is; -1 for any other built-in.
int32_t scalarCallOf(Name name, int32_t count);

/// y is x again for those of one argument.
bool scalarCall(ScalarCall function, double x, double y, Storable* result);

}  // namespace kelo
