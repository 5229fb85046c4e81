// Nothing is sorted more than it must: the median and quantiles put single elements into their
// places, each search working on what the one before left behind.
#include "builtins/reductions/order_statistics.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace kelo::builtins {
namespace {

constexpr size_t kManyRanks = 64;  // from here on a full sort is cheaper

double nanOf(double) { return kNaN; }
ComplexDouble nanOf(ComplexDouble) { return {kNaN, 0}; }

double middle(double a, double b) {
  const double sum = a + b;
  return std::isinf(sum) ? a / 2 + b / 2 : sum / 2;
}
ComplexDouble middle(ComplexDouble a, ComplexDouble b) {
  return {middle(a.real, b.real), middle(a.imaginary, b.imaginary)};
}

template <class T>
constexpr auto kBefore = [](T a, T b) { return isBefore(a, b); };

template <class T>
std::span<T> withoutNaN(std::span<T> x) {
  const auto end = std::partition(x.begin(), x.end(), [](T v) { return !isNaN(v); });
  return x.first(static_cast<size_t>(end - x.begin()));
}

template <class T>
T medianOf(std::span<T> x) {
  if (x.empty() || std::any_of(x.begin(), x.end(), [](T v) { return isNaN(v); })) return nanOf(T{});
  const auto upper = x.begin() + static_cast<ptrdiff_t>(x.size() / 2);
  std::nth_element(x.begin(), upper, x.end(), kBefore<T>);
  if (x.size() % 2 == 1) return *upper;
  return middle(*std::max_element(x.begin(), upper, kBefore<T>), *upper);
}

template <class T>
Mode<T> modeOf(std::span<T> all) {
  const std::span<T> x = withoutNaN(all);
  std::sort(x.begin(), x.end(), kBefore<T>);
  Mode<T> best{nanOf(T{}), 0};
  for (size_t i = 0, end; i < x.size(); i = end) {
    for (end = i + 1; end < x.size() && x[end] == x[i];) ++end;
    if (static_cast<int64_t>(end - i) > best.count) best = {x[i], static_cast<int64_t>(end - i)};
  }
  return best;
}

/// Where a quantile lies: between the elements `low` and `low + 1`, from 0, or on the first one
/// when `share` is 0.
struct Place {
  size_t low;
  double share;
};

Place placeOf(double fraction, double scale, size_t n) {
  const double position = fraction * static_cast<double>(n) / scale - 0.5;
  if (!(position > 0)) return {0, 0};
  if (position >= static_cast<double>(n - 1)) return {n - 1, 0};
  const double low = std::floor(position);
  return {static_cast<size_t>(low), position - low};
}

/// Puts the elements of these ranks, in increasing order, where they stand in the sorted slice.
void placeRanks(std::span<double> x, const std::vector<size_t>& ranks) {
  if (ranks.size() > kManyRanks) return std::sort(x.begin(), x.end());
  auto begin = x.begin();
  for (const size_t rank : ranks) {
    const auto at = x.begin() + static_cast<ptrdiff_t>(rank);
    if (at < begin) continue;  // the rank of the one before
    std::nth_element(begin, at, x.end());
    begin = at + 1;
  }
}

}  // namespace

bool isBefore(ComplexDouble a, ComplexDouble b) {
  const double m = a.magnitude();
  const double n = b.magnitude();
  if (m != n) return m < n;
  return std::atan2(a.imaginary, a.real) < std::atan2(b.imaginary, b.real);
}

double median(std::span<double> x) { return medianOf(x); }
ComplexDouble median(std::span<ComplexDouble> x) { return medianOf(x); }
Mode<double> mode(std::span<double> x) { return modeOf(x); }
Mode<ComplexDouble> mode(std::span<ComplexDouble> x) { return modeOf(x); }

void quantiles(std::span<double> all, std::span<const double> fractions, double scale, double* out) {
  const std::span<double> x = withoutNaN(all);
  if (x.empty()) return void(std::fill_n(out, fractions.size(), kNaN));
  std::vector<size_t> ranks;
  for (const double fraction : fractions) {
    const Place place = placeOf(fraction, scale, x.size());
    ranks.push_back(place.low);
    if (place.share > 0) ranks.push_back(place.low + 1);
  }
  std::sort(ranks.begin(), ranks.end());
  placeRanks(x, ranks);
  for (size_t k = 0; k < fractions.size(); ++k) {
    const auto [low, share] = placeOf(fractions[k], scale, x.size());
    const bool between = share > 0 && x[low] != x[low + 1];
    out[k] = between ? x[low] * (1 - share) + x[low + 1] * share : x[low];
  }
}

}  // namespace kelo::builtins
