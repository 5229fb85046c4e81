// Flips along a dimension, and rotation by quarter turns.
#include <utility>

#include "builtins/arrays/handlers.h"
#include "interpreter/reader.h"
#include "messages/catalogue/arrays.h"
#include "values/element_view.h"

namespace kelo::builtins::arrays {
namespace {

Storable flipped(Storable array, int64_t dimension) {
  const SizeVector size = array.size();
  if (dimension > size.ndim() || size.hasZeroLength()) return array;
  auto axes = axesOf(size);
  ViewAxis& axis = axes[static_cast<size_t>(dimension - 1)];
  if (axis.length == 1) return array;
  const int64_t last = (axis.length - 1) * axis.stride;
  axis.stride = -axis.stride;
  return viewed(std::move(array), size, axes, last);
}

}  // namespace

NodeValue flip(Call& call) {
  const char* signature = call.count() == 1 ? "A" : "A, dim";
  const SizeVector& size = read::array(call, 0, {signature, "A", predicate::kArray}).size();
  int64_t dimension = size.defaultDimension();
  if (call.selector<Flip>() == Flip::fliplr) dimension = 2;
  if (call.selector<Flip>() == Flip::flipud) dimension = 1;
  if (call.count() == 2) {
    dimension = read::dimension(call, 1, {signature, "dim", text::kFlipDimension});
  }
  return flipped(std::move(call.arg(0)), dimension);
}

// Quarter turns against the clock, of each page of an array.
NodeValue rot90(Call& call) {
  const char* signature = call.count() == 1 ? "A" : "A, k";
  const SizeVector size = read::array(call, 0, {signature, "A", predicate::kArray}).size();
  const int64_t k = call.count() == 1 ? 1 : read::integer(call, 1, {signature, "k", predicate::kInteger});
  const int64_t turns = ((k % 4) + 4) % 4;
  auto axes = axesOf(size);
  const int64_t rows = axes[0].length;
  const int64_t columns = axes[1].length;
  int64_t first = 0;
  if (turns == 1 || turns == 2) {  // the result begins with the last column
    first += (columns - 1) * rows;
    axes[1].stride = -axes[1].stride;
  }
  if (turns == 2 || turns == 3) {  // with the last row
    first += rows - 1;
    axes[0].stride = -axes[0].stride;
  }
  if (turns % 2 == 0) return viewed(std::move(call.arg(0)), size, axes, size.hasZeroLength() ? 0 : first);
  std::swap(axes[0], axes[1]);
  const SizeVector turned = size.withDimension(1, columns).withDimension(2, rows);
  return viewed(std::move(call.arg(0)), turned, axes, size.hasZeroLength() ? 0 : first);
}

}  // namespace kelo::builtins::arrays
