// `filter`: the rational digital filter in direct form II transposed, along one dimension.
//
// Each line of x runs through by itself with its own column of state. Without feedback the outputs
// are a convolution with b, all at once, and the state at the end comes from the last samples.
// Otherwise one sample follows the other; the short filters, which most are, keep their state in
// registers.
#include "builtins/polynomials/convolve.h"
#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "builtins/slices.h"
#include "messages/catalogue/polynomials.h"

namespace kelo::builtins {
namespace {

template <class T>
struct Coefficients {
  std::vector<T> b, a;  // divided by a(1), equally long
  bool hasFeedback;
  int64_t states() const { return static_cast<int64_t>(b.size()) - 1; }
};

template <class T>
Coefficients<T> normalized(std::span<const T> b, std::span<const T> a) {
  const size_t length = std::max(a.size(), b.size());
  const auto divided = [&](std::span<const T> from) {
    std::vector<T> to(length);
    std::transform(from.begin(), from.end(), to.begin(), [&](T x) { return x / a[0]; });
    return to;
  };
  return {divided(b), divided(a), a.size() > 1};
}

/// n samples one after the other; z is the state before and after. y may be x.
template <class T>
void runLong(const Coefficients<T>& c, const T* x, T* y, int64_t n, T* z) {
  const int64_t states = c.states();
  const T *b = c.b.data(), *a = c.a.data();
  for (int64_t k = 0; k < n; ++k) {
    const T in = x[k];
    const T out = y[k] = b[0] * in + z[0];
#pragma GCC ivdep
    for (int64_t i = 0; i + 1 < states; ++i) z[i] = b[i + 1] * in + z[i + 1] - a[i + 1] * out;
    z[states - 1] = b[states] * in - a[states] * out;
  }
}

/// The same for a number of states that the compiler knows.
template <int kStates, class T>
void runShort(const Coefficients<T>& c, const T* x, T* y, int64_t n, T* state) {
  T b[kStates + 1], a[kStates + 1], z[kStates];
  std::copy_n(c.b.data(), kStates + 1, b);
  std::copy_n(c.a.data(), kStates + 1, a);
  std::copy_n(state, kStates, z);
  for (int64_t k = 0; k < n; ++k) {
    const T in = x[k];
    const T out = y[k] = b[0] * in + z[0];
    for (int i = 0; i + 1 < kStates; ++i) z[i] = b[i + 1] * in + z[i + 1] - a[i + 1] * out;
    z[kStates - 1] = b[kStates] * in - a[kStates] * out;
  }
  std::copy_n(z, kStates, state);
}

/// REQUIRES: there is some state
template <class T>
void runSamples(const Coefficients<T>& c, const T* x, T* y, int64_t n, T* z) {
  switch (c.states()) {
    case 1: return runShort<1>(c, x, y, n, z);
    case 2: return runShort<2>(c, x, y, n, z);
    case 3: return runShort<3>(c, x, y, n, z);
    case 4: return runShort<4>(c, x, y, n, z);
    case 5: return runShort<5>(c, x, y, n, z);
    case 6: return runShort<6>(c, x, y, n, z);
    default: return runLong(c, x, y, n, z);
  }
}

/// REQUIRES: c has no feedback; n >= c.states(); y is not x
template <class T>
void runSums(const Coefficients<T>& c, const T* x, T* y, int64_t n, T* z) {
  const int64_t states = c.states();
  convolve(std::span(x, static_cast<size_t>(n)), std::span<const T>(c.b), 0, n, y);
  for (int64_t k = 0; k < states; ++k) y[k] = y[k] + z[k];
  std::fill_n(z, states, T{});
  for (int64_t k = 0; k < states; ++k) {  // sample n - states + k is in the states up to k
    for (int64_t i = 0; i <= k; ++i) z[i] = z[i] + c.b[static_cast<size_t>(states - k + i)] * x[n - states + k];
  }
}

template <class T>
void runLine(const Coefficients<T>& c, const T* x, T* y, int64_t n, T* z) {
  if (n == 0) return;
  if (!c.hasFeedback && n >= c.states())
    runSums(c, x, y, n, z);
  else
    runSamples(c, x, y, n, z);
}

template <class T>
struct Filtered {
  TypedArray<T> y, state;
};

/// `state` has one column of c.states() elements for each line of x.
template <class T>
Filtered<T> filtered(const Coefficients<T>& c, const TypedArray<T>& x, TypedArray<T> state, int64_t dim) {
  const Slices lines(x.size(), dim);
  auto result = TypedArray<T>::uninitialized(x.size());
  if (x.isEmpty()) return {std::move(result), std::move(state)};
  const int64_t n = lines.length;
  T* out = result.writable();
  T* states = state.writable();
  const T* in = x.data();
  platform::parallelForUnits(lines.count(), n * (c.states() + 1), [&](int64_t begin, int64_t end) {
    std::vector<T> line, filteredLine;
    for (int64_t k = begin; k < end; ++k) {
      const int64_t first = lines.first(k);
      if (lines.inner == 1) {
        runLine(c, in + first, out + first, n, states + k * c.states());
        continue;
      }
      line.resize(static_cast<size_t>(n)), filteredLine.resize(static_cast<size_t>(n));
      for (int64_t i = 0; i < n; ++i) line[static_cast<size_t>(i)] = in[first + i * lines.inner];
      runLine(c, line.data(), filteredLine.data(), n, states + k * c.states());
      for (int64_t i = 0; i < n; ++i) out[first + i * lines.inner] = filteredLine[static_cast<size_t>(i)];
    }
  });
  return {std::move(result), std::move(state)};
}

/// The size of the state: its own dimension first, then those of x but `dim`.
SizeVector stateSize(const SizeVector& x, int64_t dim, int64_t states) {
  std::vector<int64_t> lengths = {states};
  for (int64_t d = 1; d <= std::max<int64_t>(2, x.count()); ++d) {
    if (d != dim) lengths.push_back(x.dimensionLength(d));
  }
  return SizeVector(lengths);
}

const char* signatureOf(const Call& call) {
  static constexpr const char* kSignatures[] = {"b, a, x", "b, a, x, wi", "b, a, x, wi, dim"};
  return kSignatures[call.count() - 3];
}

/// The initial state in the size that it must have: given so, or as one column for all lines, or
/// empty for zeros.
template <class T>
TypedArray<T> initialState(const Call& call, TypedArray<T> wi, const SizeVector& size, int64_t states) {
  const int64_t lines = size.numElements() / std::max<int64_t>(states, 1);
  if (wi.size() == size) return wi;
  if (wi.isEmpty()) return TypedArray<T>(size, T{});
  const char* signature = signatureOf(call);
  if (!wi.size().isVector()) throw expectation(text::wrongStateSize(signature));
  if (wi.numElements() != states) {
    throw Wording{signature, text::kStateVector, text::kStateCount}.complaint(call);
  }
  auto all = TypedArray<T>::uninitialized(size);
  T* to = all.writable();
  for (int64_t k = 0; k < lines; ++k) std::copy_n(wi.data(), states, to + k * states);
  return all;
}

}  // namespace

NodeValue filter(Call& call) {
  const char* signature = signatureOf(call);
  NumericArray b = takeVector(call, 0, {signature, "b", predicate::kVectorOfNumbers});
  NumericArray a = takeVector(call, 1, {signature, "a", predicate::kVectorOfNumbers});
  if (b.isEmpty()) throw Wording{signature, "b", text::kNonEmpty}.complaint(call);
  if (a.isEmpty()) throw Wording{signature, "a", text::kNonEmpty}.complaint(call);
  NumericArray x = read::takeNumeric(call, 2, {signature, "x", predicate::kNumericArray});
  NumericArray wi;
  if (call.count() > 3) wi = read::takeNumeric(call, 3, {signature, "wi", predicate::kNumericArray});
  const int64_t dim = call.count() > 4 ? read::dimension(call, 4, {signature, "dim", text::kPositiveDimension})
                                       : x.size().defaultDimension();
  return inCommonKind(
      [&](auto numerator, auto divisor, auto samples, auto state) {
        using T = typename decltype(samples)::Element;
        if (isZero(divisor[0])) {
          const char* should = kIsComplex<T> ? text::kNonZeroMagnitude : text::kNonZero;
          throw Wording{signature, text::kFirstOfA, should}.complaint(call);
        }
        const Coefficients<T> c = normalized(numerator.values(), divisor.values());
        const SizeVector size = stateSize(samples.size(), dim, c.states());
        auto [y, last] = filtered(c, samples, initialState(call, std::move(state), size, c.states()), dim);
        return call.outputs({std::move(y), std::move(last)});
      },
      std::move(b), std::move(a), std::move(x), std::move(wi));
}

}  // namespace kelo::builtins
