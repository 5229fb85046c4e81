// The patterns of the highlighter and of the indentation.
//
// OPTIMIZATION: repetitions that nothing after them can shorten are possessive, and a doubled
// quote belongs to a text only if another quote follows on its line (otherwise the first of the two
// closes it). This matches what the plain patterns match, in linear time and without a stack; tests
// compare the two.
#pragma once

#include <string>
#include <string_view>

namespace kelo::pattern {

inline constexpr std::string_view kNumber =
    R"((?<!\w)(\.[0-9]++([Ee][-+]?[0-9]++)*+|[0-9]++\.*+[0-9]*+([Ee][-+]?[0-9]++)*+))";
inline constexpr std::string_view kLink = R"((https?|mailto|ftp|file)://[-\w.]++(:\d++)?+(/([\w/_.]*+(\?\S++)?+)?+)?+)";
/// An `end` with white space, or nothing, on either side.
inline constexpr std::string_view kEnd = R"((?<![(\S*])end(?![\S*)]))";
/// An `end` that is an index by itself, with the white space around it.
inline constexpr std::string_view kEndIndex = R"((?<=[(,:])\s*+end\s*+(?=[),:]))";
inline constexpr std::string_view kText = R"(((?<=[\n\r\s\[(,;+\-*/=><])|^)'([^'\n\r]++|''(?=[^'\n\r]*+'))*+')";
inline constexpr std::string_view kComment = R"(%[^%\n\r]*+)";
/// Any word; see `ofWord`.
inline constexpr std::string_view kAnyWord = R"((?<![\w.])[A-Za-z_]\w*+(?!\.))";

inline constexpr std::string_view kBeforeWord = R"((?<![\w.]))";
inline constexpr std::string_view kBehindWord = R"((?![\w.]))";

/// The pattern of one word: a word character or a point on either side blocks the match.
inline std::string ofWord(std::string_view word) { return std::string(kBeforeWord).append(word).append(kBehindWord); }

}  // namespace kelo::pattern
