// The words with which commands describe lines: specification strings such as "r--o", and
// attributes such as 'LineWidth', 2.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "figures/line.h"
#include "values/storable.h"

namespace kelo::figures {

/// The vocabulary, as values of attributes: whole texts, without regard to case.
namespace attribute {
std::optional<Color> colorNamed(const std::string& text);
std::optional<Line::Style> lineStyleNamed(const std::string& text);
std::optional<Marker::Style> markerStyleNamed(const std::string& text);
/// Whether a value is the name of an attribute.
bool isName(const Storable& value);
}  // namespace attribute

/// Applies a specification string to all lines of a group, piece by piece from the left: colours
/// before line styles before markers at each place, the first that the text goes on with. "none" is
/// always the clear colour, and "p" and "h" stand before their long names, which do not parse.
/// NOTE: intended. False when no piece fits; what came before has been applied.
bool parseLineSpec(const std::string& text, std::span<Line> lines);

/// A colour value: the name of one, or three numbers from 0 to 1. throws Problem
Color colorValue(const Storable& value);

/// Applies the pairs of names and values from index `first` on to all lines, in order. throws
/// Problem
void applyAttributes(std::span<const Storable> arguments, size_t first, std::span<Line> lines);

}  // namespace kelo::figures
