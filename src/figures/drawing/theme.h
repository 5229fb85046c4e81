// Light and dark: the values of all colour roles on their ground.
//
// Lines stand off the plot area by at least 3:1, text by 4.5:1 (tested). The eight colours of the
// cycle differ in lightness as well as in hue as far as their names allow, so that most pairs are
// told apart by colour-blind eyes too.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "figures/color.h"
#include "figures/drawing/display_list.h"

namespace kelo::drawing {

struct Theme {
  std::string_view name;
  Rgba background;  ///< of the whole picture
  Rgba plotArea;
  Rgba axis;       ///< the box and its ticks
  Rgba tickLabel;  ///< text at the ticks
  Rgba label;      ///< titles, labels, legend
  Rgba grid;       ///< of 3-D boxes; plots bring their own
  Rgba wall;       ///< the back walls of a 3-D box
  std::array<Rgba, 14> roles;  ///< by ColorRole

  /// A colour of a model as it is painted here: by its role, or as it stands.
  Rgba operator()(const figures::Color& color) const;

  static const Theme& light();
  static const Theme& dark();
  /// "light" or "dark"; null for any other name.
  static const Theme* named(std::string_view name);
};

/// Ratio of the luminances of two opaque colours, 1 to 21, as accessibility guidelines define it.
double contrast(Rgba a, Rgba b);
/// Part `share`, 0 to 1, of `b` in `a`; both opaque.
Rgba mixed(Rgba a, Rgba b, double share);

}  // namespace kelo::drawing
