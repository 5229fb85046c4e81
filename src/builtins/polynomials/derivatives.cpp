// `polyder` and `polyint`: derivative and integral of polynomials.
#include "builtins/polynomials/convolve.h"
#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "messages/catalogue/polynomials.h"

namespace kelo::builtins {
namespace {

template <class T>
TypedArray<T> derivative(const TypedArray<T>& p) {
  const int64_t degree = p.numElements() - 1;
  if (degree == 0) return TypedArray<T>(T{});
  auto result = TypedArray<T>::uninitialized(SizeVector(1, degree));
  T* out = result.writable();
  for (int64_t k = 0; k < degree; ++k) out[k] = p[k] * T{static_cast<double>(degree - k)};
  return withoutLeadingZeros(result);
}

/// a - b, their constants below each other.
template <class T>
TypedArray<T> difference(const TypedArray<T>& a, const TypedArray<T>& b) {
  const int64_t n = std::max(a.numElements(), b.numElements());
  TypedArray<T> result(SizeVector(1, n), T{});
  T* out = result.writable() + n;
  std::copy(a.values().begin(), a.values().end(), out - a.numElements());
  for (int64_t k = 1; k <= b.numElements(); ++k) out[-k] = out[-k] - b[b.numElements() - k];
  return result;
}

template <class T>
NodeValue quotientRule(const Call& call, const TypedArray<T>& a, const TypedArray<T>& b) {
  TypedArray<T> numerator = difference(polynomialProduct(derivative(a), b), polynomialProduct(a, derivative(b)));
  return call.outputs({withoutLeadingZeros(numerator), withoutLeadingZeros(polynomialProduct(b, b))});
}

NumericArray takePolynomial(Call& call, int position, const Wording& words) {
  NumericArray p = takeVector(call, position, words);
  if (p.isEmpty()) throw expectation(text::kNoCoefficients);
  return p;
}

template <class T>
TypedArray<T> integral(const TypedArray<T>& p, T constant) {
  const int64_t n = p.numElements();
  auto result = TypedArray<T>::uninitialized(SizeVector(1, n + 1));
  T* out = result.writable();
  for (int64_t k = 0; k < n; ++k) out[k] = p[k] / T{static_cast<double>(n - k)};
  out[n] = constant;
  return result;
}

}  // namespace

NodeValue polyder(Call& call) {
  const bool isAlone = call.count() == 1;  // which is a product with 1, or a quotient by 1
  NumericArray first =
      takePolynomial(call, 0, {isAlone ? "p" : "a, b", isAlone ? "p" : "a", predicate::kVectorOfNumbers});
  NumericArray second =
      isAlone ? NumericArray(1.0) : takePolynomial(call, 1, {"a, b", "b", predicate::kVectorOfNumbers});
  return inCommonKind(
      [&](auto a, auto b) -> NodeValue {
        if (call.outputCount() > 1) return quotientRule(call, a, b);
        return derivative(polynomialProduct(a, b));
      },
      std::move(first), std::move(second));
}

NodeValue polyint(Call& call) {
  const char* signature = call.count() == 1 ? "p" : "p, c";
  NumericArray p = takeVector(call, 0, {signature, "p", predicate::kVectorOfNumbers});
  const Wording wordsOfC = {signature, "c", text::kScalarNumber};
  NumericArray c = call.count() == 1 ? NumericArray(0.0) : read::takeNumeric(call, 1, wordsOfC);
  if (!c.has(Property::scalarInNumbers)) throw wordsOfC.complaint(call);
  return inCommonKind([](auto q, auto constant) { return NodeValue(integral(q, constant[0])); }, std::move(p),
                      std::move(c));
}

}  // namespace kelo::builtins
