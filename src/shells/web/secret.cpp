#include "shells/web/secret.h"

#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace kelo::web {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr size_t kLength = 43;  // of 6 bits each

}  // namespace

Secret Secret::random() {
  std::array<uint8_t, 33> bytes = {};  // the last one only fills up the last digit
  if (getrandom(bytes.data(), 32, 0) != 32)
    throw std::system_error(errno, std::generic_category(), "no random numbers");
  std::string text;
  for (size_t bit = 0; bit < 256; bit += 6) {
    const unsigned pair = bytes[bit / 8] << 8u | bytes[bit / 8 + 1];
    text += kDigits[pair >> (10 - bit % 8) & 63u];
  }
  return Secret(text);
}

std::optional<Secret> Secret::fromText(std::string text) {
  if (text.size() != kLength || text.find_first_not_of(kDigits) != std::string::npos) return std::nullopt;
  return Secret(std::move(text));
}

bool Secret::matches(std::string_view candidate) const {
  if (candidate.size() != text_.size()) return false;
  unsigned difference = 0;
  for (size_t k = 0; k < text_.size(); ++k) difference |= static_cast<unsigned char>(candidate[k] ^ text_[k]);
  return difference == 0;
}

bool TryLimit::allows(double now) {
  while (!failures_.empty() && failures_.front() < now - kSeconds) failures_.pop_front();
  return failures_.size() < kTries;
}

}  // namespace kelo::web
