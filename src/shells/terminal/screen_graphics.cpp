#include "shells/terminal/screen_graphics.h"

#include <dlfcn.h>
#include <poll.h>
#include <sixel/sixel.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>

#include "figures/coding/base64.h"
#include "messages/message.h"

namespace kelo::terminal {
namespace {

// A picture of one pixel that is only tried, the size of a cell, and what every terminal answers:
// its kind.
constexpr const char kQuestions[] = "\x1b_Gi=31,s=1,v=1,a=q,t=d,f=24;AAAA\x1b\\\x1b[16t\x1b[c";
constexpr int kPatience = 200;  // milliseconds
constexpr size_t kKittyChunk = 4096;

/// Keys come one by one and unseen for as long as this lives.
class RawInput {
 public:
  RawInput() {
    isRaw_ = tcgetattr(STDIN_FILENO, &before_) == 0;
    termios raw = before_;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    raw.c_cc[VMIN] = 0;
    raw.c_cc[VTIME] = 0;
    if (isRaw_) tcsetattr(STDIN_FILENO, TCSANOW, &raw);
  }
  ~RawInput() {
    if (isRaw_) tcsetattr(STDIN_FILENO, TCSANOW, &before_);
  }

 private:
  termios before_ = {};
  bool isRaw_ = false;
};

/// The answers up to the kind of the terminal, "ESC [ ? ... c".
std::string answers() {
  std::string text;
  pollfd input = {STDIN_FILENO, POLLIN, 0};
  while (text.size() < 4096 && poll(&input, 1, kPatience) > 0) {
    char bytes[256];
    const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
    if (count <= 0) break;
    text.append(bytes, static_cast<size_t>(count));
    const size_t kind = text.find("\x1b[?");
    if (kind != std::string::npos && text.find('c', kind) != std::string::npos) break;
  }
  return text;
}

/// Kinds of terminals are numbers; 4 is one that knows sixels.
bool knowsSixels(const std::string& text) {
  const size_t kind = text.find("\x1b[?");
  if (kind == std::string::npos) return false;
  std::string numbers = ";" + text.substr(kind + 3);
  numbers = numbers.substr(0, numbers.find('c')) + ";";
  return numbers.find(";4;") != std::string::npos;
}

struct SixelLibrary {
  decltype(&::sixel_output_new) outputNew;
  decltype(&::sixel_output_unref) outputUnref;
  decltype(&::sixel_dither_new) ditherNew;
  decltype(&::sixel_dither_initialize) ditherInitialize;
  decltype(&::sixel_dither_unref) ditherUnref;
  decltype(&::sixel_encode) encode;
};

SixelLibrary loadSixels() {
  void* library = dlopen("libsixel.so.1", RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw problem("Pictures in this terminal need the library libsixel.so.1");
  const auto find = [library](auto& function, const char* name) {
    function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(library, name));
    if (function == nullptr) throw problem(std::string("The sixel library has no function ") + name);
  };
  SixelLibrary sixel;
  find(sixel.outputNew, "sixel_output_new");
  find(sixel.outputUnref, "sixel_output_unref");
  find(sixel.ditherNew, "sixel_dither_new");
  find(sixel.ditherInitialize, "sixel_dither_initialize");
  find(sixel.ditherUnref, "sixel_dither_unref");
  find(sixel.encode, "sixel_encode");
  return sixel;
}

int append(char* data, int size, void* text) {
  static_cast<std::string*>(text)->append(data, static_cast<size_t>(size));
  return size;
}

}  // namespace

ScreenGraphics askForGraphics() {
  ScreenGraphics graphics;
  const RawInput raw;
  std::fputs(kQuestions, stdout);
  std::fflush(stdout);
  const std::string text = answers();
  using Protocol = ScreenGraphics::Protocol;
  if (text.find("_Gi=31;OK") != std::string::npos) {
    graphics.protocol = Protocol::kitty;
  } else if (knowsSixels(text)) {
    graphics.protocol = Protocol::sixel;
  }
  int height = 0, width = 0;
  const size_t cell = text.find("\x1b[6;");
  const bool isTold = cell != std::string::npos && std::sscanf(text.c_str() + cell + 4, "%d;%dt", &height, &width) == 2;
  if (isTold && height > 3 && width > 3) graphics.cellHeight = height, graphics.cellWidth = width;
  return graphics;
}

std::string kittyPicture(const std::string& png) {
  const std::string coded = figures::base64Of(png);
  std::string text;
  for (size_t at = 0; at < coded.size(); at += kKittyChunk) {
    const bool isLast = at + kKittyChunk >= coded.size();
    text += std::string("\x1b_G") + (at == 0 ? "a=T,f=100,q=2," : "") + "m=" + (isLast ? "0" : "1") + ";";
    text += coded.substr(at, kKittyChunk) + "\x1b\\";
  }
  return text + "\n";
}

std::string sixelPicture(const pictures::Bitmap& bitmap) {
  static const SixelLibrary sixel = loadSixels();
  std::string pixels;
  for (const uint32_t pixel : bitmap.pixels) {
    for (int shift = 16; shift >= 0; shift -= 8) pixels += static_cast<char>(pixel >> shift);
  }
  auto* bytes = reinterpret_cast<unsigned char*>(pixels.data());
  std::string text;
  sixel_output_t* output = nullptr;
  sixel_dither_t* dither = nullptr;
  const bool isReady =
      SIXEL_SUCCEEDED(sixel.outputNew(&output, append, &text, nullptr)) &&
      SIXEL_SUCCEEDED(sixel.ditherNew(&dither, 256, nullptr)) &&
      SIXEL_SUCCEEDED(sixel.ditherInitialize(dither, bytes, bitmap.width, bitmap.height, SIXEL_PIXELFORMAT_RGB888,
                                             SIXEL_LARGE_AUTO, SIXEL_REP_AUTO, SIXEL_QUALITY_AUTO));
  if (isReady) sixel.encode(bytes, bitmap.width, bitmap.height, 3, dither, output);
  if (dither != nullptr) sixel.ditherUnref(dither);
  if (output != nullptr) sixel.outputUnref(output);
  return text + "\n";
}

}  // namespace kelo::terminal
