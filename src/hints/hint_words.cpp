// Near names, and hints on a text before it runs.
#include <algorithm>
#include <regex>
#include <vector>

#include "hints/hint.h"

namespace kelo::hints {
namespace {

/// b is a with one letter more.
bool hasOneMore(const std::string& a, const std::string& b) {
  if (b.size() != a.size() + 1) return false;
  const auto [end, other] = std::mismatch(a.begin(), a.end(), b.begin());
  return std::equal(end, a.end(), other + 1);
}

bool isOneSlip(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return hasOneMore(a, b) || hasOneMore(b, a);
  const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin());
  if (x == a.end()) return false;
  if (std::equal(x + 1, a.end(), y + 1)) return true;  // another letter
  return x + 1 != a.end() && *x == y[1] && x[1] == *y && std::equal(x + 2, a.end(), y + 2);
}

/// Texts and comments, and what stands inside parentheses, where `end` is an index.
std::string withoutInsides(const std::string& text) {
  static const std::regex kTexts("'[^'\n]*'|%[^\n]*");
  static const std::regex kInside(R"(\([^()]*\))");
  std::string plain = std::regex_replace(text, kTexts, " ");
  for (size_t before = 0; before != plain.size();) {
    before = plain.size();
    plain = std::regex_replace(plain, kInside, " ");
  }
  return plain;
}

}  // namespace

std::set<std::string> oneSlipAway(const std::string& word, const std::set<std::string>& names) {
  std::set<std::string> near;
  if (word.size() < 2) return near;
  for (const std::string& name : names) {
    if (name.size() > 1 && isOneSlip(word, name)) near.insert(name);
  }
  return near;
}

std::optional<std::string> hintBefore(const std::string& text) {
  constexpr size_t kLongest = 4000;  // characters; a longer text is no typed one
  if (text.size() > kLongest || text.find("return") == std::string::npos) return std::nullopt;
  static const std::regex kWords(R"(\b(for|while|if|switch|end|return)\b)");
  const std::string plain = withoutInsides(text);
  std::vector<std::string> open;
  for (auto it = std::sregex_iterator(plain.begin(), plain.end(), kWords); it != std::sregex_iterator(); ++it) {
    const std::string word = it->str();
    if (word == "end") {
      if (!open.empty()) open.pop_back();
    } else if (word != "return") {
      open.push_back(word);
    } else {
      const auto loop =
          std::find_if(open.rbegin(), open.rend(), [](const auto& w) { return w == "for" || w == "while"; });
      if (loop != open.rend() && *loop == "while") {
        return "return inside while ends only the present pass; break ends the loop";
      }
    }
  }
  return std::nullopt;
}

}  // namespace kelo::hints
