// Arrays of a given size or count: filled ones, points at equal distances, blanks.

#include "builtins/arrays/handlers.h"
#include "builtins/arrays/size_arguments.h"
#include "messages/catalogue/arrays.h"
#include "platform/parallel.h"
#include "values/numbers.h"

namespace kelo::builtins::arrays {
namespace {

constexpr SizeWords kSizeWords{
    Wording::sentence(text::kSizeNotNumeric),   Wording::sentence(text::kSizeNotVector),
    Wording::sentence(text::kSizeNotIntegers),  Wording::sentence(text::kSizesNotScalars),
    Wording::sentence(text::kSizesNotIntegers),
};

template <class T>
NodeValue filled(const SizeVector& size, T value) {
  if (size.isScalar()) return TypedArray<T>(value);
  auto result = TypedArray<T>::uninitialized(size);
  T* out = result.writable();
  platform::parallelFor(size.numElements(),
                        [&](int64_t begin, int64_t end) { std::fill(out + begin, out + end, value); });
  return result;
}

NodeValue identityMatrix(const SizeVector& size) {
  if (!size.isMatrix()) throw expectation(text::kEyeOfManyDimensions);
  DoubleArray result(size, 0.0);
  const int64_t rows = size.rows();
  double* out = result.writable();
  for (int64_t k = 0; k < std::min(rows, size.columns()); ++k) out[k * (rows + 1)] = 1;
  return result;
}

}  // namespace

NodeValue fill(Call& call) {
  const SizeVector size = sizeArguments(call, 0, kSizeWords);
  switch (call.selector<Fill>()) {
    case Fill::zeros: break;
    case Fill::ones: return filled(size, 1.0);
    case Fill::eye: return identityMatrix(size);
    case Fill::nan: return filled(size, kNaN);
    case Fill::inf: return filled(size, kInf);
    case Fill::true_: return filled(size, true);
    case Fill::false_: return filled(size, false);
  }
  return filled(size, 0.0);
}

namespace {

// n points from a to b. NOTE: intended: the last one is step * (n - 1) + a, which may miss b by the
// last bit.
struct Spacing {
  Spacing(double a, double b, int64_t n) : a(a), b(b), n(n), step((b - a) / static_cast<double>(n - 1)) {}
  double operator()(int64_t i) const {
    if (n <= 2) return i == n - 1 ? b : a;
    return step * static_cast<double>(i) + a;
  }
  double a, b;
  int64_t n;
  double step;
};

ComplexDouble pointOf(const NumericArray& scalar) { return scalar.toComplexArray().scalar(); }

NodeValue realPoints(const Spacing& spacing) {
  auto result = DoubleArray::uninitialized(SizeVector(1, spacing.n));
  double* out = result.writable();
  if (spacing.n <= 2) {
    for (int64_t i = 0; i < spacing.n; ++i) out[i] = spacing(i);
    return result;
  }
  // Positions within a block are short integers, which the processor converts in parallel.
  constexpr int64_t kBlock = 1024;
  platform::parallelFor(spacing.n, [=](int64_t begin, int64_t end) {
    for (int64_t b = begin; b < end; b += kBlock) {
      const auto first = static_cast<double>(b);
      const int count = static_cast<int>(std::min(kBlock, end - b));
      for (int k = 0; k < count; ++k) out[b + k] = spacing.step * (first + static_cast<double>(k)) + spacing.a;
    }
  });
  return result;
}

NodeValue complexPoints(const Spacing& real, const Spacing& imaginary) {
  auto result = ComplexDoubleArray::uninitialized(SizeVector(1, real.n));
  ComplexDouble* out = result.writable();
  for (int64_t i = 0; i < real.n; ++i) out[i] = {real(i), imaginary(i)};
  return result;
}

const NumericArray& numericScalar(const Call& call, int position, const Wording& words) {
  const NumericArray& array = read::numeric(call, position, words);
  if (!array.isScalar() || !array.has(Property::scalarInNumbers)) throw words.complaint(call);
  return array;
}

}  // namespace

NodeValue linspace(Call& call) {
  const char* signature = call.count() == 2 ? "a, b" : "a, b, n";
  const NumericArray& first = numericScalar(call, 0, {signature, "a", predicate::kNumericScalar});
  const NumericArray& last = numericScalar(call, 1, {signature, "b", predicate::kNumericScalar});
  const int64_t count = call.count() == 3 ? read::integer(call, 2, {signature, "n", predicate::kFiniteInteger}) : 100;
  const int64_t n = std::max<int64_t>(count, 0);
  const ComplexDouble a = pointOf(first);
  const ComplexDouble b = pointOf(last);
  const Spacing real(a.real, b.real, n);
  if (first.has(Property::allReals) && last.has(Property::allReals)) return realPoints(real);
  return complexPoints(real, Spacing(a.imaginary, b.imaginary, n));
}

NodeValue blanks(Call& call) {
  const int64_t n = read::integer(call, 0, {"n", "n", predicate::kFiniteInteger});
  return CharArray(SizeVector(1, std::max<int64_t>(n, 0)), Character(U' '));
}

}  // namespace kelo::builtins::arrays
