#include "values/name.h"

#include <algorithm>
#include <deque>
#include <unordered_map>

namespace kelo {
namespace {

struct Table {
  std::deque<std::string> texts{std::string()};  // a deque, so that the views below stay valid
  std::unordered_map<std::string_view, uint32_t> ids{{texts.front(), 0}};
};

Table& table() {
  static auto* const instance = new Table;  // outlives every static object that holds a name
  return *instance;
}

}  // namespace

Name Name::intern(std::string_view text) {
  Table& t = table();
  if (const auto found = t.ids.find(text); found != t.ids.end()) return Name(found->second);
  t.texts.emplace_back(text);
  const auto id = static_cast<uint32_t>(t.texts.size() - 1);
  t.ids.emplace(t.texts.back(), id);
  return Name(id);
}

const std::string& Name::text() const { return table().texts[id_]; }

bool followsNameRule(std::string_view word) {
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  const auto isPart = [&](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '_'; };
  return !word.empty() && isLetter(word[0]) && std::all_of(word.begin(), word.end(), isPart);
}

}  // namespace kelo
