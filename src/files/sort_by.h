// The orders in which the panel shows a folder.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "files/file_item.h"

namespace kelo {

/// Kept in the settings as its ordinal.
enum class SortBy : uint8_t { dateDesc, nameDesc, typeDesc, sizeDesc, dateAsc, nameAsc, typeAsc, sizeAsc };

/// Nothing for a number that is none.
std::optional<SortBy> sortByOf(int64_t ordinal);

/// Sorts items. What is alike stands by its base name, ascending in every order, and keeps its
/// place when that is alike too.
///
/// date   items without a date come last
/// size   a folder comes after any file in `sizeAsc`, before any in `sizeDesc`
/// type   by the extension; items without one come first in `typeAsc`, last in `typeDesc`
void sortItems(std::vector<FileItem>& items, SortBy order);

/// The order of two names as people expect it: marks, digits, letters; letters by the alphabet
/// whatever their case and accents, which decide only between names that are otherwise alike.
/// Negative, 0 or positive.
int compareNames(std::string_view a, std::string_view b);

}  // namespace kelo
