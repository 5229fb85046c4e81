// The texts of all pages come to about a megabyte, which a plain scan reads in less than a
// millisecond: the index is the visible text of each page.
#include "docs/doc_search.h"

#include <utf8proc.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <tuple>

namespace kelo::docs {
namespace {

constexpr size_t kExcerptBefore = 40;  // bytes
constexpr size_t kExcerptBehind = 80;

/// In small letters; a letter whose small form has another length stays, so that places are the
/// same in both texts.
std::string folded(std::string_view text) {
  std::string result(text);
  auto* bytes = reinterpret_cast<utf8proc_uint8_t*>(result.data());
  for (size_t k = 0; k < result.size();) {
    utf8proc_int32_t character = 0;
    const auto left = static_cast<utf8proc_ssize_t>(result.size() - k);
    const utf8proc_ssize_t length = utf8proc_iterate(bytes + k, left, &character);
    utf8proc_uint8_t small[4];
    if (length > 0 && utf8proc_encode_char(utf8proc_tolower(character), small) == length) {
      std::copy_n(small, length, bytes + k);
    }
    k += static_cast<size_t>(std::max<utf8proc_ssize_t>(length, 1));
  }
  return result;
}

size_t onCharacter(const std::string& text, size_t place) {
  while (place < text.size() && (static_cast<unsigned char>(text[place]) & 0xc0) == 0x80) ++place;
  return std::min(place, text.size());
}

std::string excerptAt(const std::string& text, size_t place, size_t length) {
  const size_t begin = onCharacter(text, place < kExcerptBefore ? 0 : place - kExcerptBefore);
  const size_t end = onCharacter(text, std::min(text.size(), place + length + kExcerptBehind));
  std::string excerpt = text.substr(begin, end - begin);
  std::replace(excerpt.begin(), excerpt.end(), '\n', ' ');
  return (begin > 0 ? "…" : "") + excerpt + (end < text.size() ? "…" : "");
}

/// How near a title comes to the text: 0 is the same, 3 does not contain it.
int titleRank(const std::string& name, const std::string& text) {
  const size_t place = name.find(text);
  if (place == std::string::npos) return 3;
  return place != 0 ? 2 : name.size() == text.size() ? 0 : 1;
}

}  // namespace

DocSearch::DocSearch(const platform::FileSystem& resources) {
  const std::optional<std::string> text = resources.readFile("search.json");
  const auto json = nlohmann::json::parse(text.value_or(""), nullptr, false);
  if (!json.is_array()) return;
  for (const auto& entry : json) {
    if (!entry.is_object()) continue;
    Page page{entry.value("relativePath", ""), entry.value("displayName", ""), entry.value("text", "")};
    page.foldedName = folded(page.displayName);
    page.foldedText = folded(page.text);
    pages_.push_back(std::move(page));
  }
}

std::vector<DocSearch::Item> DocSearch::find(Scope scope, std::string_view text) const {
  if (text.empty()) return {};
  const std::string wanted = folded(text);
  std::vector<std::tuple<int, size_t, const Page*>> found;
  for (const Page& page : pages_) {
    const int rank = titleRank(page.foldedName, wanted);
    const size_t place = scope == Scope::title ? std::string::npos : page.foldedText.find(wanted);
    if (rank < 3 || place != std::string::npos) found.emplace_back(rank, place, &page);
  }
  std::sort(found.begin(), found.end());  // pages last: their addresses stand in the order of the tree
  std::vector<Item> items;
  for (const auto& [rank, place, page] : found) {
    Item item{page->relativePath, page->displayName, ""};
    if (place != std::string::npos) item.excerpt = excerptAt(page->text, place, wanted.size());
    items.push_back(std::move(item));
  }
  return items;
}

std::string searchIndex(const std::vector<DocSearch::Page>& pages) {
  auto json = nlohmann::json::array();
  for (const auto& page : pages) {
    json.push_back({{"relativePath", page.relativePath}, {"displayName", page.displayName}, {"text", page.text}});
  }
  return json.dump(0);
}

}  // namespace kelo::docs
