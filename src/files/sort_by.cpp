#include "files/sort_by.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string>

#include "files/names.h"

namespace kelo {
namespace {

/// A name with case and accents taken away; marks get a byte below all letters and digits before
/// them.
std::string foldedName(std::string_view name) {
  utf8proc_uint8_t* mapped = nullptr;
  const auto options = static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_CASEFOLD | UTF8PROC_STRIPMARK);
  const auto length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(name.data()),
                                   static_cast<utf8proc_ssize_t>(name.size()), &mapped, options);
  const std::unique_ptr<utf8proc_uint8_t, void (*)(void*)> own(mapped, std::free);
  if (length < 0) return std::string(name);
  std::string folded;
  for (utf8proc_ssize_t k = 0; k < length; ++k) {
    const char c = static_cast<char>(mapped[k]);
    const bool isMark = mapped[k] < 0x80 && !(c >= '0' && c <= '9') && !(c >= 'a' && c <= 'z');
    if (isMark) folded += '\x01';
    folded += c;
  }
  return folded;
}

/// Small letters before capital ones.
int compareCase(std::string_view a, std::string_view b) {
  const auto differing = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  if (differing.first == a.end() || differing.second == b.end()) return a.compare(b);
  const char x = *differing.first, y = *differing.second;
  const bool areLetters = (x | 0x20) == (y | 0x20);
  return areLetters ? (x > y ? -1 : 1) : a.compare(b);
}

int byBaseName(const FileItem& a, const FileItem& b) {
  return compareNames(partsOf(a.relativePath).base, partsOf(b.relativePath).base);
}

int byNumber(double a, double b) { return a < b ? -1 : a > b; }

/// Items without a date stay last in both directions.
int byDate(const FileItem& a, const FileItem& b, int direction) {
  if (!a.lastModifiedDate || !b.lastModifiedDate)
    return static_cast<int>(!a.lastModifiedDate) - static_cast<int>(!b.lastModifiedDate);
  return direction * byNumber(*a.lastModifiedDate, *b.lastModifiedDate);
}

int bySize(const FileItem& a, const FileItem& b) {
  if (a.isFolder || b.isFolder) return static_cast<int>(a.isFolder) - static_cast<int>(b.isFolder);
  return byNumber(static_cast<double>(a.size.value_or(0)), static_cast<double>(b.size.value_or(0)));
}

int byType(const FileItem& a, const FileItem& b) {
  return compareNames(partsOf(a.relativePath).extension, partsOf(b.relativePath).extension);
}

int compare(const FileItem& a, const FileItem& b, SortBy order) {
  switch (order) {
    case SortBy::dateDesc: return byDate(a, b, -1);
    case SortBy::nameDesc: return -byBaseName(a, b);
    case SortBy::typeDesc: return -byType(a, b);
    case SortBy::sizeDesc: return -bySize(a, b);
    case SortBy::dateAsc: return byDate(a, b, 1);
    case SortBy::typeAsc: return byType(a, b);
    case SortBy::sizeAsc: return bySize(a, b);
    default: return byBaseName(a, b);
  }
}

}  // namespace

std::optional<SortBy> sortByOf(int64_t ordinal) {
  if (ordinal < 0 || ordinal > static_cast<int64_t>(SortBy::sizeAsc)) return std::nullopt;
  return static_cast<SortBy>(ordinal);
}

void sortItems(std::vector<FileItem>& items, SortBy order) {
  std::ranges::stable_sort(items, [order](const FileItem& a, const FileItem& b) {
    const int first = compare(a, b, order);
    return first != 0 ? first < 0 : byBaseName(a, b) < 0;
  });
}

int compareNames(std::string_view a, std::string_view b) {
  const int folded = foldedName(a).compare(foldedName(b));
  return folded != 0 ? folded : compareCase(a, b);
}

}  // namespace kelo
