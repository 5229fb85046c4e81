#include "files/file_search.h"

#include <utf8proc.h>

#include <algorithm>

#include "files/names.h"
#include "messages/utf16.h"

namespace kelo {
namespace {

constexpr size_t kLongestPreview = 200;  ///< units
constexpr size_t kBeforeHit = 60;

/// Unit by unit, so that positions stay; letters above the basic plane keep their case.
std::u16string lowered(std::u16string_view text) {
  std::u16string lower(text);
  for (char16_t& unit : lower) {
    if (unit < 0x80) {
      unit = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    } else if (unit < 0xD800 || unit > 0xDFFF) {
      unit = static_cast<char16_t>(utf8proc_tolower(unit));
    }
  }
  return lower;
}

std::string previewOf(std::u16string_view line, size_t start) {
  const size_t from = line.size() > kLongestPreview && start > kBeforeHit ? start - kBeforeHit : 0;
  return toUtf8(line.substr(from, kLongestPreview));
}

}  // namespace

FileSearch::FileSearch(const platform::FileTree& tree, std::string_view text)
    : tree_(tree), text_(lowered(toUtf16(text))) {
  if (!text_.empty()) open("");
}

/// Puts the entries of a folder before all that waits.
void FileSearch::open(const std::string& folder) {
  const auto entries = tree_.list(folder);
  if (!entries) return;
  for (auto entry = entries->rbegin(); entry != entries->rend(); ++entry) {
    if (!isVisibleName(entry->name) || !entry->status) continue;
    waiting_.push_back({joinPath(folder, entry->name), entry->status->isFolder, entry->status->size});
  }
}

bool FileSearch::step() {
  if (waiting_.empty() || hits.size() >= kMostHits) return false;
  const Waiting next = std::move(waiting_.back());
  waiting_.pop_back();
  searchIn(toUtf16(lastComponent(next.path)), 0, next.path);
  if (next.isFolder) {
    open(next.path);
  } else if (next.size <= kLargestFile) {
    searchLines(next.path);
  }
  return true;
}

void FileSearch::searchLines(const std::string& path) {
  const auto bytes = tree_.read(path);
  if (!bytes || !isText(*bytes)) return;
  const std::u16string units = toUtf16(*bytes);
  std::u16string_view rest = units;
  for (int64_t number = 1; !rest.empty(); ++number) {
    const size_t length = std::min(rest.find_first_of(u"\r\n"), rest.size());
    searchIn(rest.substr(0, length), number, path);
    rest.remove_prefix(length);
    rest.remove_prefix(rest.starts_with(u"\r\n") ? 2 : std::min<size_t>(1, rest.size()));
  }
}

void FileSearch::searchIn(std::u16string_view line, int64_t number, const std::string& path) {
  const std::u16string lower = lowered(line);
  for (size_t at = lower.find(text_); at != std::u16string::npos && hits.size() < kMostHits;
       at = lower.find(text_, at + text_.size())) {
    hits.push_back({path, number, static_cast<int64_t>(at), static_cast<int64_t>(text_.size()), previewOf(line, at)});
    if (number == 0) return;
  }
}

}  // namespace kelo
