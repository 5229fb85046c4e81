// Changes of a figure by the keys of its coded form, as a settings panel makes them.
#pragma once

#include <span>
#include <string>

#include "figures/figure_panel.h"

namespace kelo::figures {

struct FigureChange {
  std::string key;    ///< of the coded form; parts of lists and records after "/": "lines/0/attribute/lineWidth"
  std::string value;  ///< JSON text of the coded form
};

/// The figure with the changes made in order, all of them or, when it throws, none. Limits, ticks
/// and their flags follow the rules of the commands: limits that are set are no longer automatic, a
/// flag that is set computes anew.
/// throws  Problem with the key and what is wrong: an unknown key, a value of another type, limits
///         that do not rise, a width or size that is not positive
Figure edited(const Figure& figure, std::span<const FigureChange> changes);

}  // namespace kelo::figures
