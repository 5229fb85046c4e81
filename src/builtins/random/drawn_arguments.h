// The arguments of the functions that draw: parameters of a distribution first, then sizes.
#pragma once

#include "interpreter/builtin.h"
#include "messages/message.h"
#include "values/numeric_array.h"

namespace kelo::builtins {

/// Makes the complaint about the argument at a position (from 0).
using Complaint = Problem (*)(const Call& call, int position);

/// The size that the arguments from `from` on give: none, a scalar; n, n x n; a vector of lengths;
/// several lengths.
/// throws the complaint; Problem for a vector of fewer than two lengths; FatalFault when the
/// elements cannot be counted
SizeVector drawnSize(const Call& call, int from, Complaint complaint);

/// The complaint of most functions about sizes.
Problem sizeComplaint(const Call& call, int position);

/// Real numbers that are all allowed. throws the complaint
DoubleArray drawnParameters(const Call& call, int position, bool (*allowed)(double), Complaint complaint);

}  // namespace kelo::builtins
