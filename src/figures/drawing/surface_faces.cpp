// A surface whose x runs with the rows and y with the columns (or the other way round) is painted
// by rows and columns from the far side, which is exact; anything else goes through the general
// order of faces.
#include "figures/drawing/surface_faces.h"

#include <algorithm>

#include "figures/drawing/face_order.h"

namespace kelo::drawing {
namespace {

using figures::SCNVector3;
using Surface = figures::SurfData::Surface;

/// Lines of the mesh are at least so far apart, in points.
constexpr double kMeshApart = 7;

/// Cells of meshes that are cut into triangles, whose order is looked for pair by pair, are at
/// least so large.
constexpr double kLeastTriangle = 6;

struct Corner {
  Vec3 box;
  bool isFinite = false;
  bool isInside = false;
};

bool isInBox(Vec3 p) {
  constexpr double kEdge = 1 + 1e-9;
  return std::fabs(p.x) <= kEdge && std::fabs(p.y) <= kEdge && std::fabs(p.z) <= BoxView::kHeight * kEdge;
}

/// Rows or columns of a mesh that are drawn: every so many, and the last.
std::vector<int64_t> thinned(int64_t count, int64_t stride) {
  std::vector<int64_t> kept;
  for (int64_t i = 0; i < count - 1; i += stride) kept.push_back(i);
  if (count > 0) kept.push_back(count - 1);
  return kept;
}

int64_t strideFor(int64_t count, double extent, double resolution) {
  const double most = std::fmax(extent / resolution, 2);
  return std::max<int64_t>(1, static_cast<int64_t>(std::ceil(static_cast<double>(count - 1) / most)));
}

/// A convex piece while it is cut.
struct Piece {
  int count = 0;
  std::array<Vec3, Face::kMostCorners + 2> points;
  std::array<bool, Face::kMostCorners + 2> isOnMesh;

  void add(Vec3 point, bool onMesh) {
    if (count >= Face::kMostCorners) return;
    points[count] = point;
    isOnMesh[count++] = onMesh;
  }
};

/// Keeps what lies on the inner side of one plane of the box: `side` * coordinate <= bound.
Piece cutAt(const Piece& piece, double Vec3::*coordinate, double side, double bound) {
  Piece kept;
  for (int i = 0; i < piece.count; ++i) {
    const Vec3 a = piece.points[i], b = piece.points[(i + 1) % piece.count];
    const double inA = bound - side * (a.*coordinate), inB = bound - side * (b.*coordinate);
    if (inA >= 0) kept.add(a, piece.isOnMesh[i]);
    if ((inA >= 0) == (inB >= 0)) continue;
    const double t = inA / (inA - inB);
    kept.add(a + (b - a) * t, inA >= 0 ? false : piece.isOnMesh[i]);
  }
  return kept;
}

Piece cutAtBox(Piece piece) {
  for (const double side : {-1.0, 1.0}) {
    piece = cutAt(piece, &Vec3::x, side, 1);
    piece = cutAt(piece, &Vec3::y, side, 1);
    piece = cutAt(piece, &Vec3::z, side, BoxView::kHeight);
  }
  for (int i = 0; i < piece.count; ++i) {  // far corners cost the sums their digits
    Vec3& p = piece.points[i];
    p = {std::clamp(p.x, -1.0, 1.0), std::clamp(p.y, -1.0, 1.0), std::clamp(p.z, -BoxView::kHeight, BoxView::kHeight)};
  }
  return piece;
}

/// The part of a mesh that is drawn.
class Mesh {
 public:
  Mesh(const Surface& surface, uint32_t number, const BoxView& view, double resolution, bool inTriangles)
      : surface_(surface), number_(number), view_(view), inTriangles_(inTriangles) {
    const int64_t rows = surface.attributes.numRows, cols = surface.attributes.numCols;
    const double extent = 2 * view.pointsPerUnit();
    const int64_t rowStride = strideFor(rows, extent, resolution), colStride = strideFor(cols, extent, resolution);
    rows_ = thinned(rows, rowStride);
    cols_ = thinned(cols, colStride);
    const double apart = std::fmax(kMeshApart, resolution);
    meshEvery_ = {strideFor(std::ssize(rows_), extent, apart), strideFor(std::ssize(cols_), extent, apart)};
    corners_.reserve(rows_.size() * cols_.size());
    for (const int64_t j : cols_) {
      for (const int64_t i : rows_) corners_.push_back(cornerOf(surface.points[j * rows + i]));
    }
  }

  int64_t numRows() const { return static_cast<int64_t>(rows_.size()); }
  int64_t numCols() const { return static_cast<int64_t>(cols_.size()); }

  /// One coordinate follows the rows alone and the other the columns alone, both without turning
  /// back.
  bool isHeightField(bool& xFollowsRows) const {
    for (const bool rowsAreX : {true, false}) {
      xFollowsRows = rowsAreX;
      if (follows(rowsAreX ? &Vec3::x : &Vec3::y, true) && follows(rowsAreX ? &Vec3::y : &Vec3::x, false)) return true;
    }
    return false;
  }

  /// From the far rows and columns to the near ones.
  void addInOrder(std::vector<Face>& faces, bool xFollowsRows) const {
    const Vec3 alongRows = xFollowsRows ? Vec3{1, 0, 0} : Vec3{0, 1, 0},
               alongCols = xFollowsRows ? Vec3{0, 1, 0} : Vec3{1, 0, 0};
    const bool rowsComeNearer = (view_.facing(alongRows) >= 0) == rises(xFollowsRows ? &Vec3::x : &Vec3::y, true);
    const bool colsComeNearer = (view_.facing(alongCols) >= 0) == rises(xFollowsRows ? &Vec3::y : &Vec3::x, false);
    for (int64_t jj = 0; jj + 1 < numCols(); ++jj) {
      const int64_t j = colsComeNearer ? jj : numCols() - 2 - jj;
      for (int64_t ii = 0; ii + 1 < numRows(); ++ii) addCell(faces, rowsComeNearer ? ii : numRows() - 2 - ii, j);
    }
  }

