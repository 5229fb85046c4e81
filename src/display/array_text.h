// The text of a numeric array: header, pages, blocks, rows.
#pragma once

#include <optional>
#include <string>

#include "display/display_parameters.h"
#include "display/styled_text.h"
#include "values/numeric_array.h"

namespace kelo {

using OptionalName = std::optional<std::string>;

DisplayContentType contentTypeOf(Kind kind);

/// An array under a name ("x = \n 5.0000"), or without one. An array of whole numbers prints as one
/// of doubles.
StyledText arrayText(const NumericArray& array, const OptionalName& name, const DisplayParameters& parameters);

/// "1e6" for scale -6: the power of ten that a scale takes out.
std::string powerTakenOut(int scale);

}  // namespace kelo
