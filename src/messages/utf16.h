// Text as editors and front ends count it: in UTF-16 units.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kelo {

/// Length of a text in UTF-16 units.
int64_t utf16Length(std::string_view utf8);

/// The other encoding of a text; each byte that is no UTF-8, and each lone surrogate, becomes
/// U+FFFD.
std::u16string toUtf16(std::string_view utf8);
std::string toUtf8(std::u16string_view units);

}  // namespace kelo
