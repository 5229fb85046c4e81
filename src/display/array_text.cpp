// Arrays as text: pages, in them blocks of columns that fit side by side, in them rows.
//
// ArrayWriter goes through these for every kind of array. What the kinds differ in comes from
// outside: an ElementAppender, which writes one element, and the text between two elements. Of a
// long array only the end is written; ArrayLayout says where it begins.
#include "display/array_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "display/array_layout.h"
#include "display/number_format.h"

namespace kelo {

namespace {

constexpr std::string_view kSeparator = "  ";

const char* emptyText(Kind kind) {
  switch (kind) {
    case Kind::Logical:
      return " [] (logical array)";
    case Kind::Complex:
      return " [] (complex-double array)";
    case Kind::Char:
      return " [] (char array)";
    default:
      return " [] (double array)";
  }
}

// "(:, :, 2, 1)" of a page counted from 0.
std::string pageSubscripts(const SizeVector& size, int64_t page) {
  std::string text = "(:, :";
  for (int64_t d = 3; d <= size.ndim(); ++d) {
    const int64_t length = size.dimensionLength(d);
    text += fmt::format(", {}", page % length + 1);
    page /= length;
  }
  return text += ')';
}

std::string blockHeader(int64_t firstColumn, int64_t endColumn) {
  return endColumn - firstColumn == 1 ? fmt::format("Column {}:", endColumn)
                                      : fmt::format("Columns {} to {}:", firstColumn + 1, endColumn);
}

// Writes one array. append(text, i) adds the element at position i.
template <class Append>
class ArrayWriter {
 public:
  ArrayWriter(StyledText& out, const SizeVector& size, const ArrayLayout& layout, const OptionalName& name, int scale,
              std::string_view separator, Append append)
      : out_(out), size_(size), layout_(layout), name_(name), scale_(scale), separator_(separator), append_(append) {}

  void write() {
    if (layout_.pages == 1) writeHeader();
    int64_t block = layout_.startBlock, row = layout_.startRow;
    for (int64_t page = layout_.startPage; page < layout_.pages; ++page, block = 0) {
      if (layout_.pages > 1) writePageHeader(page);
      for (; block < layout_.blocks; ++block, row = 0) writeBlock(page, block, row);
      out_.text += '\n';
    }
    out_.trimLineFeeds(2);
  }

 private:
  void writeHeader() {
    if (name_) out_.text.append(*name_).append(" =");
    if (scale_ != 0) out_.text.append(" ").append(powerTakenOut(scale_)).append(" ×");
    if (name_ || scale_ != 0) out_.text += " \n";
  }

  // Unlike above, no blank stands after the sign here. NOTE: intended.
  void writePageHeader(int64_t page) {
    if (name_) out_.text += *name_;
    out_.text.append(pageSubscripts(size_, page)).append(" = ");
    if (scale_ != 0) out_.text.append(powerTakenOut(scale_)).append(" ×");
    out_.text += '\n';
  }

  void writeBlock(int64_t page, int64_t block, int64_t row) {
    const int64_t first = layout_.firstColumn(block), end = layout_.endColumn(block);
    if (layout_.blocks > 1) {
      out_.appendSecondary(blockHeader(first, end));
      out_.text += '\n';
    }
    for (; row < layout_.rows; ++row) {
      for (int64_t column = first; column < end; ++column) {
        if (column != first) out_.text += separator_;
        append_(out_.text, (page * layout_.columns + column) * layout_.rows + row);
      }
      out_.text += '\n';
    }
  }

  StyledText& out_;
  const SizeVector& size_;
  const ArrayLayout& layout_;
  const OptionalName& name_;
  int scale_;
  std::string_view separator_;
  Append append_;
};

// A class template, so that each record has its own append without a call through a pointer.
template <class T>
struct ElementAppender;

template <class T>
requires std::is_same_v<T, double> || std::is_same_v<T, int64_t>
struct ElementAppender<T> {
  const T* values;
  int nDigits, scale;
  void operator()(std::string& out, int64_t i) const {
    appendReal(out, nDigits, scaled(static_cast<double>(values[i]), scale));
  }
};

template <>
struct ElementAppender<ComplexDouble> {
  const ComplexDouble* values;
  int nDigits, scale;
  void operator()(std::string& out, int64_t i) const { appendComplex(out, nDigits, scaled(values[i], scale)); }
};

template <>
struct ElementAppender<bool> {
  const bool* values;
  int nDigits, scale;
  void operator()(std::string& out, int64_t i) const { out += values[i] ? '1' : '0'; }
};

template <>
struct ElementAppender<Character> {
  const Character* values;
  int nDigits, scale;
  void operator()(std::string& out, int64_t i) const { values[i].appendUtf8To(out); }
};

template <class T>
int scaleOf(const TypedArray<T>& array, int nDigits) {
  if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, Character>)
    return 0;
  else
    return scaleExponent(array.values(), nDigits);
}

// Columns in a block. A single column fits in any case, so its texts are not measured.
template <class T>
int64_t columnsOf(const TypedArray<T>& array, const DisplayParameters& parameters) {
  if (array.size().columns() == 1) return 1;
  const CharArray* texts = nullptr;
  if constexpr (std::is_same_v<T, Character>) texts = &array;
  return columnsPerBlock(texts, parameters, contentTypeOf(KindOf<T>::value)).value_or(1);
}

template <class T>
StyledText textOf(const TypedArray<T>& array, const OptionalName& name, const DisplayParameters& parameters) {
  const int nDigits = boundedDigits(parameters.nDigits);
  const int scale = scaleOf(array, nDigits);
  const ArrayLayout layout(array.size(), columnsOf(array, parameters));
  const std::string_view separator = std::is_same_v<T, Character> ? "" : kSeparator;
  StyledText out;
  const ElementAppender<T> append{array.data(), nDigits, scale};
  ArrayWriter(out, array.size(), layout, name, scale, separator, append).write();
  return out;
}

}  // namespace

DisplayContentType contentTypeOf(Kind kind) {
  switch (kind) {
    case Kind::Int:
      return DisplayContentType::intArray;
    case Kind::Logical:
      return DisplayContentType::logicalArray;
    case Kind::Complex:
      return DisplayContentType::complexArray;
    case Kind::Char:
      return DisplayContentType::charArray;
    case Kind::Double:
      break;
  }
  return DisplayContentType::doubleArray;
}

std::string powerTakenOut(int scale) { return fmt::format("1e{}", -scale); }

StyledText arrayText(const NumericArray& array, const OptionalName& name, const DisplayParameters& parameters) {
  if (!array.isEmpty()) {
    return array.visit([&](const auto& record) { return textOf(record, name, parameters); });
  }
  StyledText out;
  if (name) out.text.append(*name).append(" =\n");
  out.text += emptyText(array.kind());
  return out;
}

}  // namespace kelo
