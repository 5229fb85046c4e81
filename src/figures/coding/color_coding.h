// The bytes of a colour in a file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "figures/color.h"

namespace kelo::figures {

/// JSON text: {"role":"system blue","rgba":[...]}, where a colour without a role has no such key.
std::string codedColor(const Color& color);

/// A colour from these bytes, or from a keyed archive of one as older files hold it, as far as that
/// tells its numbers: nothing when it does not. throws CodingError when they are neither
std::optional<Color> decodedColor(std::string_view bytes);

}  // namespace kelo::figures
