#include "builtins/text/char_rows.h"

#include <algorithm>

namespace kelo::builtins {

std::vector<TextRow> rowsOf(const CharArray& text) {
  const int64_t count = text.size().rows();
  const int64_t columns = text.size().columns();
  std::vector<TextRow> rows(static_cast<size_t>(count), TextRow(static_cast<size_t>(columns)));
  for (int64_t c = 0; c < columns; ++c) {
    for (int64_t r = 0; r < count; ++r) rows[static_cast<size_t>(r)][static_cast<size_t>(c)] = text[r + c * count];
  }
  return rows;
}

CharArray stackedRows(const std::vector<TextRow>& rows) {
  size_t width = 0;
  for (const TextRow& row : rows) width = std::max(width, row.size());
  if (rows.size() <= 1 && width == 0) return CharArray();
  const auto count = static_cast<int64_t>(rows.size());
  CharArray result(SizeVector(count, static_cast<int64_t>(width)), Character(U' '));
  Character* out = result.writable();
  for (int64_t r = 0; r < count; ++r) {
    const TextRow& row = rows[static_cast<size_t>(r)];
    for (size_t c = 0; c < row.size(); ++c) out[r + static_cast<int64_t>(c) * count] = row[c];
  }
  return result;
}

std::string linesOf(const CharArray& text) {
  std::string lines;
  bool isFirst = true;
  for (const TextRow& row : rowsOf(text)) {
    if (!isFirst) lines += '\n';
    isFirst = false;
    for (const Character c : row) c.appendUtf8To(lines);
  }
  return lines;
}

}  // namespace kelo::builtins
