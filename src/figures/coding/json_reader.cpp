// Tested by tests/figures/coding_test.cpp.
#include "figures/coding/json_reader.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <charconv>

#include "values/character.h"

namespace kelo::figures {
namespace {

constexpr int kDeepest = 100;

bool isUtf8(std::string_view text) {
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  auto left = static_cast<utf8proc_ssize_t>(text.size());
  while (left > 0) {
    utf8proc_int32_t codePoint = 0;
    const utf8proc_ssize_t length = utf8proc_iterate(at, left, &codePoint);
    if (length <= 0) return false;
    at += length;
    left -= length;
  }
  return true;
}

bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

void JsonReader::fail(const char* what) const { throw CodingError(fmt::format("{} at byte {}", what, next_ - begin_)); }

template <class T>
T JsonReader::numberOf() {
  const char first = peek();
  const bool isNegative = first == '-';
  const char digit = isNegative && end_ - next_ > 1 ? next_[1] : first;
  if (digit < '0' || digit > '9') fail("a number is expected");
  T x{};
  const auto [behind, fault] = std::from_chars(next_, end_, x);
  if (fault != std::errc()) fail("a number is out of range");
  next_ = behind;
  return x;
}

double JsonReader::number() { return numberOf<double>(); }
float JsonReader::numberAsFloat() { return numberOf<float>(); }

int64_t JsonReader::integer() {
  const int64_t n = numberOf<int64_t>();
  if (next_ != end_ && (*next_ == '.' || *next_ == 'e' || *next_ == 'E')) fail("a whole number is expected");
  return n;
}

bool JsonReader::takeWord(std::string_view word) {
  peek();
  if (!std::string_view(next_, static_cast<size_t>(end_ - next_)).starts_with(word)) return false;
  next_ += word.size();
  return true;
}

bool JsonReader::takeNull() { return takeWord("null"); }

bool JsonReader::boolean() {
  if (takeWord("true")) return true;
  if (!takeWord("false")) fail("true or false is expected");
  return false;
}

std::string JsonReader::string() {
  take('"');
  std::string text;
  while (true) {
    const char* plain = next_;
    while (next_ != end_ && *next_ != '"' && *next_ != '\\' && static_cast<unsigned char>(*next_) >= 0x20) ++next_;
    text.append(plain, next_);
    if (next_ == end_ || static_cast<unsigned char>(*next_) < 0x20) fail("a text does not end");
    if (*next_++ == '"') break;
    appendEscape(text);
  }
  if (!isUtf8(text)) fail("a text is no UTF-8");
  return text;
}

char32_t JsonReader::hexUnit() {
  unsigned unit = 0;
  if (end_ - next_ < 4) fail("four hexadecimal digits are expected");
  const auto [behind, fault] = std::from_chars(next_, next_ + 4, unit, 16);
  if (fault != std::errc() || behind != next_ + 4) fail("four hexadecimal digits are expected");
  next_ = behind;
  return unit;
}

void JsonReader::appendEscape(std::string& out) {
  constexpr std::string_view kNames = "\"\\/bfnrt", kMeanings = "\"\\/\b\f\n\r\t";
  const char name = next_ == end_ ? '\0' : *next_++;
  if (const size_t k = kNames.find(name); name != '\0' && k != std::string_view::npos) {
    out += kMeanings[k];
    return;
  }
  if (name != 'u') fail("an unknown escape");
  char32_t codePoint = hexUnit();
  if (isHighSurrogate(codePoint) && end_ - next_ >= 2 && next_[0] == '\\' && next_[1] == 'u') {
    next_ += 2;
    const char32_t low = hexUnit();
    if (!isLowSurrogate(low)) fail("half of a character");
    codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (low - 0xDC00);
  }
  appendUtf8(out, codePoint);
}

void JsonReader::skip() {
  if (++depth_ > kDeepest) fail("nested too deeply");
  switch (peek()) {
    case '{': object([&](std::string_view) { skip(); }); break;
    case '[': array([&] { skip(); }); break;
    case '"': string(); break;
    case 't':
    case 'f': boolean(); break;
    case 'n':
      if (!takeNull()) fail("null is expected");
      break;
    default: number(); break;
  }
  --depth_;
}

void JsonReader::finish() {
  if (peek() != '\0' || next_ != end_) fail("something follows the end");
}

}  // namespace kelo::figures
