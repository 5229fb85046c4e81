// Reductions over several dimensions: these are brought together and become one, so that everything
// that follows is a reduction along one dimension.
#include "builtins/reductions/handlers.h"

namespace kelo::builtins {
namespace {

bool isConsecutive(const std::vector<int64_t>& dimensions) {
  return dimensions.back() - dimensions.front() + 1 == static_cast<int64_t>(dimensions.size());
}

/// The lengths with the joined dimensions in the place of the first of them.
SizeVector joinedSize(const SizeVector& size, const std::vector<int64_t>& dimensions) {
  std::vector<int64_t> lengths(size.vec().begin(), size.vec().end());
  int64_t joined = 1;
  for (const int64_t d : dimensions) {
    if (d > size.count()) continue;
    joined *= lengths[static_cast<size_t>(d - 1)];
    lengths[static_cast<size_t>(d - 1)] = 1;
  }
  if (dimensions.front() <= size.count()) lengths[static_cast<size_t>(dimensions.front() - 1)] = joined;
  return SizeVector(lengths);
}

/// The dimensions of `size` from 1 in the order in which they are to stand: the joined ones
/// together at the first's place.
std::vector<int64_t> joinedOrder(const SizeVector& size, const std::vector<int64_t>& dimensions) {
  std::vector<int64_t> order;
  for (int64_t d = 1; d <= size.count(); ++d) {
    if (d == dimensions.front())
      order.insert(order.end(), dimensions.begin(), dimensions.end());
    else if (!std::binary_search(dimensions.begin(), dimensions.end(), d))
      order.push_back(d);
  }
  std::erase_if(order, [&](int64_t d) { return d > size.count(); });
  return order;
}

template <class T>
void permuteInto(T* out, const T* in, const SizeVector& size, const std::vector<int64_t>& order) {
  std::vector<int64_t> subscripts(order.size());
  int64_t offset = 0;
  for (int64_t i = 0; i < size.numElements(); ++i) {
    out[i] = in[offset];
    for (size_t k = 0; k < order.size(); ++k) {
      const int64_t length = size.dimensionLength(order[k]);
      const int64_t stride = size.strideOf(order[k]);
      offset += stride;
      if (++subscripts[k] < length) break;
      offset -= stride * length;
      subscripts[k] = 0;
    }
  }
}

}  // namespace

std::optional<std::vector<int64_t>> namedDimensions(const Storable& argument, const SizeVector& size) {
  std::vector<int64_t> result;
  if (read::isText(argument)) {
    if (toUtf8(argument.numeric()->asChar()) != "all") return std::nullopt;
    for (int64_t d = 1; d <= size.count(); ++d) result.push_back(d);
    return result;
  }
  const auto numbers = read::asIntegers(argument);
  if (!numbers || numbers->empty() || argument.numeric()->is(Kind::Char) || !argument.size().isVector())
    return std::nullopt;
  result = *numbers;
  std::sort(result.begin(), result.end());
  const bool repeats = std::adjacent_find(result.begin(), result.end()) != result.end();
  return repeats || result.front() < 1 ? std::nullopt : std::optional(result);
}

template <class T>
TypedArray<T> joinDimensions(const TypedArray<T>& a, const std::vector<int64_t>& dimensions) {
  const SizeVector joined = joinedSize(a.size(), dimensions);
  if (isConsecutive(dimensions)) return a.reshaped(joined);
  auto result = TypedArray<T>::uninitialized(joined);
  permuteInto(result.writable(), a.data(), a.size(), joinedOrder(a.size(), dimensions));
  return result;
}

template DoubleArray joinDimensions(const DoubleArray&, const std::vector<int64_t>&);
template ComplexDoubleArray joinDimensions(const ComplexDoubleArray&, const std::vector<int64_t>&);

}  // namespace kelo::builtins
