// Packs the rows of a picture: a block of DEFLATE with no matches but runs of one pixel. Where rows
// are given as differences to the row above, plots are little else than such runs.
//
// It takes a third of the time of zlib's level 1, or of its strategy for runs, without which the
// picture of ten lines of 1,000 points would take half as long again; files are as small, but for
// pictures of many crossing lines, where they are a third larger than those of level 1.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelo::pictures {

/// A block that is not the last one and ends at a whole byte. `pixelBytes`: 1 or 3. Nothing when
/// the bytes are not mostly runs: others pack them better.
std::optional<std::string> packedRuns(std::string_view rows, int pixelBytes);

}  // namespace kelo::pictures
