// Bytes as text in messages: base64 with "+", "/" and padding.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelo::session {

std::string toBase64(std::string_view bytes);
/// Nothing for a text that is none.
std::optional<std::string> fromBase64(std::string_view text);

}  // namespace kelo::session
