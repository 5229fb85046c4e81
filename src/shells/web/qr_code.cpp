#include "shells/web/qr_code.h"

#include <qrencode.h>

#include <memory>

namespace kelo::web {
namespace {

constexpr int kMargin = 4;  // modules of light around the code, as its standard asks

}  // namespace

std::string qrCode(const std::string& text) {
  const std::unique_ptr<QRcode, void (*)(QRcode*)> code(
      QRcode_encodeString(text.c_str(), 0, QR_ECLEVEL_L, QR_MODE_8, /*casesensitive=*/1), QRcode_free);
  if (code == nullptr) return "";
  const int width = code->width;
  const auto isDark = [&](int row, int column) {
    const bool isInside = row >= 0 && row < width && column >= 0 && column < width;
    return isInside && (code->data[row * width + column] & 1) != 0;
  };
  std::string lines;
  for (int row = -kMargin; row < width + kMargin; row += 2) {
    lines += "\x1b[30;107m";  // black on white
    for (int column = -kMargin; column < width + kMargin; ++column) {
      const bool upper = isDark(row, column), lower = isDark(row + 1, column);
      lines += upper ? (lower ? "█" : "▀") : (lower ? "▄" : " ");
    }
    lines += "\x1b[0m\n";
  }
  return lines;
}

}  // namespace kelo::web
