// Questions about the size of a value. A handle counts as one element.
#include <algorithm>

#include "builtins/arrays/handlers.h"
#include "interpreter/reader.h"
#include "messages/catalogue/arrays.h"

namespace kelo::builtins::arrays {
namespace {

const SizeVector& sizeOf(const Storable& value) {
  static const SizeVector kOne = SizeVector::scalar();
  return value.isArray() ? value.size() : kOne;
}

NodeValue lengthsAsRow(const SizeVector& size) {
  auto row = IntArray::uninitialized(SizeVector(1, size.ndim()));
  std::copy_n(size.vec().begin(), size.ndim(), row.writable());
  return row;
}

}  // namespace

NodeValue size(Call& call) {
  const SizeVector& size = sizeOf(call.arg(0));
  if (call.count() == 2) {
    if (call.outputCount() > 1) throw Wording::sentence(text::kSizeOneOutput).complaint(call);
    return NodeValue(size.dimensionLength(read::dimension(call, 1, Wording::sentence(text::kSizeDimension))));
  }
  if (call.outputCount() == 1) return lengthsAsRow(size);
  std::vector<Storable> lengths;
  for (const int64_t length : size.broughtTo(call.outputCount())) lengths.emplace_back(IntArray(length));
  return call.outputs(std::move(lengths));
}

NodeValue shapeQuery(Call& call) {
  const SizeVector& size = sizeOf(call.arg(0));
  switch (call.selector<ShapeQuery>()) {
    case ShapeQuery::ndims: return NodeValue(size.ndim());
    case ShapeQuery::numel: return NodeValue(size.numElements());
    case ShapeQuery::length: break;
  }
  if (size.hasZeroLength()) return NodeValue(int64_t{0});
  return NodeValue(std::ranges::max(size.vec()));
}

}  // namespace kelo::builtins::arrays
