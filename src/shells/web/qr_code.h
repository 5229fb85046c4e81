// A text as a QR code that a phone's camera reads from a terminal.
#pragma once

#include <string>

namespace kelo::web {

/// Two rows of modules a line, dark on light whatever the terminal's colours; empty when the text
/// is too long for a code.
std::string qrCode(const std::string& text);

}  // namespace kelo::web
