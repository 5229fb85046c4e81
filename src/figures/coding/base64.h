// Bytes as text and back (RFC 4648, with padding).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelo::figures {

std::string base64Of(std::string_view bytes);
/// Nothing when the text is no base64: another character, a wrong length, bits left over.
std::optional<std::string> bytesOfBase64(std::string_view text);

}  // namespace kelo::figures