  void addAll(std::vector<Face>& faces) const {
    for (int64_t j = 0; j + 1 < numCols(); ++j) {
      for (int64_t i = 0; i + 1 < numRows(); ++i) addCell(faces, i, j);
    }
  }

 private:
  Corner cornerOf(const SCNVector3& point) const {
    Corner corner{view_.inBox(point), false, false};
    corner.isFinite = corner.box.isFinite();
    corner.isInside = corner.isFinite && isInBox(corner.box);
    return corner;
  }
  const Corner& corner(int64_t i, int64_t j) const { return corners_[static_cast<size_t>(j * numRows() + i)]; }

  double first(double Vec3::*coordinate, bool byRows, int64_t k) const {
    return (byRows ? corner(k, 0) : corner(0, k)).box.*coordinate;
  }
  bool rises(double Vec3::*coordinate, bool byRows) const {
    return first(coordinate, byRows, (byRows ? numRows() : numCols()) - 1) >= first(coordinate, byRows, 0);
  }
  bool follows(double Vec3::*coordinate, bool byRows) const {
    const double direction = rises(coordinate, byRows) ? 1 : -1;
    for (int64_t j = 0; j < numCols(); ++j) {
      for (int64_t i = 0; i < numRows(); ++i) {
        const int64_t k = byRows ? i : j;
        const double value = corner(i, j).box.*coordinate, expected = first(coordinate, byRows, k);
        if (!(value == expected)) return false;
        if (k > 0 && direction * (value - first(coordinate, byRows, k - 1)) < 0) return false;
      }
    }
    return true;
  }

  bool isMeshLine(int64_t k, int64_t count, int64_t every) const { return k % every == 0 || k == count - 1; }

  void addCell(std::vector<Face>& faces, int64_t i, int64_t j) const {
    const std::array<const Corner*, 4> c = {&corner(i, j), &corner(i + 1, j), &corner(i + 1, j + 1), &corner(i, j + 1)};
    if (!std::all_of(c.begin(), c.end(), [](const Corner* corner) { return corner->isFinite; })) return;
    const bool isInside = std::all_of(c.begin(), c.end(), [](const Corner* corner) { return corner->isInside; });
    const std::array<bool, 4> onMesh = {
        isMeshLine(j, numCols(), meshEvery_[1]), isMeshLine(i + 1, numRows(), meshEvery_[0]),
        isMeshLine(j + 1, numCols(), meshEvery_[1]), isMeshLine(i, numRows(), meshEvery_[0])};
    double height = 0;
    for (const Corner* corner : c) height += corner->box.z / 4;
    if (!inTriangles_) return addPiece(faces, c, onMesh, {0, 1, 2, 3}, isInside, height);
    addPiece(faces, c, {onMesh[0], onMesh[1], false, false}, {0, 1, 2, -1}, isInside, height);
    addPiece(faces, c, {false, false, onMesh[2], onMesh[3]}, {0, -1, 2, 3}, isInside, height);
  }

  void addPiece(std::vector<Face>& faces, const std::array<const Corner*, 4>& corners, std::array<bool, 4> onMesh,
                std::array<int, 4> which, bool isInside, double height) const {
    Piece piece;
    for (const int k : which) {
      if (k >= 0) piece.add(corners[k]->box, onMesh[k]);
    }
    if (!isInside) piece = cutAtBox(piece);
    const auto isFinite = [](Vec3 p) { return p.isFinite(); };
    if (piece.count < 3 || !std::all_of(piece.points.begin(), piece.points.begin() + piece.count, isFinite)) return;
    Face& face = faces.emplace_back();
    face.surface = number_;
    face.height = static_cast<float>((height / BoxView::kHeight + 1) / 2);
    face.count = static_cast<uint8_t>(piece.count);
    for (int k = 0; k < piece.count; ++k) {
      face.corners[k] = view_.onScreen(piece.points[k]);
      if (piece.isOnMesh[k]) face.isOnMesh |= static_cast<uint16_t>(1u << k);
    }
  }

  const Surface& surface_;
  uint32_t number_;
  const BoxView& view_;
  bool inTriangles_;
  std::vector<int64_t> rows_, cols_;
  std::array<int64_t, 2> meshEvery_;
  std::vector<Corner> corners_;
};

}  // namespace

double Face::depth() const {
  double sum = 0;
  for (int k = 0; k < count; ++k) sum += corners[k].z;
  return sum / count;
}

std::vector<Face> facesOf(const figures::SurfData& figure, const BoxView& view, double resolution) {
  std::vector<Face> faces;
  std::vector<Mesh> meshes;
  bool xFollowsRows = true;
  const bool isAlone = figure.surfaces.size() == 1;
  for (size_t k = 0; k < figure.surfaces.size(); ++k) {
    const auto number = static_cast<uint32_t>(k + 1);
    const Surface::Attributes& size = figure.surfaces[k].attributes;
    if (size.numRows < 2 || size.numCols < 2) continue;
    Mesh mesh(figure.surfaces[k], number, view, resolution, false);
    if (isAlone && mesh.isHeightField(xFollowsRows)) {
      mesh.addInOrder(faces, xFollowsRows);
      return faces;
    }
    Mesh(figure.surfaces[k], number, view, std::fmax(resolution, kLeastTriangle), true).addAll(faces);
  }
  return inPaintingOrder(std::move(faces));
}

}  // namespace kelo::drawing
