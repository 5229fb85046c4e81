// The handlers of the reductions, the selectors that tell their names apart, and what several of
// them share.
#pragma once

#include "builtins/slices.h"
#include "interpreter/reader.h"
#include "values/numbers.h"

namespace kelo::builtins {

enum class Reduction { all, any, mean, median, mode, prod, sum };
enum class Cumulative { cumsum, cumprod, cummin, cummax };
enum class Extreme { min, max };
enum class Spread { std, var };
enum class Percentile { prctile, quantile };

NodeValue reduction(Call& call);
NodeValue extreme(Call& call);
NodeValue cumulative(Call& call);
NodeValue spread(Call& call);
NodeValue rms(Call& call);
NodeValue percentile(Call& call);
NodeValue cov(Call& call);
NodeValue corrcoef(Call& call);

// The sums of slices (sums.cpp).

/// The sum of each slice, from its first element to its last.
DoubleArray sumAlong(const DoubleArray& a, int64_t d);
ComplexDoubleArray sumAlong(const ComplexDoubleArray& a, int64_t d);
/// How many are true in each slice.
DoubleArray sumAlong(const LogicalArray& a, int64_t d);
/// The sum of each slice over its length.
DoubleArray meanAlong(const DoubleArray& a, int64_t d);
ComplexDoubleArray meanAlong(const ComplexDoubleArray& a, int64_t d);

// Several dimensions as one (dimensions.cpp).

/// The dimensions that an argument names: 'all' (every dimension of `size`), a dimension, or a
/// vector of different ones; sorted. Absent for anything else.
std::optional<std::vector<int64_t>> namedDimensions(const Storable& argument, const SizeVector& size);
/// The array with the given dimensions, sorted, joined into the first of them; the others get
/// length 1. Elements of the joined dimension stand in storage order.
template <class T>
TypedArray<T> joinDimensions(const TypedArray<T>& a, const std::vector<int64_t>& dimensions);

}  // namespace kelo::builtins
