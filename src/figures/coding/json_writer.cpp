#include "figures/coding/json_writer.h"

#include <fmt/compile.h>

#include <cmath>

#include "figures/coding/coding_error.h"

namespace kelo::figures {

template <class T>
void JsonWriter::shortest(T x) {
  if (!std::isfinite(x)) {
    if (nonFinite_ == NonFinite::refused) throw CodingError("a number that is not finite cannot be coded");
    return null();
  }
  char digits[32];
  text_.append(digits, fmt::format_to(digits, FMT_COMPILE("{}"), x));
}

void JsonWriter::number(double x) { shortest(x); }
void JsonWriter::number(float x) { shortest(x); }
void JsonWriter::integer(int64_t n) { fmt::format_to(std::back_inserter(text_), FMT_COMPILE("{}"), n); }

void JsonWriter::string(std::string_view utf8) {
  text_ += '"';
  for (const char c : utf8) {
    if (c == '"' || c == '\\')
      text_.append({'\\', c});
    else if (static_cast<unsigned char>(c) < 0x20)
      fmt::format_to(std::back_inserter(text_), FMT_COMPILE("\\u{:04x}"), static_cast<int>(c));
    else
      text_ += c;
  }
  text_ += '"';
}

}  // namespace kelo::figures
