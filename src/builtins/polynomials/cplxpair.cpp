// `cplxpair`: complex numbers ordered so that conjugates stand side by side.
//
// A slice is split into real and other numbers. The latter are ordered by real part; those whose
// real parts agree within the tolerance form a group, in which the magnitudes of the imaginary
// parts tell who goes with whom.
#include <limits>

#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "builtins/slices.h"
#include "messages/catalogue/polynomials.h"

namespace kelo::builtins {
namespace {

using Numbers = std::vector<ComplexDouble>;

bool isNearlyReal(ComplexDouble z, double tolerance) {
  const double magnitude = z.magnitude();
  return z.imaginary == 0 || (std::isfinite(magnitude) && std::fabs(z.imaginary) <= tolerance * magnitude);
}

bool areConjugates(ComplexDouble a, ComplexDouble b, double tolerance) {
  return a == conj(b) || (a - conj(b)).magnitude() <= tolerance * a.magnitude();
}

/// Appends the pairs of one group. False when some number is left alone.
bool appendPairs(std::span<const ComplexDouble> group, double tolerance, Numbers& out) {
  Numbers below, above;
  for (const ComplexDouble z : group) (z.imaginary < 0 ? below : above).push_back(z);
  if (below.size() != above.size()) return false;
  const auto nearerToAxis = [](ComplexDouble a, ComplexDouble b) {
    return std::fabs(a.imaginary) < std::fabs(b.imaginary);
  };
  std::stable_sort(below.begin(), below.end(), nearerToAxis);
  std::stable_sort(above.begin(), above.end(), nearerToAxis);
  for (size_t k = 0; k < below.size(); ++k) {
    if (!areConjugates(below[k], above[k], tolerance)) return false;
    out.insert(out.end(), {below[k], above[k]});
  }
  return true;
}

/// The numbers in their new order; absent when they do not pair off.
std::optional<Numbers> paired(const Numbers& numbers, double tolerance) {
  Numbers others, reals, out;
  for (const ComplexDouble z : numbers) {
    if (isNearlyReal(z, tolerance))
      reals.push_back({z.real, 0});
    else if (z.hasNaN())
      return std::nullopt;
    else
      others.push_back(z);
  }
  std::stable_sort(others.begin(), others.end(), [](ComplexDouble a, ComplexDouble b) { return a.real < b.real; });
  for (size_t begin = 0, end; begin < others.size(); begin = end) {
    const double reach = tolerance * others[begin].magnitude();
    end = begin + 1;
    while (end < others.size() && !(others[end].real - others[begin].real > reach)) ++end;
    if (!appendPairs(std::span(others).subspan(begin, end - begin), tolerance, out)) return std::nullopt;
  }
  std::stable_sort(reals.begin(), reals.end(), [](ComplexDouble a, ComplexDouble b) {
    return a.real < b.real || (std::isnan(b.real) && !std::isnan(a.real));
  });
  out.insert(out.end(), reals.begin(), reals.end());
  return out;
}

double readTolerance(const Call& call, const char* signature) {
  constexpr double kDefault = 100 * std::numeric_limits<double>::epsilon();
  if (call.count() < 2) return kDefault;
  const Wording words = {signature, "tol", text::kTolerance};
  if (read::numeric(call, 1, words).isEmpty()) return kDefault;
  const double tolerance = read::realScalar(call, 1, words);
  if (!(tolerance >= 0 && tolerance < 1)) throw words.complaint(call);
  return tolerance;
}

}  // namespace

NodeValue cplxpair(Call& call) {
  static constexpr const char* kSignatures[] = {"A", "A, tol", "A, tol, dim"};
  const char* signature = kSignatures[call.count() - 1];
  const NumericArray& a = read::numeric(call, 0, {signature, "A", predicate::kNumericArray});
  const double tolerance = readTolerance(call, signature);
  const int64_t dim = call.count() < 3 ? a.size().defaultDimension()
                                       : read::dimension(call, 2, {signature, "dim", text::kPositiveDimension});
  ComplexDoubleArray result = a.toComplexArray();
  if (result.isEmpty()) return a;
  ComplexDouble* z = result.writable();
  const Slices s(result.size(), dim);
  Numbers slice(static_cast<size_t>(s.length));
  for (int64_t k = 0; k < s.count(); ++k) {
    for (int64_t i = 0; i < s.length; ++i) slice[static_cast<size_t>(i)] = z[s.first(k) + i * s.inner];
    const std::optional<Numbers> ordered = paired(slice, tolerance);
    if (!ordered) throw Wording{signature, "A", text::kConjugatePairs}.complaint(call);
    for (int64_t i = 0; i < s.length; ++i) z[s.first(k) + i * s.inner] = (*ordered)[static_cast<size_t>(i)];
  }
  NumericArray numbers = std::move(result);
  if (a.has(Property::allReals)) return std::move(numbers).toDoubleArray();
  return numbers;
}

}  // namespace kelo::builtins
