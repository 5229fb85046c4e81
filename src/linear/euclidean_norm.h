// The Euclidean norm of many numbers.
#pragma once

#include <cstdint>

namespace kelo {

/// The root of the sum of n squares, as if both were rounded once. Absent (a negative number) where
/// a square leaves the range in which that holds, or there is a NaN or an Inf.
///
/// source: Dekker (1971) for the squares in two parts, Knuth for the sums; Ogita, Rump and Oishi
/// (2005), Dot2
double euclideanNorm(const double* x, int64_t n);

}  // namespace kelo
