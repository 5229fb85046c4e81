// `conv` and `deconv`: the product of two polynomials and its inverse, the long division.
#include "builtins/polynomials/convolve.h"
#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "messages/catalogue/polynomials.h"

namespace kelo::builtins {
namespace {

/// What `conv` was given. Exactly one of the pairs is present.
struct ArgConv {
  enum class Shape : int { full, valid, same };
  template <class T>
  struct Operands {
    TypedArray<T> u, v;
  };
  using Complex = Operands<ComplexDouble>;
  using Real = Operands<double>;

  Shape shape = Shape::full;
  std::optional<Complex> complex;
  std::optional<Real> real;
};

ArgConv readArgConv(Call& call) {
  constexpr const char* kSignature = "u, v, shape";
  NumericArray u = takeVector(call, 0, {kSignature, "u", predicate::kVectorOfNumbers});
  NumericArray v = takeVector(call, 1, {kSignature, "v", predicate::kVectorOfNumbers});
  if (u.isEmpty() || v.isEmpty()) throw expectation(text::kEmptyConvolution);
  ArgConv args;
  if (call.count() == 3) {
    args.shape = static_cast<ArgConv::Shape>(
        read::option(call, 2, {kSignature, "shape", text::kShapeOfConvolution}, {"full", "valid", "same"}));
  }
  if (u.has(Property::allReals) && v.has(Property::allReals)) {
    args.real = {std::move(u).toDoubleArray(), std::move(v).toDoubleArray()};
  } else {
    args.complex = {std::move(u).toComplexArray(), std::move(v).toComplexArray()};
  }
  return args;
}

// The full result lies as the longer vector does, of two equally long ones as v; a part of it lies
// as u.
template <class T>
TypedArray<T> convolution(const ArgConv::Operands<T>& op, ArgConv::Shape shape) {
  using enum ArgConv::Shape;
  const int64_t nu = op.u.numElements(), nv = op.v.numElements();
  const int64_t count = shape == full ? nu + nv - 1 : shape == same ? nu : std::max<int64_t>(nu - nv + 1, 0);
  const int64_t first = shape == full ? 0 : shape == same ? nv / 2 : nv - 1;
  const SizeVector& model = shape != full || nu > nv ? op.u.size() : op.v.size();
  auto result = TypedArray<T>::uninitialized(alike(model, count));
  if (count > 0) convolve(op.u.values(), op.v.values(), first, count, result.writable());
  return result;
}

// Long division in place: what is left of b becomes the remainder.
template <class T>
NodeValue quotient(const Call& call, TypedArray<T> b, const TypedArray<T>& a) {
  const int64_t na = a.numElements(), count = b.numElements() - na + 1;
  if (count <= 0) return call.outputs({TypedArray<T>(T{}), std::move(b)});
  auto quotient = TypedArray<T>::uninitialized(alike(b.size(), count));
  T* q = quotient.writable();
  T* rest = b.writable();
  const T* divisor = a.data();
  for (int64_t k = 0; k < count; ++k) {
    const T factor = q[k] = rest[k] / divisor[0];
    rest[k] = T{};
#pragma GCC ivdep
    for (int64_t j = 1; j < na; ++j) rest[k + j] = rest[k + j] - factor * divisor[j];
  }
  return call.outputs({std::move(quotient), std::move(b)});
}

}  // namespace

NodeValue conv(Call& call) {
  const ArgConv args = readArgConv(call);
  if (args.real) return convolution(*args.real, args.shape);
  return convolution(*args.complex, args.shape);
}

NodeValue deconv(Call& call) {
  NumericArray b = takeVector(call, 0, {"b, a", "b", predicate::kVectorOfNumbers});
  NumericArray a = takeVector(call, 1, {"b, a", "a", predicate::kVectorOfNumbers});
  if (b.isEmpty() || a.isEmpty()) throw Wording{"b, a", "a and b", text::kNonEmpty}.complaint(call);
  return inCommonKind(
      [&](auto numerator, auto divisor) {
        if (isZero(divisor[0])) throw Wording{"b, a", "a(1)", text::kNonZero}.complaint(call);
        return quotient(call, std::move(numerator), divisor);
      },
      std::move(b), std::move(a));
}

}  // namespace kelo::builtins
