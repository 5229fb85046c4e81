#include "session/variables.h"

#include <algorithm>

#include "display/struct_text.h"
#include "values/storable.h"

namespace kelo::session {
namespace {

constexpr size_t kPreviewCharacters = 80;

std::string classNameOf(const Storable& value) {
  if (value.isFuncHandle()) return "function_handle";
  if (value.isStructure()) return "struct";
  switch (value.numeric()->kind()) {
    case kelo::Kind::Double: return "double";
    case kelo::Kind::Int: return "int";
    case kelo::Kind::Logical: return "logical";
    case kelo::Kind::Complex: return "complex";
    case kelo::Kind::Char: return "char";
  }
  return "";
}

int64_t elementBytes(kelo::Kind kind) {
  switch (kind) {
    case kelo::Kind::Complex: return 16;
    case kelo::Kind::Logical: return 1;
    case kelo::Kind::Char: return 4;
    default: return 8;
  }
}

int64_t bytesOf(const Storable& value) {
  if (value.isNumeric()) return value.numElements() * elementBytes(value.numeric()->kind());
  if (!value.isStructure()) return 0;
  const StructArray& array = *value.structure();
  int64_t bytes = 0;
  for (int64_t element = 0; element < array.numElements(); ++element) {
    for (int64_t field = 0; field < array.fieldCount(); ++field) bytes += bytesOf(array.value(element, field));
  }
  return bytes;
}

std::string oneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  size_t end = 0, characters = 0;
  for (; end < text.size(); ++end) {
    if ((static_cast<unsigned char>(text[end]) & 0xc0) != 0x80 && characters++ == kPreviewCharacters) break;
  }
  return end == text.size() ? text : text.substr(0, end) + "…";
}

Variable variableOf(const std::string& name, const Storable& value, const DisplayParameters& parameters) {
  Variable variable{name, classNameOf(value), {1, 1}, bytesOf(value), oneLine(summaryText(value, parameters.nDigits)),
                    {}};
  if (value.isArray()) {
    const SizeVector size = value.size().trimmed();
    variable.size.assign(size.vec().begin(), size.vec().end());
  }
  if (value.isStructure()) {
    for (const Name field : value.structure()->fields()) variable.fields.push_back(field.text());
  }
  return variable;
}

}  // namespace

Json Variable::toJson() const {
  return {{"name", name}, {"class", className}, {"size", size}, {"bytes", bytes}, {"preview", preview}};
}

std::vector<Variable> variablesOf(const Workspace& workspace, const DisplayParameters& parameters) {
  std::vector<Variable> variables;
  for (const Name name : workspace.names()) {
    const Storable* value = workspace.find(name);
    if (value != nullptr && !value->isLocalFunc()) variables.push_back(variableOf(name.text(), *value, parameters));
  }
  std::sort(variables.begin(), variables.end(), [](auto& a, auto& b) { return a.name < b.name; });
  return variables;
}

}  // namespace kelo::session
