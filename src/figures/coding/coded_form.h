// The coded form of figures: JSON texts with the keys of fields.h.
#pragma once

#include <string>
#include <string_view>

#include "figures/coding/coding_error.h"
#include "figures/coding/json_writer.h"
#include "figures/figure_data.h"

namespace kelo::figures {

/// Most points that one figure may have in its coded form.
inline constexpr int64_t kMostCodedPoints = int64_t{1} << 25;

/// "null" for no figure. throws CodingError for a number that is refused, and for too many points
std::string codedForm(const Figure& figure, NonFinite nonFinite);
/// The text of a figure file. throws CodingError, also for numbers that are not finite
std::string codedForm(const FigureData& data);

/// Reads the text of a figure file. throws CodingError at the first thing that is wrong: broken
/// text, a key missing, a type or an ordinal unknown, reversed limits, a count that does not fit,
/// too many points, both models or none
FigureData decodedFigureData(std::string_view text);
/// Reads the coded form of a model. throws CodingError
PlotData decodedPlot(std::string_view text);
SurfData decodedSurface(std::string_view text);

}  // namespace kelo::figures
