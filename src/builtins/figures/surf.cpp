// surf: one surface from heights, or from three coordinates. Tested by
// tests/transcripts/figures/surf.txt.
#include "builtins/figures/handlers.h"
#include "figures/figure_panel.h"
#include "interpreter/environment.h"
#include "interpreter/reader.h"
#include "messages/catalogue/plot_commands.h"

namespace kelo::builtins {
namespace {

using figures::SCNVector3;
using figures::SurfData;
using Surface = SurfData::Surface;

DoubleArray realMatrix(const Call& call, int position, const Wording& words) {
  DoubleArray matrix = read::real(call, position, words);
  if (!matrix.size().isMatrix()) throw words.complaint(call);
  return matrix;
}

template <class F>
Surface surfaceOf(const SizeVector& size, F&& point) {
  Surface surface;
  surface.attributes.numRows = size.rows();
  surface.attributes.numCols = size.columns();
  surface.points = figures::SharedPoints<SCNVector3>::made(size.numElements(), point);
  return surface;
}

/// NOTE: intended: x runs with the row and y with the column.
Surface surfaceOfHeights(const Call& call) {
  const DoubleArray z = realMatrix(call, 0, {"z", "z", text::kRealMatrix});
  if (z.isEmpty()) return {};
  const int64_t rows = z.size().rows();
  return surfaceOf(z.size(), [&](int64_t k) {
    return SCNVector3{static_cast<float>(k % rows + 1), static_cast<float>(k / rows + 1), static_cast<float>(z[k])};
  });
}

Surface surfaceOfCoordinates(const Call& call) {
  const char* const signature = "x, y, z";
  const DoubleArray x = realMatrix(call, 0, {signature, "x", text::kRealMatrix});
  const DoubleArray y = realMatrix(call, 1, {signature, "y", text::kRealMatrix});
  const DoubleArray z = realMatrix(call, 2, {signature, "z", text::kRealMatrix});
  if (x.isEmpty() || y.isEmpty() || z.isEmpty()) return {};
  if (x.size() != y.size() || x.size() != z.size()) throw Wording::sentence(text::kSurfSizes).complaint(call);
  return surfaceOf(z.size(), [&](int64_t k) {
    return SCNVector3{static_cast<float>(x[k]), static_cast<float>(y[k]), static_cast<float>(z[k])};
  });
}

}  // namespace

NodeValue surf(Call& call) {
  if (call.count() == 2) throw Wording::sentence(text::kSurfInputs).complaint(call);
  SurfData surface({call.count() == 1 ? surfaceOfHeights(call) : surfaceOfCoordinates(call)});
  call.environment.runOnMain([&] { call.environment.figures.surfDataShow(std::move(surface)); });
  return NodeValue::nothing();
}

}  // namespace kelo::builtins
