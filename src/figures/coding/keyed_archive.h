// What older files hold as keyed archives: colours, and arrays of boxed points. A keyed archive is
// a property list with a flat list of objects that refer to each other by number.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "figures/line.h"

namespace kelo::figures {

/// Whether the bytes begin as a property list does.
bool isArchive(std::string_view bytes);
/// The points of an archived array; nothing when it holds anything else.
std::optional<std::vector<Point>> pointsOfArchive(std::string_view bytes);
/// The colour of an archive: an adaptive one by its name, any other by its channels. Nothing when
/// neither is there.
std::optional<Color> colorOfArchive(std::string_view bytes);

}  // namespace kelo::figures
