// Structures as text. A value inside a structure shows as kind and size; only short things are
// shown whole.
#include "display/struct_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "display/number_format.h"
#include "values/storable.h"

namespace kelo {

namespace {

// Of a row within a field line no more elements are shown, so that a long row does not make an
// endless line.
constexpr int64_t kInlineLimit = 10'000;
constexpr std::string_view kCut = " ...";
constexpr double kFieldIndent = 4;  // in widths of a blank

std::string_view fieldsWord(int64_t count) { return count == 1 ? "field" : "fields"; }

std::string scaleText(int scale) { return scale == 0 ? "" : fmt::format(" × {}", powerTakenOut(scale)); }

std::string doubleText(const DoubleArray& array, int nDigits) {
  const int scale = scaleExponent(array.values(), nDigits);
  std::string text = fmt::format("Double [{}]{}", array.size().description(), scaleText(scale));
  if (!array.size().isRow()) return text;
  const int64_t shown = std::min(array.numElements(), kInlineLimit);
  for (int64_t i = 0; i < shown; ++i) {
    text += i == 0 ? " " : "  ";
    appendReal(text, nDigits, scaled(array[i], scale));
  }
  return shown < array.numElements() ? text.append(kCut) : text;
}

std::string complexText(const ComplexDoubleArray& array, int nDigits) {
  return fmt::format("Complex [{}]{}", array.size().description(), scaleText(scaleExponent(array.values(), nDigits)));
}

std::string charText(const CharArray& array) {
  std::string text = fmt::format("Char [{}]", array.size().description());
  if (!array.size().isRow()) return text;
  const int64_t shown = std::min(array.numElements(), kInlineLimit);
  text += " '";
  for (int64_t i = 0; i < shown; ++i) array[i].appendUtf8To(text);
  text += '\'';
  return shown < array.numElements() ? text.append(kCut) : text;
}

std::string numericText(const NumericArray& array, int nDigits) {
  switch (array.kind()) {
    case Kind::Int:
      return fmt::format("Int [{}]", array.size().description());
    case Kind::Logical:
      return fmt::format("Logical [{}]", array.size().description());
    case Kind::Complex:
      return complexText(array.asComplex(), nDigits);
    case Kind::Char:
      return charText(array.asChar());
    case Kind::Double:
      break;
  }
  return doubleText(array.asDouble(), nDigits);
}

}  // namespace

std::string summaryText(const Storable& value, int nDigits) {
  if (const FunctionHandle* handle = value.funcHandle()) return handle->text();
  if (!value.isArray()) return "";
  if (value.isEmpty()) {
    return fmt::format("Empty {} array", value.isNumeric() ? kindName(value.numeric()->kind()) : "struct");
  }
  if (value.isStructure()) return fmt::format("Struct [{}]", value.size().description());
  return numericText(*value.numeric(), nDigits);
}

namespace {

void appendFieldLines(std::string& text, const StructArray& array, const DisplayParameters& parameters) {
  const platform::TextMeasure& font = *parameters.font;
  double widest = 0;
  for (const Name field : array.fields()) widest = std::max(widest, font.width(field.text()));
  const double blank = font.width(" ");
  for (int64_t k = 0; k < array.fieldCount(); ++k) {
    const std::string& field = array.fields()[static_cast<size_t>(k)].text();
    const double blanks = kFieldIndent + (blank > 0 ? std::round((widest - font.width(field)) / blank) : 0);
    text.append(static_cast<size_t>(blanks), ' ').append(field).append(": ");
    text.append(summaryText(array.value(0, k), boundedDigits(parameters.nDigits))).append("\n");
  }
}

void appendFieldNames(std::string& text, const StructArray& array) {
  text += fmt::format("struct array ({}) with ", array.size().description());
  if (array.fieldCount() == 0)
    text += "no field.";
  else
    text.append(fieldsWord(array.fieldCount())).append(":");
  for (const Name field : array.fields()) text.append("\n").append(field.text());
}

}  // namespace

std::string structText(const StructArray& array, const OptionalName& name, const DisplayParameters& parameters) {
  std::string text;
  if (name) text.append(*name).append(" =\n ");
  if (array.isEmpty()) return text += "[] (struct)";
  if (!array.size().isScalar()) {
    appendFieldNames(text, array);
  } else if (array.fieldCount() == 0) {
    text += "struct with no field\n";
  } else {
    text.append("struct with ").append(fieldsWord(array.fieldCount())).append(":\n");
    appendFieldLines(text, array, parameters);
  }
  return text;
}

}  // namespace kelo
