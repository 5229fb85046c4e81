#include "editor/regex.h"

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include "messages/utf16.h"

namespace kelo {
namespace {

// OPTIMIZATION: the ASCII members come first, since the library finds those in a bit map.
constexpr std::string_view kWord = R"(0-9A-Z_a-z\p{Alphabetic}\p{M}\p{Nd}\p{Pc}\x{200C}\x{200D})";
constexpr std::string_view kSpace = R"(\p{White_Space})";
constexpr std::string_view kNoSpace = R"(\P{White_Space})";
constexpr std::string_view kDigit = R"(0-9\p{Nd})";

std::string_view membersOf(char letter) {
  switch (letter) {
    case 'w': return kWord;
    case 's': return kSpace;
    case 'S': return kNoSpace;
    case 'd': return kDigit;
    default: return {};
  }
}

/// The pattern with its classes spelled out, inside brackets and outside.
std::string spelledOut(std::string_view pattern) {
  std::string out;
  bool inBrackets = false;
  for (size_t k = 0; k < pattern.size(); ++k) {
    if (pattern[k] == '\\' && k + 1 < pattern.size()) {
      const std::string_view members = membersOf(pattern[++k]);
      if (members.empty()) {
        out.append(1, '\\').append(1, pattern[k]);
      } else {
        out.append(inBrackets ? "" : "[").append(members).append(inBrackets ? "" : "]");
      }
      continue;
    }
    if (pattern[k] == '[') inBrackets = true;
    if (pattern[k] == ']') inBrackets = false;
    out += pattern[k];
  }
  return out;
}

}  // namespace

struct Regex::Code {
  pcre2_code* compiled = nullptr;
  pcre2_match_data* match = nullptr;
  ~Code() {
    pcre2_match_data_free(match);
    pcre2_code_free(compiled);
  }
};

Regex::Regex(std::string_view pattern) {
  const std::u16string units = toUtf16(spelledOut(pattern));
  int fault = 0;
  PCRE2_SIZE faultOffset = 0;
  pcre2_code* compiled = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(units.data()), units.size(),
                                       PCRE2_UTF | PCRE2_NO_AUTO_CAPTURE, &fault, &faultOffset, nullptr);
  if (compiled == nullptr) return;
  pcre2_jit_compile(compiled, PCRE2_JIT_COMPLETE);  // without it the matches are the same, only slower
  code_ = std::make_unique<Code>();
  code_->compiled = compiled;
  code_->match = pcre2_match_data_create_from_pattern(compiled, nullptr);
}

Regex::~Regex() = default;
Regex::Regex(Regex&&) noexcept = default;

void Regex::forEachMatch(std::u16string_view text, size_t start,
                         const std::function<void(size_t begin, size_t end)>& found) const {
  if (code_ == nullptr) return;
  const auto* subject = reinterpret_cast<PCRE2_SPTR>(text.data());
  while (start <= text.size()) {
    const int count =
        pcre2_match(code_->compiled, subject, text.size(), start, PCRE2_NO_UTF_CHECK, code_->match, nullptr);
    if (count < 0) return;
    const PCRE2_SIZE* ends = pcre2_get_ovector_pointer(code_->match);
    found(ends[0], ends[1]);
    start = ends[1] > ends[0] ? ends[1] : ends[1] + 1;
  }
}

}  // namespace kelo
