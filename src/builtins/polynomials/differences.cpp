// `diff` and `gradient`: differences of neighbours along a dimension.
//
// Within one block of slices (see slices.h) the neighbour of an element along the dimension is
// always the same number of elements away, so a block is one plain loop whatever the dimension is.
#include <fmt/format.h>

#include "builtins/polynomials/handlers.h"
#include "builtins/polynomials/operands.h"
#include "builtins/slices.h"
#include "messages/catalogue/polynomials.h"
#include "platform/parallel.h"

namespace kelo::builtins {
namespace {

/// out[i] = f(i) for begin to end - 1. REQUIRES: f does not throw
template <class T, class F>
void fillRange(T* out, int64_t begin, int64_t end, F f) {
  platform::parallelFor(end - begin, [=](int64_t from, int64_t to) {
#pragma GCC ivdep
    for (int64_t i = begin + from; i < begin + to; ++i) out[i] = f(i);
  });
}

/// The operators that run along one dimension.
template <class T>
class DimGradientOperator {
 public:
  DimGradientOperator(const SizeVector& size, int64_t dim) : size_(size), dim_(dim), slices_(size, dim) {}

  /// The differences of neighbours; the dimension becomes one shorter.
  TypedArray<T> difference(const TypedArray<T>& a) const {
    auto result = TypedArray<T>::uninitialized(reducedSize(size_, dim_, std::max<int64_t>(slices_.length - 1, 0)));
    T* out = result.writable();
    const int64_t inner = slices_.inner, block = (slices_.length - 1) * inner;
    for (int64_t o = 0; o < slices_.outer && block > 0; ++o) {
      const T* in = a.data() + o * slices_.length * inner;
      fillRange(out + o * block, 0, block, [=](int64_t i) { return in[i + inner] - in[i]; });
    }
    return result;
  }

  /// Central differences over 2h, at both ends one-sided ones over h; zeros where there are fewer
  /// than two points.
  TypedArray<T> gradient(const TypedArray<T>& a, T h) const {
    if (slices_.length < 2) return TypedArray<T>(size_, T{});
    auto result = TypedArray<T>::uninitialized(size_);
    T* out = result.writable();
    const int64_t inner = slices_.inner, block = slices_.length * inner;
    const T step = h + h;
    for (int64_t o = 0; o < slices_.outer; ++o) {
      const T* in = a.data() + o * block;
      T* to = out + o * block;
      fillRange(to, 0, inner, [=](int64_t i) { return (in[i + inner] - in[i]) / h; });
      fillRange(to, inner, block - inner, [=](int64_t i) { return (in[i + inner] - in[i - inner]) / step; });
      fillRange(to, block - inner, block, [=](int64_t i) { return (in[i] - in[i - inner]) / h; });
    }
    return result;
  }

 private:
  SizeVector size_;
  int64_t dim_;
  Slices slices_;
};

template <class T>
TypedArray<T> differences(TypedArray<T> a, int64_t order, int64_t dim) {
  const int64_t length = a.size().dimensionLength(dim);
  if (a.isEmpty()) return TypedArray<T>(reducedSize(a.size(), dim, length > order ? length - order : 0), T{});
  if (length <= order) throw expectation(text::tooShortForDifference(order));
  for (; order > 0; --order) a = DimGradientOperator<T>(a.size(), dim).difference(a);
  return a;
}

/// The spacings h1, h2, ... of `gradient`; 1 where none is given.
std::vector<NumericArray> takeSpacings(Call& call, bool isVector, int64_t ndim) {
  const int64_t given = call.count() - 1;
  if (isVector && given > 1) throw expectation(text::kSpacingOfVector);
  if (!isVector && given > 1 && given != ndim) throw expectation(text::kSpacingsOfArray);
  std::vector<NumericArray> spacings;
  for (int k = 1; k <= given; ++k) {
    const std::string name = given == 1 ? "h" : fmt::format("h{}", k);
    const Wording words = {given == 1 ? "F, h" : "F, h1, ..., hk", name.c_str(), text::kSpacing};
    const NumericArray& h = read::nonChar(call, k, words);
    if (!h.isScalar()) throw words.complaint(call);
    spacings.push_back(h);
  }
  return spacings;
}

/// The dimension of output k, from 0: columns first, then rows, then the others. A vector has the
/// one it lies in.
int64_t dimensionOf(int64_t k, const SizeVector& size) {
  if (size.isVector()) return size.isColumn() && !size.isScalar() ? 1 : 2;
  return k == 0 ? 2 : k == 1 ? 1 : k + 1;
}

}  // namespace

NodeValue diff(Call& call) {
  constexpr const char* kSignature = "X, n, dim";
  NumericArray x = read::takeNumeric(call, 0, {kSignature, "X", predicate::kNumericArray});
  const int64_t order =
      call.count() < 2 ? 1 : read::integer(call, 1, {kSignature, "n", predicate::kPositiveInteger}, 1);
  const int64_t dim = call.count() < 3 ? x.size().defaultDimension()
                                       : read::dimension(call, 2, {kSignature, "dim", text::kPositiveDimension});
  return inCommonKind([&](auto a) { return NodeValue(differences(std::move(a), order, dim)); }, std::move(x));
}

NodeValue gradient(Call& call) {
  const char* signature = call.count() == 1 ? "F" : call.count() == 2 ? "F, h" : "F, h1, ..., hk";
  NumericArray f = read::takeNumeric(call, 0, {signature, "F", predicate::kNumericArray});
  const bool isVector = f.size().isVector();
  const int64_t ndim = f.size().ndim();
  if (isVector && call.outputCount() > 1) throw expectation(text::kOutputsOfVectorGradient);
  if (call.outputCount() > ndim) throw expectation(text::kOutputsOfGradient);
  const std::vector<NumericArray> spacings = takeSpacings(call, isVector, ndim);
  std::vector<Storable> results;
  for (int64_t k = 0; k < call.outputCount(); ++k) {
    const NumericArray h =
        spacings.empty() ? NumericArray(1.0) : spacings[spacings.size() == 1 ? 0 : static_cast<size_t>(k)];
    results.push_back(inCommonKind(
        [&](auto a, auto spacing) {
          const DimGradientOperator<typename decltype(a)::Element> along(a.size(), dimensionOf(k, a.size()));
          return Storable(along.gradient(a, spacing[0]));
        },
        f, h));
  }
  return call.outputs(std::move(results));
}

}  // namespace kelo::builtins
