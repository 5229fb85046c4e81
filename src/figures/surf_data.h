// SurfData: the whole state of a 3-D figure, as a plain value: one or more meshes, three axes, and
// how the model is turned, moved and scaled. Limits, ticks and flags are written by the setters
// here and of AxisState.
#pragma once

#include <optional>
#include <string>

#include "figures/axis.h"
#include "figures/shared_points.h"

namespace kelo::figures {

/// Coordinates of surfaces are 32-bit floats, unlike those of plots. Any may be NaN or infinite.
struct SCNVector3 {
  float x, y, z;
  friend bool operator==(const SCNVector3&, const SCNVector3&) = default;
};

class SurfData {
 public:
  struct Surface {
    struct Attributes {
      enum class Types : uint8_t { normal };
      int64_t numCols = 0;
      int64_t numRows = 0;
      Types type = Types::normal;
      friend bool operator==(const Attributes&, const Attributes&) = default;
    };
    /// Column by column: row i and column j, from 0, stand at j * numRows + i. Invariant: numRows *
    /// numCols of them.
    SharedPoints<SCNVector3> points;
    Attributes attributes;
    friend bool operator==(const Surface&, const Surface&) = default;
  };

  static constexpr SCNVector3 kFirstRotation = {-45, 0, -45};

  /// Limits from the surfaces on all axes, ticks from the limits. throws Problem, an internal fault
  explicit SurfData(std::vector<Surface> surfaces = {});

  /// Degrees. The box of the axes, which is a cube about its centre, is turned about z, then y,
  /// then x, where x points to the right, y upwards and z to the viewer: with x = 0 it is seen from
  /// above, with x = -90 from the side.
  SCNVector3 rotationAngles = kFirstRotation;
  SCNVector3 translation = {0, 0, 0};  ///< in parts of the view's shorter side, to the right and upwards
  double zoomFactor = 1;
  Limits xlims, ylims, zlims;
  bool autoXLimits = true, autoYLimits = true, autoZLimits = true;
  std::vector<double> xTicks, yTicks, zTicks;
  bool autoXTicks = true, autoYTicks = true, autoZTicks = true;
  bool hold = false;
  std::string xLabelText, yLabelText, zLabelText;
  std::optional<std::string> title;
  bool showGrid = true;
  std::vector<Surface> surfaces;

  AxisState axis(Axis axis);
  AxisReading axis(Axis axis) const;

  /// True: limits from the surfaces, and ticks when they are automatic.
  void setAutoLimits(Axis axis, bool isAuto);
  /// What a held figure does with new surfaces: automatic limits and ticks follow; the view stays.
  void append(std::vector<Surface> newSurfaces);

  friend bool operator==(const SurfData&, const SurfData&) = default;
};

}  // namespace kelo::figures
