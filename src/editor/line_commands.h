// The commands of the editor's menu on the lines of a selection: "Comment", "Uncomment", "Indent".
//
// A selection that ends at a line's start leaves that line out. The selection stays on the text
// that it was on.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelo {

struct EditedText {
  std::string text;
  int64_t start, end;  ///< the selection, in UTF-16 units
};

/// Each gives nothing unless 0 <= start <= end <= length of the text.
std::optional<EditedText> comment(std::string_view text, int64_t start, int64_t end);
/// Takes "% " away where a line begins with it.
std::optional<EditedText> uncomment(std::string_view text, int64_t start, int64_t end);
/// Mends the indentation of the lines from above to below, each by the mended ones before it.
std::optional<EditedText> indent(std::string_view text, int64_t start, int64_t end);

}  // namespace kelo
